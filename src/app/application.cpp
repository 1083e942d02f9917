#include "app/application.h"

#include <array>
#include <exception>
#include <filesystem>
#include <new>
#include <utility>

#include "app/data_folder.h"
#include "app/kept_copy.h"
#include "app/raised_flag.h"
#include "base/files.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;

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

// The name with all its folders, from one that may count from a folder.
std::string FullName(const std::string& folder, const std::string& name) {
  return name.empty() ? name : NameOf((PathOf(folder) / PathOf(name)).lexically_normal());
}

}  // namespace

std::string VersionTextOf(int major, int minor, int revision) {
  std::string text = std::to_string(major) + "." + std::to_string(minor);
  return text += revision == 0 ? ' ' : static_cast<char>('a' + revision - 1);
}

Application::Application(const Shell& shell) : app_(shell), recovery_({{}}, shell.Platform.ProcessId()) {
  runs_.Shown().OnShown = [this] { link_.DrawingShown(); };
}

bool Application::Start(const StartOptions& options) {
  const std::string printer = app_.Printers.CurrentPrinter();
  if (printer.empty()) {
    app_.Tell(BoxIcon::Critical, app_.Message(TextId::NoPrinter));
    return false;
  }
  runs_.UsePrinter({.Name = printer});
  app_.VersionText = VersionTextOf(options.Major, options.Minor, options.Revision);
  Debut(options);
  OfferRecovery();
  files_.DrawUnchanged();
  RunsSettled();
  return true;
}

void Application::Debut(const StartOptions& options) {
  app_.ProgramFolder = SettingsFolder(options);
  app_.DataFolder = ChooseDataFolder(app_.ProgramFolder, app_.Platform);
  recovery_ = Recovery({app_.DataFolder, app_.ProgramFolder, app_.Platform.UserDataFolder()},
                       app_.Platform.ProcessId());
  if (settings_.Read()) settings_.ChooseLanguages();
  prints_.Begin();
  runs_.Shown().ReadOptions();
  AfficheMenus();
  app_.Window.Show();
  for (const MenuRow& row : MenuRows()) {
    if (!row.Run && !IsPopup(row.Item)) SetItemEnabled(row.Item, false);
  }
  recent_.Begin();
  const bool isNamed = !options.Script.empty();
  files_.LoadFirst(isNamed ? FullName(options.CurrentFolder, options.Script)
                           : FullName(app_.ProgramFolder, settings_.Values().CurrentFile),
                   isNamed);
  app_.ShowPlace();
}

void Application::AfficheMenus() {
  for (const MenuRow& row : MenuRows()) {
    if (row.Place != MenuId::Nowhere)
      app_.Window.SetCaption(row.Item, app_.MenuText(row.Caption) + KeyHint(row));
  }
  constexpr std::array<std::pair<StatusField, TextId>, StatusFields> toolTips = {{
      {StatusField::Text1, TextId::LineToolTip},
      {StatusField::Text2, TextId::PlaceToolTip},
      {StatusField::Zoom, TextId::ZoomToolTip},
      {StatusField::Page, TextId::PageToolTip},
      {StatusField::Reading, TextId::ReadingToolTip},
      {StatusField::Message, TextId::MessageToolTip},
  }};
  for (const auto& [field, text] : toolTips) app_.Window.SetToolTip(field, app_.MenuText(text));
  aid_.ShowCaptions();
  constexpr std::array<std::pair<WindowPart, TextId>, 5> parts = {{
      {WindowPart::Editor, TextId::EditorName},
      {WindowPart::Margin, TextId::MarginName},
      {WindowPart::Drawing, TextId::DrawingName},
      {WindowPart::Aid, TextId::AidName},
      {WindowPart::Offers, TextId::OffersName},
  }};
  for (const auto& [part, text] : parts) app_.Window.SetPartName(part, app_.MenuText(text));
  for (const ToolRow& row : ToolRows()) app_.Window.SetToolText(row.Icon, ToolText(app_, row));
  runs_.Shown().ShowStatus();
}

// One that the user does not want in the editor is kept as a script; where that fails it stays as it is.
void Application::KeepCopy(const RecoveryCopy& copy, const std::string& scriptName) {
  const Result<std::string> kept = KeepAsScript(app_, copy);
  if (!kept) {
    return app_.Tell(BoxIcon::Critical,
                     app_.Message(TextId::CopyNotKept, copy.FileName, app_.Message(kept.Why())));
  }
  recovery_.Discard(copy);
  app_.Tell(BoxIcon::Information, app_.Message(TextId::CopyKept, scriptName, *kept));
}

