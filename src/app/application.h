// The application without its windows: what the user does comes in here, what is to be seen goes out through
// the shell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/file_commands.h"
#include "app/recovery.h"
#include "app/run_cycle.h"
#include "app/settings.h"

namespace vaxel {

// The letters count together with Ctrl alone.
enum class Key : std::uint8_t { F1, F4, F6, F7, F8, F12, Escape, N, O, P, S };

struct StartOptions {
  int Major = 0, Minor = 0, Revision = 0;
  std::string CurrentFolder;  // at start-up
  std::string ProgramFolder;  // of the program's own file
  std::string Script;         // named on the command line; empty: none
};

class Application {
 public:
  explicit Application(const Shell& shell);

  // When the main window has been created. False when the program is to end at once.
  bool Start(const StartOptions& options);
  // Before the window closes: false keeps the program running.
  bool Quit();
  // Mnu_ commands and the keys of the window and the editor; nothing happens while an item is disabled or a
  // run is under way.
  void Command(MenuId item);
  void OpenRecent(std::size_t index);
  void OpenDropped(const std::string& fileName);
  // Whether the key was handled, which the editor then does not get.
  bool KeyDown(Key key);
  void KeyUp(Key key);

  // The editor's text has changed, in the cursor's line; or the cursor alone.
  void EditorChanged();
  void CursorMoved();
  // The divider was dragged: the editor's width in units of 1/96 inch.
  void EditorWidthChanged(int width);
  // From time to time, at least every few seconds.
  void Tick();
  // The user logs off: the program may be ended without being asked anything more. The first is told when
  // that may still come to nothing, the second when it does not.
  void SessionEnds();
  void SessionHasEnded();

  void SetItemEnabled(MenuId item, bool isEnabled);
  RunCycle& Runs() { return runs_; }
  AppContext& Context() { return app_; }

 private:
  void Debut(const StartOptions& options);  // start-up after the printer check
  void LoadFirstScript(const StartOptions& options);
  void AfficheMenus();
  bool IsEnabled(MenuId item) const;
  bool Shortcut(MenuId item);
  void OfferRecovery();
  void WriteRecoveryCopy();
  void ShowAbout();
  void CentreCursor();
  void ChooseColour();
  void Help(const std::string& word);

  AppContext app_;
  RunCycle runs_;
  FileCommands files_;
  Settings settings_;
  Recovery recovery_;
  std::vector<MenuId> disabled_;
};

// "0.1b" of 0, 1 and 2; a blank stands for revision 0.
std::string VersionTextOf(int major, int minor, int revision);

}  // namespace vaxel
