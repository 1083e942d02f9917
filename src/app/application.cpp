#include "app/application.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "interpreter/colour_value.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;

// Of later versions of the program.
constexpr MenuId WithoutCommand[] = {MenuId::Mnu_OuvrirMeter,  MenuId::Mnu_Imprimante,
                                     MenuId::Mnu_ImprimerZoom, MenuId::Mnu_ImprimerCode,
                                     MenuId::Mnu_Syntaxe,      MenuId::Mnu_Polices};

bool FileExists(const std::string& name) {
  std::error_code ignored;
  return fs::is_regular_file(PathOf(name), ignored);
}

std::string WithSeparator(std::string folder) {
  const char separator = static_cast<char>(fs::path::preferred_separator);
  if (!folder.empty() && folder.back() != '/' && folder.back() != separator) folder += separator;
  return folder;
}

// The folder in which the program was started holds its settings. A script that was named, by a double click
// on it for one, brings its own folder along, which is not meant.
std::string SettingsFolder(const StartOptions& options) {
  const std::string current = WithSeparator(options.CurrentFolder);
  const bool isMeant =
      options.Script.empty() || options.ProgramFolder.empty() || FileExists(current + "Vaxel.cfg");
  return isMeant ? current : WithSeparator(options.ProgramFolder);
}

// With all folders, from a name that may count from a folder.
std::string FullName(const std::string& folder, const std::string& name) {
  return name.empty() ? name : NameOf((PathOf(folder) / PathOf(name)).lexically_normal());
}

}  // namespace

std::string VersionTextOf(int major, int minor, int revision) {
  std::string text = std::to_string(major) + "." + std::to_string(minor);
  return text += revision == 0 ? ' ' : static_cast<char>('a' + revision - 1);
}

Application::Application(const Shell& shell)
    : app_(shell),
      runs_(app_),
      files_(app_, runs_),
      settings_(app_),
      recovery_({}, shell.Platform.ProcessId()) {}

bool Application::Start(const StartOptions& options) {
  ApplicationState& state = app_.State;
  state.PrinterName = app_.Printers.CurrentPrinter();
  if (state.PrinterName.empty()) {
    app_.Tell(BoxIcon::Critical, app_.Message(text_id::NoPrinter));
    return false;
  }
  state.VersionText = VersionTextOf(options.Major, options.Minor, options.Revision);
  Debut(options);
  OfferRecovery();
  Command(MenuId::Mnu_Visualiser);
  return true;
}

void Application::Debut(const StartOptions& options) {
  ApplicationState& state = app_.State;
  state.ProgramFolder = SettingsFolder(options);
  state.OpenFolder = state.ProgramFolder;
  recovery_ = Recovery(state.ProgramFolder, app_.Platform.ProcessId());
  if (settings_.Read()) settings_.ChooseLanguages();
  AfficheMenus();
  app_.Window.Show();
  for (MenuId item : WithoutCommand) SetItemEnabled(item, false);
  LoadFirstScript(options);
  app_.UpdateTitle();
  app_.ShowPlace();
  state.TextModified = false;
}

void Application::LoadFirstScript(const StartOptions& options) {
  ApplicationState& state = app_.State;
  const std::string script = options.Script.empty() ? FullName(state.ProgramFolder, state.CurrentFile)
                                                    : FullName(options.CurrentFolder, options.Script);
  state.CurrentFile.clear();
  if (!options.Script.empty() || FileExists(script)) {
    files_.Load(script);
  } else {
    files_.ChooseAndLoad();
  }
  state.StartupFile = state.CurrentFile;
}

void Application::AfficheMenus() {
  for (const MenuRow& row : MenuRows) {
    app_.Window.SetCaption(row.Item, app_.MenuText(row.Caption).append(row.KeyHint));
  }
  app_.Window.SetToolTip(StatusField::Text1, app_.MenuText(text_id::LineToolTip));
  app_.Window.SetToolTip(StatusField::Text2, app_.MenuText(text_id::PlaceToolTip));
}