// The first one that the user wants back takes the editor; any other stays for the next start.
void Application::OfferRecovery() {
  const auto isRunning = [this](std::uint32_t id) { return app_.Platform.IsRunning(id); };
  for (const RecoveryCopy& copy : recovery_.FindLeft(isRunning)) {
    const std::string name = copy.ScriptName.empty() ? app_.Message(TextId::NewScript) : copy.ScriptName;
    if (!app_.AskYesNo(app_.Message(TextId::RecoveryFound, name), SafeAnswer::Yes)) {
      KeepCopy(copy, name);
      continue;
    }
    files_.Restore(copy);
    EditorChanged();
    if (recovery_.Write(app_.Platform.Now(), copy)) recovery_.Discard(copy);
    return;
  }
}

bool Application::Quit() {
  if (runs_.IsRunning() || !files_.SettleChanges()) return false;
  settings_.WriteAtEnd(files_.StartupFile());
  recovery_.Remove();
  app_.Platform.SetWorkingFolder(app_.ProgramFolder);
  return true;
}

void Application::SetItemEnabled(MenuId item, bool isEnabled) {
  disabled_[static_cast<std::size_t>(item)] = !isEnabled;
  app_.Window.SetItemEnabled(item, isEnabled);
}

void Application::Command(MenuId item) {
  Run(item, app_.Platform.IsCtrlDown());
}

void Application::Run(MenuId item, bool withCtrl) {
  const MenuRow& row = MenuRowOf(item);
  if (runs_.IsRunning() || !IsEnabled(item) || !row.Run) return;
  aid_.HideOffers();
  // What is saved does not change by itself soon after.
  if (item == MenuId::Mnu_EnregistrerS || item == MenuId::Mnu_Enregistrer) aid_.FinishTyping();
  row.Run({app_, *this, files_, editing_, exports_, prints_, runs_, settings_, aid_, withCtrl});
  RunsSettled();
  link_.CursorMoved();
}

std::vector<ContextItem> Application::ContextMenu(ContextPlace place) const {
  std::vector<ContextItem> items;
  for (const ContextRow& shown : ContextRows()) {
    if (shown.Place != place) continue;
    const MenuRow& row = MenuRowOf(shown.Item);
    ContextItem item{shown.Item, shown.WithCtrl};
    item.Caption = app_.MenuText(shown.Caption == TextId::None ? row.Caption : shown.Caption);
    const std::string key = KeyText(row);
    if (!key.empty()) item.Caption += (shown.WithCtrl ? "\tCtrl+" : "\t") + key;
    // What ends with a run onto the screen is not there without one.
    const bool needsRun = shown.Item == MenuId::Positionner;
    item.IsEnabled = row.Run && IsEnabled(shown.Item) && (!needsRun || IsEnabled(MenuId::Mnu_Visualiser));
    if (shown.Item == MenuId::Mnu_PageSuivante) item.IsEnabled = runs_.Shown().HasNextPage();
    if (shown.Item == MenuId::Mnu_PagePrecedente) item.IsEnabled = runs_.Shown().HasPreviousPage();
    item.EndsGroup = shown.EndsGroup;
    items.push_back(std::move(item));
  }
  GiveOwnLetters(items);
  return items;
}

void Application::OpenRecent(std::size_t index) {
  if (runs_.IsRunning()) return;
  files_.OpenRecent(index);
  RunsSettled();
}

void Application::OpenDropped(const std::string& fileName) {
  if (runs_.IsRunning()) return;
  files_.OpenFile(fileName);
  RunsSettled();
}

bool Application::KeyDown(Key key, bool withShift, bool withAlt) {
  if (!runs_.IsRunning() && !withAlt && aid_.KeyDown(key)) return true;
  if (key == Key::Escape) {
    runs_.RequestAbort(true);
    return true;
  }
  const MenuRow* const row = MenuRowOf(key, {app_.Platform.IsCtrlDown(), withShift, withAlt});
  if (!row || !row->Run) return false;
  Command(row->Item);
  return true;
}

void Application::KeyUp(Key key) {
  if (key == Key::Escape) runs_.RequestAbort(false);
}

void Application::EditorChanged() {
  if (!runs_.IsWritingComments()) {
    isDrawingOld_ = true;
    livePatience_ = LiveTry;
    app_.Window.AwaitPause();
  }
  aid_.TextChanged();
  link_.TextChanged();
  numbers_.TextChanged();
  files_.TextChanged(runs_.IsWritingComments());
  recovery_.TextChanged();
  runs_.LineChanged(app_.Editor.Place().Line);
  app_.ShowPlace();
}

// A line that was changed is coloured when the cursor leaves it.
void Application::CursorMoved() {
  runs_.CursorIn(app_.Editor.Place().Line);
  app_.ShowPlace();
  aid_.CursorMoved();
  link_.CursorMoved();
}

void Application::Typed() {
  if (!runs_.IsRunning()) aid_.Typed();
}

