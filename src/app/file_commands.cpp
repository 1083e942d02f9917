#include "app/file_commands.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>
#include <vector>

#include "app/run_bridge.h"
#include "base/files.h"
#include "base/output_file.h"
#include "base/text.h"
#include "interpreter/sheet_notices.h"
#include "render/svg_renderer.h"

namespace vaxel {
namespace {

constexpr std::string_view Credit = "mm × mm";

std::string Filter(const std::string& description, const char* pattern) {
  return description + " (" + pattern + ")|" + pattern + "|";
}

bool IsPictureFile(const std::string& name) {
  const std::string upper = UpperCase(name);
  return upper.ends_with(".SVG") || upper.ends_with(".PNG") || upper.ends_with(".EMF");
}

Result<> WriteDrawing(const DisplayList& drawing, const std::string& name, Platform& platform) {
  const std::string upper = UpperCase(name);
  const std::size_t page = drawing.Pages().size() - 1;
  OutputFile file(name);
  Result<> written;
  if (upper.ends_with(".PNG")) {
    written = platform.WritePng(drawing, page, file);
  } else if (upper.ends_with(".EMF")) {
    written = platform.WriteEmf(drawing, page, file);
  } else {
    SvgRenderer renderer(file);
    PlayPage(drawing, page, renderer);
  }
  return written ? file.Commit() : written;
}

}  // namespace

std::string CutExtraExtension(const std::string& fileName) {
  const std::string_view name = NameWithoutFolder(fileName);
  if (CountOf(name, ".") < 2) return fileName;
  return fileName.substr(0, fileName.rfind('.'));
}

std::string ListOfNames(const std::vector<std::string>& names, std::string_view scriptName) {
  const std::string folder = UpperCase(FolderOf(scriptName));
  std::string list;
  for (const std::string& name : names) {
    const bool isBelow = !folder.empty() && UpperCase(name).starts_with(folder);
    if (!list.empty()) list += '\n';
    list += isBelow ? name.substr(folder.size()) : name;
  }
  return list;
}

bool FileCommands::SettleChanges() {
  if (app_.Editor.IsEmpty() || !script_.TextModified) return true;
  switch (app_.AskYesNoCancel(app_.Message(TextId::SaveChanges), SafeAnswer::Yes)) {
    case YesNoCancel::Cancel:
      return false;
    case YesNoCancel::No:
      return true;
    case YesNoCancel::Yes:
      break;
  }
  Save();
  return !script_.TextModified;
}

void FileCommands::Tell(TextId text, const std::string& fileName, const Failure& why) {
  app_.Tell(BoxIcon::Critical, app_.Message(text, fileName, app_.Message(why)));
}

void FileCommands::TellNotLoaded(const std::string& fileName, const Failure& why) {
  if (why.Text == TextId::ScriptNotAText) return app_.Tell(BoxIcon::Critical, app_.Message(why));
  if (why.Fault != FileFault::IsTooLarge) return Tell(TextId::CannotRead, fileName, why);
  const std::string megabytes = std::to_string(MaxScriptBytes >> 20);
  app_.Tell(BoxIcon::Critical, app_.Message(TextId::ScriptTooLarge, fileName, megabytes));
}

void FileCommands::UpdateTitle() {
  app_.Window.SetTitle("Vaxel  V" + app_.VersionText + "  (" + std::string(Credit) + ")   " +
                       app_.Message(TextId::FileWord) + ": " + script_.CurrentFile);
}

void FileCommands::TextChanged(bool isComment) {
  script_.TextModified = true;
  if (!isComment) ++script_.UserEdits;
}

// The text and its name change together or, when memory runs out, not at all: a text under the name of
// another would be saved over it.
void FileCommands::SetScript(const ScriptFile& script, std::string fileName) {
  app_.Editor.SetText(script.Text);
  script_.CurrentFile = std::move(fileName);
  script_.Encoding = script.Bytes.Encoding;
  script_.LoadedHash = script.Bytes.Hash;
  runs_.TextReplaced();
  app_.Editor.ColourAll();
}

bool FileCommands::Load(const std::string& fileName) {
  const Result<ScriptFile> script = LoadScript(fileName);
  if (!script) {
    TellNotLoaded(fileName, script.Why());
    return false;
  }
  SetScript(*script, fileName);
  openFolder_ = FolderOf(fileName);
  Remember(fileName);
  return true;
}

void FileCommands::LoadFirst(const std::string& fileName, bool isNamed,
                             std::vector<std::string> recentFiles) {
  openFolder_ = app_.ProgramFolder;
  recentFiles_ = std::move(recentFiles);
  app_.Window.SetRecentFiles(recentFiles_);
  if (isNamed || FileExists(fileName)) {
    Load(fileName);
  } else {
    ChooseAndLoad();
  }
  startupFile_ = script_.CurrentFile;
  UpdateTitle();
  script_.TextModified = false;
}

void FileCommands::Restore(const RecoveryCopy& copy) {
  SetScript({copy.Text, {copy.Encoding, copy.LoadedHash}}, copy.ScriptName);
  startupFile_ = copy.ScriptName;
  UpdateTitle();
}

// The comments that the run writes are no changes. What was typed when the window took keys again is.
void FileCommands::DrawOpened() {
  const std::uint64_t edits = script_.UserEdits;
  script_.TextModified = false;
  runs_.Visualise();
  if (script_.UserEdits == edits) script_.TextModified = false;
}

void FileCommands::ShowOpened() {
  UpdateTitle();
  DrawOpened();
  startupFile_ = script_.CurrentFile;
}

bool FileCommands::ChooseAndLoad() {
  FileDialog dialog;
  dialog.Filter =
      Filter(app_.Message(TextId::VaxelFiles), "*.dat") + Filter(app_.Message(TextId::AllFiles), "*.*");
  dialog.Folder = openFolder_;
  const std::vector<std::string> chosen = app_.Dialogs.ShowOpen(dialog);
  if (chosen.empty() || chosen.front().empty()) return false;
  openFolder_ = FolderOf(chosen.front());
  runs_.HandleEvents();
  return Load(chosen.front());
}

void FileCommands::Open() {
  if (SettleChanges() && ChooseAndLoad()) ShowOpened();
}

void FileCommands::OpenFile(const std::string& fileName) {
  if (SettleChanges() && Load(fileName)) ShowOpened();
}

void FileCommands::OpenRecent(std::size_t index) {
  if (index < recentFiles_.size()) OpenFile(std::string(recentFiles_[index]));
}

// The template is looked for as scripts look for files: its name is written in two ways.
void FileCommands::New() {
  if (!SettleChanges()) return;
  SetScript({}, {});
  const std::string name = FindFile(app_.ProgramFolder, "Vaxel.DaN");
  if (!name.empty()) {
    if (const Result<ScriptFile> script = LoadScript(name)) {
      SetScript({script->Text, {}}, {});
    } else {
      TellNotLoaded(name, script.Why());
    }
  }
  app_.Editor.GoToLine(1);
  app_.Editor.SetTypingColour(Black);
  UpdateTitle();
  DrawOpened();
  app_.ShowPlace();
  startupFile_ = script_.CurrentFile;
}

void FileCommands::TellNotSaved(const std::string& fileName, const Failure& why) {
  namespace fs = std::filesystem;
  const fs::path path = PathOf(fileName);
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  std::string text = app_.Message(TextId::CannotWrite, fileName, app_.Message(why));
  if (fs::is_regular_file(status) && (status.permissions() & fs::perms::owner_write) == fs::perms::none) {
    text = app_.Message(TextId::ReadOnlyScript, fileName);
  } else if (!fs::exists(path.parent_path(), ignored)) {
    text = app_.Message(TextId::FolderGone, NameOf(path.parent_path()));
  }
  app_.Tell(BoxIcon::Critical, text);
}

bool FileCommands::WriteTo(const std::string& fileName) {
  const Result<ScriptBytes> saved = SaveScript(fileName, app_.Editor.Text(), script_.Encoding);
  if (!saved) {
    TellNotSaved(fileName, saved.Why());
    return false;
  }
  script_.LoadedHash = saved->Hash;
  if (std::exchange(script_.Encoding, saved->Encoding) != saved->Encoding) {
    app_.Tell(BoxIcon::Information, app_.Message(TextId::SavedAsUtf8, fileName));
  }
  return true;
}

void FileCommands::Save() {
  if (script_.CurrentFile.empty() || IsMeterFile(script_.CurrentFile)) return SaveAs();
  if (HasChangedOnDisk(script_.CurrentFile, script_.LoadedHash)) {
    switch (app_.AskYesNoCancel(app_.Message(TextId::ChangedOnDisk, script_.CurrentFile), SafeAnswer::No)) {
      case YesNoCancel::Cancel:
        return;
      case YesNoCancel::No:
        return SaveAs();
      case YesNoCancel::Yes:
        break;
    }
  }
  if (!WriteTo(script_.CurrentFile)) return;
  UpdateTitle();
  script_.TextModified = false;
}

// The dialogs have asked for the name that was chosen alone.
bool FileCommands::MayReplace(const std::string& fileName) {
  std::error_code ignored;
  return !std::filesystem::exists(PathOf(fileName), ignored) ||
         app_.AskYesNo(app_.Message(TextId::ReplaceFile, fileName), SafeAnswer::No);
}

void FileCommands::SaveAs() {
  FileDialog dialog;
  dialog.DefaultExtension = "dat";
  dialog.Filter =
      Filter(app_.Message(TextId::VaxelFiles), "*.dat") + app_.Message(TextId::AllFiles) + " (*.*)|*.*";
  dialog.Folder = FolderOf(script_.CurrentFile);
  const std::string chosen = app_.Dialogs.ShowSave(dialog);
  const std::string name = CutExtraExtension(chosen);
  if (name != chosen && !MayReplace(name)) return;
  if (name.empty() || !WriteTo(name)) return;
  script_.CurrentFile = name;
  UpdateTitle();
  script_.TextModified = false;
  startupFile_ = name;
  Remember(name);
}

void FileCommands::InsertFileNames() {
  FileDialog dialog;
  dialog.Filter = Filter(app_.Message(TextId::AllFiles), "*.*");
  dialog.Folder = FolderOf(script_.CurrentFile);
  dialog.TakesSeveral = true;
  const std::string list = ListOfNames(app_.Dialogs.ShowOpen(dialog), script_.CurrentFile);
  if (!list.empty()) app_.Editor.ReplaceSelection(list);
}

void FileCommands::Remember(const std::string& fileName) {
  std::erase_if(recentFiles_, [&](const std::string& name) { return EqualIgnoringCase(name, fileName); });
  recentFiles_.insert(recentFiles_.begin(), fileName);
  if (recentFiles_.size() > MostRecentFiles) recentFiles_.resize(MostRecentFiles);
  app_.Window.SetRecentFiles(recentFiles_);
}

void FileCommands::Export() {
  const DisplayList* const drawing = runs_.Drawing();
  if (!drawing || drawing->Size() == 0)
    return app_.Tell(BoxIcon::Information, app_.Message(TextId::NothingToExport));
  FileDialog dialog;
  dialog.DefaultExtension = "svg";
  dialog.Filter = Filter(app_.Message(TextId::SvgFiles), "*.svg") +
                  Filter(app_.Message(TextId::PngFiles), "*.png") +
                  Filter(app_.Message(TextId::EmfFiles), "*.emf");
  dialog.Folder = FolderOf(script_.CurrentFile);
  dialog.FileName = DocumentNameOf(script_.CurrentFile);
  std::string name = app_.Dialogs.ShowSave(dialog);
  if (name.empty()) return;
  // A picture under the extension of something else, of a script for one, would be neither.
  if (!IsPictureFile(name) && !MayReplace(name += ".svg")) return;
  if (const Result<> written = WriteDrawing(*drawing, name, app_.Platform); !written)
    return Tell(TextId::CannotWrite, name, written.Why());
  // The window's area is no sheet, but the file ends where it ends.
  std::string beyond;
  for (const SheetNotice& notice : SheetNotices(*drawing, app_.Strings, app_.LangBase)) {
    beyond += (beyond.empty() ? "" : "\n") +
              NoticeAtPlace(app_, script_.CurrentFile, notice.LineNumber, notice.Text);
  }
  if (!beyond.empty()) app_.Tell(BoxIcon::Information, beyond);
}

}  // namespace vaxel