// The first one that the user wants back takes the editor; any other stays for the next start.
void Application::OfferRecovery() {
  const auto isRunning = [this](std::uint32_t id) { return app_.Platform.IsRunning(id); };
  for (const RecoveryCopy& copy : recovery_.FindLeft(isRunning)) {
    if (!app_.Dialogs.AskYesNo(
            "Vaxel",
            app_.Message(text_id::RecoveryFound,
                         copy.ScriptName.empty() ? app_.Message(text_id::NewScript) : copy.ScriptName))) {
      recovery_.Discard(copy);
      continue;
    }
    ScriptFile script;
    script.Text = copy.Text;
    script.Encoding = copy.Encoding;
    script.Hash = copy.LoadedHash;
    files_.SetScript(std::move(script), copy.ScriptName);
    app_.State.StartupFile = copy.ScriptName;
    app_.UpdateTitle();
    EditorChanged();
    if (recovery_.Write(app_.Platform.Now(), copy)) recovery_.Discard(copy);
    return;
  }
}

bool Application::Quit() {
  if (app_.State.IsRunning || !files_.SettleChanges()) return false;
  settings_.WriteAtEnd();
  recovery_.Remove();
  app_.Platform.SetWorkingFolder(app_.State.ProgramFolder);
  return true;
}

bool Application::IsEnabled(MenuId item) const {
  return std::find(disabled_.begin(), disabled_.end(), item) == disabled_.end();
}

void Application::SetItemEnabled(MenuId item, bool isEnabled) {
  std::erase(disabled_, item);
  if (!isEnabled) disabled_.push_back(item);
  app_.Window.SetItemEnabled(item, isEnabled);
}

void Application::Command(MenuId item) {
  if (app_.State.IsRunning || !IsEnabled(item)) return;
  const bool withCtrl = app_.Platform.IsCtrlDown();
  switch (item) {
    case MenuId::Mnu_Ouvrir:
      return files_.Open();
    case MenuId::Mnu_Nouveau:
      return files_.New();
    case MenuId::Mnu_EnregistrerS:
      return files_.Save();
    case MenuId::Mnu_Enregistrer:
      return files_.SaveAs();
    case MenuId::Mnu_Liste_Fic:
      return files_.InsertFileNames();
    case MenuId::Mnu_Exporter:
      return files_.Export();
    case MenuId::Mnu_Imprimer:
      return runs_.Print();
    case MenuId::Mnu_Quitter:
      if (Quit()) app_.Window.Close();
      return;
    case MenuId::Mnu_Visualiser:
      return runs_.Visualise();
    case MenuId::Mnu_Zoom:
      return runs_.Zoom(withCtrl);
    case MenuId::Mnu_RefCurseur:
      return runs_.Reference(withCtrl);
    case MenuId::Mnu_DblClick:
      return settings_.ToggleDoubleClick();
    case MenuId::Mnu_Code:
      return settings_.ToggleEditor();
    case MenuId::Mnu_AgrandirCode:
      return settings_.WidenEditor();
    case MenuId::Mnu_IniCode:
      return settings_.ResetEditor();
    case MenuId::Mnu_TaillCar:
      return settings_.ChooseFontSize();
    case MenuId::Mnu_CentreCurseur:
      return CentreCursor();
    case MenuId::Mnu_Patchs:
      return settings_.ChoosePatches();
    case MenuId::Mnu_Langue:
      settings_.ChooseLanguages();
      return AfficheMenus();
    case MenuId::Mnu_Couleur:
      return ChooseColour();
    case MenuId::Mnu_Help:
    case MenuId::Mnu_Aide:
      return Help("");
    case MenuId::Mnu_AideMot:
      return Help(app_.Editor.WordAtCursor());
    case MenuId::Mnu_AProposDe:
      return ShowAbout();
    default:
      return;  // the heads of menus, and what has no command yet
  }
}

void Application::OpenRecent(std::size_t index) {
  if (!app_.State.IsRunning) files_.OpenRecent(index);
}