void Application::DoubleClicked() {
  if (settings_.Values().DoubleClick && !runs_.IsRunning()) aid_.ShowPage(AidPage::Help);
}

void Application::RunsSettled() {
  if (std::exchange(seenTimes_, runs_.TimesBusy()) == runs_.TimesBusy()) return;
  if (std::exchange(seenRuns_, runs_.ScreenRuns()) != runs_.ScreenRuns())
    isDrawingOld_ = followsNumber_ = false;
  aid_.SetProblems(runs_.Problems(), runs_.HasNews());
  aid_.ReadNames();
}

std::optional<WordHelp> Application::WordAt(std::size_t place) {
  if (runs_.IsRunning()) return std::nullopt;
  return aid_.WordAt(place);
}

void Application::ProblemClicked(std::size_t index) {
  if (runs_.IsRunning()) return;
  aid_.GoToProblem(index);
  const Problem* const problem = aid_.ProblemOfOtherFile(index);
  if (!problem) return;
  const std::string file = problem->File;
  const std::size_t line = problem->Line;
  const std::string question = app_.Message(TextId::OpenToSeeProblem, NameWithoutFolder(file));
  if (!app_.AskYesNo(question, SafeAnswer::No)) return;
  OpenDropped(file);
  if (script_.CurrentFile == file && line > 0 && line <= app_.Editor.Place().Lines)
    app_.Editor.GoToLine(line);
}

void Application::ScreenChanged() {
  if (!runs_.IsRunning() && runs_.Drawing()) runs_.DrawLive(LongestLiveTry);
}

void Application::TypingPaused() {
  if (runs_.IsRunning()) return;
  aid_.Paused();
  if (isDrawingOld_ && (settings_.DrawsLive() || followsNumber_)) DrawLive();
  link_.Paused();
}

void Application::TurnNumber(int tenths) {
  if (!numbers_.Turn(tenths)) return;
  followsNumber_ = true;
  if (isDrawingOld_) DrawLive();
}

void Application::DrawingRested(Point pixel) {
  if (!runs_.IsRunning()) link_.PointerRested(pixel);
}

void Application::DrawingClicked(Point pixel, bool withCtrl) {
  if (runs_.IsRunning()) return;
  link_.Clicked(pixel, withCtrl);
  RunsSettled();
}

// A run that a key has ended comes again at the next pause; one that took too long gets more time, and in the
// end waits for F4.
void Application::DrawLive() {
  switch (runs_.DrawLive(livePatience_)) {
    case RunCycle::LiveEnd::Interrupted:
      return app_.Window.AwaitPause();
    case RunCycle::LiveEnd::TooLong:
      livePatience_ *= 4;
      if (livePatience_ <= LongestLiveTry) return app_.Window.AwaitPause();
      app_.Window.SetStatus(StatusField::Message, app_.Message(TextId::LiveStopped));
      break;
    case RunCycle::LiveEnd::Drawn:
    case RunCycle::LiveEnd::Failed:
      aid_.SetProblems(runs_.Problems(), false);
      runs_.ShowMessage();
      break;
  }
  isDrawingOld_ = followsNumber_ = false;
}

void Application::EditorWidthChanged(int width) {
  settings_.SetEditorWidth(width);
}

// The box of a question comes to the front, too.
void Application::Activated() {
  if (runs_.IsRunning() || isFollowingDisk_) return;
  const RaisedFlag following(isFollowingDisk_);
  if (files_.FollowDisk()) recovery_.TextChanged();
  RunsSettled();
}

void Application::Tick() {
  settings_.WriteFontSize();
  if (!script_.TextModified) return recovery_.Remove();
  // A run does not keep the copy from being written: one that never ends is what programs are ended for.
  if (recovery_.IsDue(app_.Platform.Now())) BeginRecoveryCopy();
}

void Application::SessionEnds() {
  if (!script_.TextModified) return;
  BeginRecoveryCopy();
  FinishCopy();
}

void Application::SessionHasEnded() {
  settings_.FailInSilence();
  // Nothing is written before the languages are chosen: the next start is to ask for them.
  if (settings_.Values().LangIndex != 0) settings_.WriteAtEnd(files_.StartupFile());
}

void Application::BeginRecoveryCopy() {
  recovery_.BeginWriting(app_.Platform.Now(),
                         {{}, script_.CurrentFile, script_.Encoding, script_.LoadedHash, app_.Editor.Text()});
}

void Application::TellException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    app_.Tell(BoxIcon::Critical, app_.Message(TextId::CommandOutOfMemory));
  } catch (const std::exception& failure) {
    app_.Tell(BoxIcon::Critical, app_.Message(TextId::Unforeseen, failure.what()));
  } catch (...) {
    app_.Tell(BoxIcon::Critical, app_.Message(TextId::Unforeseen, "?"));
  }
}

}  // namespace vaxel
