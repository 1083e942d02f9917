// The application without its windows: what the user does comes in here, what is to be seen goes out through
// the shell.
#pragma once

#include <bitset>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "app/context_menu.h"
#include "app/edited_script.h"
#include "app/editing_commands.h"
#include "app/export_commands.h"
#include "app/file_commands.h"
#include "app/keys.h"
#include "app/line_link.h"
#include "app/menu_hints.h"
#include "app/number_turning.h"
#include "app/print_commands.h"
#include "app/recent_files.h"
#include "app/recovery.h"
#include "app/run_cycle.h"
#include "app/settings.h"
#include "app/writing_aid.h"

namespace vaxel {

struct StartOptions {
  int Major = 0, Minor = 0, Revision = 0;
  std::string CurrentFolder;  // at start-up
  std::string ProgramFolder;  // of the program's own file
  std::string Script;         // named on the command line; empty: none
};

class Application {
 public:
  explicit Application(const Shell& shell);

  // To be called when the main window has been created. The result is false when the program is to end at
  // once.
  bool Start(const StartOptions& options);
  // To be called before the window closes: false keeps the program running.
  bool Quit();
  // Runs a command of the menus and keys. Nothing happens while an item is disabled or a run is under way.
  void Command(MenuId item);
  // The menu that appears at the pointer, and the choice of one of its items.
  std::vector<ContextItem> ContextMenu(ContextPlace place) const;
  void Choose(const ContextItem& item) { Run(item.Item, item.WithCtrl); }
  void OpenRecent(std::size_t index);
  void OpenDropped(const std::string& fileName);
  // A key was pressed in the window or in the editor. The result says whether it was handled; the editor then
  // does not get it.
  bool KeyDown(Key key, bool withShift = false, bool withAlt = false);
  void KeyUp(Key key);

  // The editor's text has changed, in the cursor's line; or the cursor alone.
  void EditorChanged();
  void CursorMoved();
  // The graphic area has another size.
  void GraphicAreaChanged() { runs_.Shown().AreaChanged(); }
  // The window is on a screen with pixels of another size: what was drawn with them is drawn anew.
  void ScreenChanged();
  // The divider was dragged: the editor's width in units of 1/96 inch.
  void EditorWidthChanged(int width);
  // A character was typed or taken back; that it has changed the text was told before.
  void Typed();
  // A word of the text was clicked twice.
  void DoubleClicked();
  // The user has not typed for a moment, a quarter of a second.
  void TypingPaused();
  // What is said of the word at a place of the text on which the pointer rests.
  std::optional<WordHelp> WordAt(std::size_t place);
  // A message of the list was clicked.
  void ProblemClicked(std::size_t index);
  // The list beside the cursor and the panel's captions were clicked.
  WritingAid& Aid() { return aid_; }
  // The pointer rests over the drawing, or has clicked on it, at a pixel of the graphic area.
  void DrawingRested(Point pixel);
  void DrawingClicked(Point pixel, bool withCtrl);
  // The number under the cursor grows by so many tenths, and the drawing follows.
  void TurnNumber(int tenths);
  // The wheel was turned over the editor with Ctrl held down.
  void CodeSizeStepped(int points) { settings_.StepFontSize(points); }
  // The window has come to the front, and no dialog of it is open.
  void Activated();
  // To be called from time to time, at least every few seconds.
  void Tick();
  // The user logs off: the program may be ended without being asked anything more. The first is told when
  // that may still come to nothing, the second when it does not.
  void SessionEnds();
  void SessionHasEnded();
  // Waits until the recovery copy that is being written is on the disk.
  void FinishCopy() { recovery_.FinishWriting(); }

  // To be called where an exception was caught: tells the user of it.
  void TellException();

  void SetItemEnabled(MenuId item, bool isEnabled);
  bool IsEnabled(MenuId item) const { return !disabled_[static_cast<std::size_t>(item)]; }
  // Names menus and status fields in the language of menus.
  void AfficheMenus();

  RunCycle& Runs() { return runs_; }
  const FileCommands& Files() const { return files_; }
  const EditedScript& Script() const { return script_; }
  const Settings& Options() const { return settings_; }
  // What an item of the menus does, in their language; empty where its caption says it.
  std::string Hint(MenuId item) const { return HintOf(app_, item); }
  // The text in the language of messages.
  std::string Message(TextId id) const { return app_.Message(id); }

 private:
  static constexpr std::chrono::milliseconds LiveTry{250}, LongestLiveTry{1000};

  void DrawLive();
  // To be called behind what may have run the script.
  void RunsSettled();
  void Run(MenuId item, bool withCtrl);
  void Debut(const StartOptions& options);  // start-up after the printer check
  void OfferRecovery();
  void KeepCopy(const RecoveryCopy& copy, const std::string& scriptName);
  void BeginRecoveryCopy();

  AppContext app_;
  EditedScript script_;
  Settings settings_{app_};
  RunCycle runs_{app_, settings_, script_};
  RecentFiles recent_{app_, settings_};
  FileCommands files_{app_, runs_, recent_, script_};
  EditingCommands editing_{app_};
  WritingAid aid_{app_, script_, [this](std::string_view name) { return runs_.ValueOf(name); }};
  LineLink link_{app_, runs_, files_, settings_, script_};
  NumberTurner numbers_{app_};
  ExportCommands exports_{app_, settings_, runs_, script_};
  PrintCommands prints_{app_, settings_, runs_, script_};
  Recovery recovery_;
  bool isFollowingDisk_ = false;
  std::size_t seenTimes_ = 0, seenRuns_ = 0;
  bool isDrawingOld_ = false;                        // the text has changed since it was drawn
  bool followsNumber_ = false;                       // it is to be drawn, whether live or not
  std::chrono::milliseconds livePatience_{LiveTry};  // of the next run while the script is written
  std::bitset<MenuItems> disabled_;
};

// "0.1b" of 0, 1 and 2; a blank stands for revision 0.
std::string VersionTextOf(int major, int minor, int revision);

}  // namespace vaxel
