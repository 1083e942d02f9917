#include "app/file_commands.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text.h"
#include "render/svg_renderer.h"

namespace vaxel {
namespace {

std::string Filter(const std::string& description, const char* pattern) {
  return description + " (" + pattern + ")|" + pattern + "|";
}

bool IsPictureFile(const std::string& name) {
  const std::string upper = UpperCase(name);
  return upper.ends_with(".SVG") || upper.ends_with(".PNG") || upper.ends_with(".EMF");
}

bool FileExists(const std::string& name) {
  std::error_code ignored;
  return std::filesystem::exists(PathOf(name), ignored);
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
  if (app_.Editor.IsEmpty() || !app_.State.TextModified) return true;
  switch (app_.AskYesNoCancel(app_.Message(text_id::SaveChanges))) {
    case YesNoCancel::Cancel:
      return false;
    case YesNoCancel::No:
      return true;
    case YesNoCancel::Yes:
      break;
  }
  Save();
  return !app_.State.TextModified;
}

void FileCommands::TellNotLoaded(const std::string& fileName, const ScriptFile& script) {
  using Outcome = ScriptFile::Outcome;
  std::string text;
  switch (script.Result) {
    case Outcome::Loaded:
    case Outcome::Unreadable:
      text = app_.Message(text_id::CannotRead, fileName, script.Reason);
      break;
    case Outcome::TooLarge:
      text = app_.Message(text_id::FileTooLarge, fileName, std::to_string(MaxScriptBytes >> 20));
      break;
    case Outcome::NoText:
      text = app_.Message(text_id::NotAText, fileName);
      break;
  }
  app_.Tell(BoxIcon::Critical, text);
}

// The text and its name change together or, when memory runs out, not at all: a text under the name of
// another would be saved over it.
void FileCommands::SetScript(ScriptFile script, std::string fileName) {
  ApplicationState& state = app_.State;
  app_.Editor.SetText(script.Text);
  state.CurrentFile = std::move(fileName);
  state.Encoding = script.Encoding;
  state.LoadedHash = script.Hash;
  runs_.TextReplaced();
  app_.Editor.ColourAll();
}

bool FileCommands::Load(const std::string& fileName) {
  ScriptFile script = LoadScript(fileName);
  if (script.Result != ScriptFile::Outcome::Loaded) {
    TellNotLoaded(fileName, script);
    return false;
  }
  SetScript(std::move(script), fileName);
  app_.State.OpenFolder = FolderOf(fileName);
  Remember(fileName);
  return true;
}

// What the user does now is for the script that is about to go.
void FileCommands::HandleEvents() {
  app_.State.IsRunning = true;
  app_.Window.SetWindowEnabled(false);
  app_.Window.ProcessEvents();
  app_.Window.SetWindowEnabled(true);
  app_.State.IsRunning = false;
}

// The comments that the run writes are no changes. What was typed when the window took keys again is.
void FileCommands::DrawOpened() {
  ApplicationState& state = app_.State;
  const std::uint64_t edits = state.UserEdits;
  state.TextModified = false;
  runs_.Visualise();
  if (state.UserEdits == edits) state.TextModified = false;
}

void FileCommands::ShowOpened() {
  app_.UpdateTitle();
  DrawOpened();
  app_.State.StartupFile = app_.State.CurrentFile;
}

bool FileCommands::ChooseAndLoad() {
  FileDialog dialog;
  dialog.Filter =
      Filter(app_.Message(text_id::VaxelFiles), "*.dat") + Filter(app_.Message(text_id::AllFiles), "*.*");
  dialog.Folder = app_.State.OpenFolder;
  dialog.Flags = FileMustExist | HideReadOnly;
  const std::vector<std::string> chosen = app_.Dialogs.ShowOpen(dialog);
  if (chosen.empty() || chosen.front().empty()) return false;
  app_.State.OpenFolder = FolderOf(chosen.front());
  HandleEvents();
  return Load(chosen.front());
}

void FileCommands::Open() {
  if (SettleChanges() && ChooseAndLoad()) ShowOpened();
}

void FileCommands::OpenFile(const std::string& fileName) {
  if (SettleChanges() && Load(fileName)) ShowOpened();
}

void FileCommands::OpenRecent(std::size_t index) {
  const std::vector<std::string>& recent = app_.State.RecentFiles;
  if (index < recent.size()) OpenFile(std::string(recent[index]));
}

// The template is looked for as scripts look for files: its name is written in two ways.
void FileCommands::New() {
  if (!SettleChanges()) return;
  ApplicationState& state = app_.State;
  SetScript({}, {});
  const std::string name = FindFile(state.ProgramFolder, "Vaxel.DaN");
  if (!name.empty()) {
    ScriptFile script = LoadScript(name);
    if (script.Result == ScriptFile::Outcome::Loaded) {
      script.Encoding = TextEncoding::Utf8;
      script.Hash = 0;
      SetScript(std::move(script), {});
    } else {
      TellNotLoaded(name, script);
    }
  }
  app_.Editor.GoToLine(1);
  app_.Editor.SetTypingColour(Black);
  app_.UpdateTitle();
  DrawOpened();
  app_.ShowPlace();
  state.StartupFile = state.CurrentFile;
}

void FileCommands::TellNotSaved(const std::string& fileName, const std::string& reason) {
  namespace fs = std::filesystem;
  const fs::path path = PathOf(fileName);
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  std::string text = app_.Message(text_id::CannotWrite, fileName, reason);
  if (fs::is_regular_file(status) && (status.permissions() & fs::perms::owner_write) == fs::perms::none) {
    text = app_.Message(text_id::ReadOnlyScript, fileName);
  } else if (!fs::exists(path.parent_path(), ignored)) {
    text = app_.Message(text_id::FolderGone, NameOf(path.parent_path()));
  }
  app_.Tell(BoxIcon::Critical, text);
}

bool FileCommands::WriteTo(const std::string& fileName) {
  ApplicationState& state = app_.State;
  TextEncoding encoding = state.Encoding;
  std::size_t hash = 0;
  const std::string error = SaveScript(fileName, app_.Editor.Text(), encoding, hash);
  if (!error.empty()) {
    TellNotSaved(fileName, error);
    return false;
  }
  state.LoadedHash = hash;
  if (std::exchange(state.Encoding, encoding) != encoding) {
    app_.Tell(BoxIcon::Information, app_.Message(text_id::SavedAsUtf8, fileName));
  }
  return true;
}

void FileCommands::Save() {
  ApplicationState& state = app_.State;
  if (state.CurrentFile.empty() || IsMeterFile(state.CurrentFile)) return SaveAs();
  if (HasChangedOnDisk(state.CurrentFile, state.LoadedHash)) {
    switch (app_.AskYesNoCancel(app_.Message(text_id::ChangedOnDisk, state.CurrentFile))) {
      case YesNoCancel::Cancel:
        return;
      case YesNoCancel::No:
        return SaveAs();
      case YesNoCancel::Yes:
        break;
    }
  }
  if (!WriteTo(state.CurrentFile)) return;
  app_.UpdateTitle();
  app_.State.TextModified = false;
}

// The dialogs have asked for the name that was chosen alone.
bool FileCommands::MayReplace(const std::string& fileName) {
  return !FileExists(fileName) ||
         app_.Dialogs.AskYesNo("Vaxel", app_.Message(text_id::ReplaceFile, fileName));
}

void FileCommands::SaveAs() {
  ApplicationState& state = app_.State;
  FileDialog dialog;
  dialog.DefaultExtension = "dat";
  dialog.Filter =
      Filter(app_.Message(text_id::VaxelFiles), "*.dat") + app_.Message(text_id::AllFiles) + " (*.*)|*.*";
  dialog.Folder = FolderOf(state.CurrentFile);
  dialog.Flags = OverwritePrompt | HideReadOnly;
  const std::string chosen = app_.Dialogs.ShowSave(dialog);
  const std::string name = CutExtraExtension(chosen);
  if (name != chosen && !MayReplace(name)) return;
  if (name.empty() || !WriteTo(name)) return;
  state.CurrentFile = name;
  app_.UpdateTitle();
  app_.State.TextModified = false;
  state.StartupFile = name;
  Remember(name);
}

void FileCommands::InsertFileNames() {
  FileDialog dialog;
  dialog.Filter = Filter(app_.Message(text_id::AllFiles), "*.*");
  dialog.Folder = FolderOf(app_.State.CurrentFile);
  dialog.Flags = MultipleSelection | ExplorerStyle | LongNames | FileMustExist | HideReadOnly;
  const std::string list = ListOfNames(app_.Dialogs.ShowOpen(dialog), app_.State.CurrentFile);
  if (!list.empty()) app_.Editor.ReplaceSelection(list);
}

void FileCommands::Remember(const std::string& fileName) {
  std::vector<std::string>& recent = app_.State.RecentFiles;
  std::erase_if(recent, [&](const std::string& name) { return EqualIgnoringCase(name, fileName); });
  recent.insert(recent.begin(), fileName);
  if (recent.size() > MostRecentFiles) recent.resize(MostRecentFiles);
  app_.Window.SetRecentFiles(recent);
}

void FileCommands::Export() {
  const DisplayList* const drawing = runs_.Drawing();
  if (!drawing || drawing->Size() == 0)
    return app_.Tell(BoxIcon::Information, app_.Message(text_id::NothingToExport));
  FileDialog dialog;
  dialog.DefaultExtension = "svg";
  dialog.Filter = Filter(app_.Message(text_id::SvgFiles), "*.svg") +
                  Filter(app_.Message(text_id::PngFiles), "*.png") +
                  Filter(app_.Message(text_id::EmfFiles), "*.emf");
  dialog.Folder = FolderOf(app_.State.CurrentFile);
  dialog.FileName = DocumentNameOf(app_.State.CurrentFile);
  dialog.Flags = OverwritePrompt | HideReadOnly;
  std::string name = app_.Dialogs.ShowSave(dialog);
  if (name.empty()) return;
  // A picture under the extension of something else, of a script for one, would be neither.
  if (!IsPictureFile(name) && !MayReplace(name += ".svg")) return;
  const std::string upper = UpperCase(name);
  const std::size_t page = drawing->Pages().size() - 1;
  OutputFile file(name);
  std::string error;
  if (upper.ends_with(".PNG")) {
    error = app_.Platform.WritePng(*drawing, page, file);
  } else if (upper.ends_with(".EMF")) {
    error = app_.Platform.WriteEmf(*drawing, page, file);
  } else {
    SvgRenderer renderer(file);
    PlayPage(*drawing, page, renderer);
  }
  if (error.empty()) error = file.Commit();
  if (!error.empty()) app_.Tell(BoxIcon::Critical, app_.Message(text_id::CannotWrite, name, error));
}

}  // namespace vaxel