void Application::OpenDropped(const std::string& fileName) {
  if (!app_.State.IsRunning) files_.OpenFile(fileName);
}

bool Application::KeyDown(Key key) {
  switch (key) {
    case Key::F1:
      Command(MenuId::Mnu_AideMot);
      return true;
    case Key::F4:
      Command(MenuId::Mnu_Visualiser);
      return true;
    case Key::F6:
    case Key::F12:
      if (!app_.State.IsRunning && IsEnabled(MenuId::Mnu_Visualiser)) {
        runs_.Positionner(app_.Platform.IsCtrlDown());
      }
      return true;
    case Key::F7:
      Command(MenuId::Mnu_Zoom);
      return true;
    case Key::F8:
      Command(MenuId::Mnu_RefCurseur);
      return true;
    case Key::Escape:
      app_.State.AbortRequested = true;
      return true;
    case Key::N:
      return Shortcut(MenuId::Mnu_Nouveau);
    case Key::O:
      return Shortcut(MenuId::Mnu_Ouvrir);
    case Key::P:
      return Shortcut(MenuId::Mnu_Imprimer);
    case Key::S:
      return Shortcut(MenuId::Mnu_EnregistrerS);
  }
  return false;
}

bool Application::Shortcut(MenuId item) {
  if (!app_.Platform.IsCtrlDown()) return false;
  Command(item);
  return true;
}

void Application::KeyUp(Key key) {
  if (key == Key::Escape) app_.State.AbortRequested = false;
}

void Application::EditorChanged() {
  app_.State.TextModified = true;
  if (!app_.State.IsWritingComments) ++app_.State.UserEdits;
  recovery_.TextChanged();
  runs_.LineChanged(app_.Editor.Place().Line);
  app_.ShowPlace();
}

// A line that was changed is coloured when the cursor leaves it.
void Application::CursorMoved() {
  runs_.CursorIn(app_.Editor.Place().Line);
  app_.ShowPlace();
}

void Application::EditorWidthChanged(int width) {
  settings_.SetEditorWidth(width);
}

void Application::Tick() {
  const ApplicationState& state = app_.State;
  if (!state.TextModified) return recovery_.Remove();
  // In a run as well: one that never ends is what programs are ended for.
  if (!recovery_.IsDue(app_.Platform.Now())) return;
  WriteRecoveryCopy();
}

void Application::SessionEnds() {
  if (app_.State.TextModified) WriteRecoveryCopy();
}

// In silence: nobody is there to read it.
void Application::SessionHasEnded() {
  app_.IsConfigFailureTold = true;
  // Before the languages are chosen nothing is, and the next start is to ask for them.
  if (app_.State.LangIndex != 0) settings_.WriteAtEnd();
}

void Application::WriteRecoveryCopy() {
  const ApplicationState& state = app_.State;
  recovery_.Write(app_.Platform.Now(),
                  {{}, state.CurrentFile, state.Encoding, state.LoadedHash, app_.Editor.Text()});
}

void Application::CentreCursor() {
  const ScreenRectangle area = app_.Window.EditorRectangle();
  app_.Window.MovePointer({(area.Left + area.Right) / 2, (area.Top + area.Bottom) / 2});
}

void Application::ChooseColour() {
  const std::optional<std::uint32_t> colour = app_.Dialogs.ShowColour();
  if (colour) app_.Editor.ReplaceSelection(ColourText(*colour));
}

void Application::Help(const std::string& word) {
  const std::string file = app_.State.ProgramFolder + app_.State.HelpFile;
  if (!app_.Platform.OpenHelp(file, word))
    app_.Tell(BoxIcon::Information, app_.Message(text_id::NoHelp, file));
}

void Application::ShowAbout() {
  app_.Dialogs.ShowAbout(
      {"Vaxel", "Vaxel\n" + app_.Message(text_id::AboutText) + "\n\n" +
                    app_.Message(text_id::AboutVersion, app_.State.VersionText) + "\n" +
                    app_.Message(text_id::AboutSystem, app_.Platform.SystemDescription())});
}

}  // namespace vaxel
