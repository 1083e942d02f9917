#include "app/file_commands.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "app/data_folder.h"
#include "app/meter_import.h"
#include "app/raised_flag.h"
#include "app/run_bridge.h"
#include "app/template_choice.h"
#include "base/files.h"
#include "base/text.h"

namespace vaxel {
namespace {

constexpr std::string_view Credit = "mm × mm";

std::string Filter(const std::string& description, const char* pattern) {
  return description + " (" + pattern + ")|" + pattern + "|";
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
    list += (isBelow ? name.substr(folder.size()) : name) + '\n';
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

void FileCommands::TellNotLoaded(const std::string& fileName, const Failure& why, std::size_t maxBytes) {
  if (why.Text == TextId::ScriptNotAText || why.Text == TextId::NotAMeterFile)
    return app_.Tell(BoxIcon::Critical, app_.Message(why));
  if (why.Fault != FileFault::IsTooLarge) return Tell(TextId::CannotRead, fileName, why);
  const std::string megabytes = std::to_string(maxBytes >> 20);
  app_.Tell(BoxIcon::Critical, app_.Message(TextId::ScriptTooLarge, fileName, megabytes));
}

// The mark of unsaved text stands in front, where a narrow button of the task bar still shows it.
void FileCommands::ShowTitle() {
  const std::string name =
      script_.CurrentFile.empty() ? app_.Message(TextId::NewScript) : script_.CurrentFile;
  std::string title = (script_.TextModified ? "*Vaxel  V" : "Vaxel  V") + app_.VersionText + "  (" +
                      std::string(Credit) + ")   " + app_.Message(TextId::FileWord) + ": " + name;
  if (title == shownTitle_) return;
  app_.Window.SetTitle(title);
  shownTitle_ = std::move(title);
}

void FileCommands::SetModified(bool isModified) {
  script_.TextModified = isModified;
  // What a run writes into a script that is just opened is no change in the end.
  if (!isOpening_) ShowTitle();
}

void FileCommands::TextChanged(bool isComment) {
  if (!isComment) ++script_.UserEdits;
  SetModified(true);
}

// The text and its name change together or, when memory runs out, not at all: a text under the name of
// another would be saved over it.
void FileCommands::SetScript(const ScriptFile& script, std::string fileName) {
  app_.Editor.SetText(script.Text);
  ++script_.Texts;
  script_.CurrentFile = std::move(fileName);
  script_.Encoding = script.Bytes.Encoding;
  script_.LoadedHash = script.Bytes.Hash;
  runs_.TextReplaced();
  app_.Editor.ColourAll();
}

bool FileCommands::Load(const std::string& fileName) {
  const Result<ScriptFile> script = LoadScript(fileName);
  if (!script) {
    TellNotLoaded(fileName, script.Why(), MaxScriptBytes);
    return false;
  }
  SetScript(*script, fileName);
  FileLoaded(fileName);
  return true;
}

void FileCommands::FileLoaded(const std::string& fileName) {
  openFolder_ = FolderOf(fileName);
  recent_.Remember(fileName);
}

bool FileCommands::LoadMeter(const std::string& fileName) {
  const Result<std::string> bytes = ReadWholeFile(fileName, MaxMeterBytes);
  Result<MeterScript> script = bytes ? vaxel::ImportMeter(*bytes, fileName, app_.Strings, app_.LangBase)
                                     : Result<MeterScript>(bytes.Why());
  if (!script) {
    TellNotLoaded(fileName, script.Why(), MaxMeterBytes);
    return false;
  }
  SetScript({std::move(script->Text), {TextEncoding::Utf8, HashOf(*bytes)}}, fileName);
  FileLoaded(fileName);
  if (script->LinesLeftOut > 0) {
    const std::string count = std::to_string(script->LinesLeftOut);
    app_.Tell(BoxIcon::Information, app_.Message(TextId::MeterLinesLeftOut, count));
  }
  return true;
}

bool FileCommands::LoadByName(const std::string& fileName) {
  return IsMeterFile(fileName) ? LoadMeter(fileName) : Load(fileName);
}

void FileCommands::LoadFirst(const std::string& fileName, bool isNamed) {
  openFolder_ = app_.ProgramFolder;
  if (isNamed || FileExists(fileName)) {
    LoadByName(fileName);
  } else {
    ChooseAndLoad();
  }
  startupFile_ = script_.CurrentFile;
  SetModified(false);
}

void FileCommands::Restore(const RecoveryCopy& copy) {
  SetScript({copy.Text, {copy.Encoding, copy.LoadedHash}}, copy.ScriptName);
  startupFile_ = copy.ScriptName;
  SetModified(true);
}

// What was typed when the window took keys again is a change.
void FileCommands::DrawUnchanged() {
  const std::uint64_t edits = script_.UserEdits;
  const bool wasModified = script_.TextModified;
  {
    const RaisedFlag opening(isOpening_);
    runs_.Visualise();
  }
  SetModified(script_.UserEdits != edits || wasModified);
}

void FileCommands::DrawOpened() {
  SetModified(false);
  DrawUnchanged();
}

void FileCommands::ShowOpened() {
  DrawOpened();
  startupFile_ = script_.CurrentFile;
}

std::string FileCommands::ChooseFile(std::string filter) {
  FileDialog dialog;
  dialog.Filter = std::move(filter);
  dialog.Folder = openFolder_;
  const std::vector<std::string> chosen = app_.Dialogs.ShowOpen(dialog);
  if (chosen.empty() || chosen.front().empty()) return {};
  openFolder_ = FolderOf(chosen.front());
  runs_.HandleEvents();
  return chosen.front();
}

bool FileCommands::ChooseAndLoad() {
  const std::string chosen = ChooseFile(Filter(app_.Message(TextId::VaxelFiles), "*.dat") +
                                        Filter(app_.Message(TextId::AllFiles), "*.*"));
  return !chosen.empty() && Load(chosen);
}

void FileCommands::Open() {
  if (SettleChanges() && ChooseAndLoad()) ShowOpened();
}

void FileCommands::ImportMeter() {
  if (!SettleChanges()) return;
  const std::string chosen = ChooseFile(Filter(app_.Message(TextId::MeterFiles), "*.mtr"));
  if (!chosen.empty() && LoadMeter(chosen)) ShowOpened();
}

void FileCommands::OpenFile(const std::string& fileName) {
  if (SettleChanges() && LoadByName(fileName)) ShowOpened();
}

void FileCommands::OpenRecent(std::size_t index) {
  if (index < recent_.Names().size()) OpenFile(std::string(recent_.Names()[index]));
}

void FileCommands::BeginNew() {
  app_.Editor.GoToLine(1);
  app_.Editor.SetTypingColour(Black);
  DrawOpened();
  app_.ShowPlace();
  startupFile_ = script_.CurrentFile;
}

// The template is looked for as scripts look for files: its name is written in two ways.
void FileCommands::New() {
  if (!SettleChanges()) return;
  SetScript({}, {});
  const std::string name = FindDataFile(app_, "Vaxel.DaN");
  if (!name.empty()) {
    if (const Result<ScriptFile> script = LoadScript(name)) {
      SetScript({script->Text, {}}, {});
    } else {
      TellNotLoaded(name, script.Why(), MaxScriptBytes);
    }
  }
  BeginNew();
}

void FileCommands::NewFromTemplate() {
  if (!SettleChanges()) return;
  TemplateChoice choice(app_);
  const std::optional<ScriptTemplate> chosen = choice.Ask();
  if (!chosen) return;
  const Result<std::string> text = TextOf(*chosen, app_);
  if (!text) return TellNotLoaded(chosen->FileName, text.Why(), MaxScriptBytes);
  SetScript({*text, {}}, {});
  BeginNew();
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
  if (WriteTo(script_.CurrentFile)) SetModified(false);
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
  SetModified(false);
  startupFile_ = name;
  recent_.Remember(name);
}

// What is refused, or is gone, is on no disk any more: it must not be given up unasked.
bool FileCommands::FollowDisk() {
  const bool hadChanges = script_.TextModified;
  switch (watch_.Look(script_)) {
    case DiskWatch::News::None:
      return false;
    case DiskWatch::News::Vanished:
      SetModified(true);
      app_.Tell(BoxIcon::Information, app_.Message(TextId::ScriptVanished, script_.CurrentFile));
      break;
    case DiskWatch::News::Changed: {
      const TextId question = hadChanges ? TextId::LoadAgainLosing : TextId::LoadAgain;
      SetModified(true);
      if (app_.AskYesNo(app_.Message(question, script_.CurrentFile), SafeAnswer::No)) LoadAgain();
      break;
    }
  }
  return script_.TextModified && !hadChanges;
}

void FileCommands::LoadAgain() {
  const std::size_t line = app_.Editor.Place().Line;
  if (!LoadByName(script_.CurrentFile)) return;
  app_.Editor.GoToLine(std::min(line, app_.Editor.Place().Lines));
  ShowOpened();
  app_.ShowPlace();
}

void FileCommands::InsertFileNames() {
  FileDialog dialog;
  dialog.Filter = Filter(app_.Message(TextId::AllFiles), "*.*");
  dialog.Folder = FolderOf(script_.CurrentFile);
  dialog.TakesSeveral = true;
  const std::string list = ListOfNames(app_.Dialogs.ShowOpen(dialog), script_.CurrentFile);
  if (!list.empty()) app_.Editor.ReplaceSelection(list);
}

}  // namespace vaxel
