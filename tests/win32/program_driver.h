// Starts the program in a folder of its own and does what its user would do, from another process.
#pragma once

#include <windows.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/menu_table.h"
#include "tests/support/test_folder.h"
#include "tests/win32/shown_dialog.h"
#include "win32/control_ids.h"

namespace vaxel {

// Empty when there is no such variable.
std::string Environment(const char* name);
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder, const std::string& extension);

struct ResourceCount {
  int GdiObjects = 0, UserObjects = 0;
  int Handles = 0, Kilobytes = 0;  // of its own memory
};

class RunningProgram {
 public:
  // Its settings lie in the folder.
  explicit RunningProgram(const test::TestFolder& folder);
  // Ends it, however it stands.
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  // Null before it is made.
  HWND Window() const;
  HWND Control(int id) const;
  ShownDialog AwaitDialog(const std::string& caption = {}) const;
  // The dialog that waits for an answer, if there is one.
  std::optional<ShownDialog> ShownBox() const { return FindDialog(process_.dwProcessId); }
  // It waits for the user, with its main window.
  void AwaitIdle() const;
  bool IsBusy() const;

  // A command of the menus: waits until it has been carried out.
  void Command(MenuId item) const { CommandNumber(FirstCommandId + static_cast<int>(item)); }
  void OpenRecent(int index) const { CommandNumber(FirstRecentId + index); }
  // One that asks the user something.
  ShownDialog CommandWithDialog(MenuId item) const;
  void Post(MenuId item) const;
  // A file is dropped on the window.
  void Drop(const std::string& file) const;
  void Close() const;
  // Goes to the editor.
  void Key(WORD key) const;
  // As from the keyboard.
  void PressKey(WORD key) const;
  void ReleaseKey(WORD key) const;
  void CtrlKey(WORD key) const;

  std::string Title() const;
  std::string Text(int id) const;
  // Lines end in LF.
  std::string EditorText() const;
  void SelectInEditor(int begin, int end) const;
  void TypeIntoEditor(std::string_view text) const;
  void SetEditorText(const std::string& text) const;
  std::string ToolTip(int id) const;
  SIZE GraphicSize() const;
  // Over the graphic area, in its pixels; returns what Text2 shows then.
  std::string MovePointer(int x, int y) const;
  void Resize(int width, int height) const;
  // Presses the button of the tool bar, counted from 0, with the mouse.
  void ClickTool(int button) const;
  // Both ask an area for its menu: at a place in its pixels, and by the key.
  void ClickRight(int areaId, int x, int y) const;
  void PressMenuKey(int areaId) const;
  // Presses a letter in the menu that was asked for.
  void ChooseInMenu(char letter) const;
  // As the system does when the window has come to a screen of another resolution.
  void MoveToScreenOf(UINT dpi, const RECT& frame) const;

  ResourceCount CountResources() const;
  int AwaitExit();
  bool HasEnded() const;
  void Kill();

 private:
  std::vector<HWND> Windows() const { return WindowsOf(process_.dwProcessId); }
  // As Await, for what needs the program; what it shows is told when it is in vain.
  void AwaitHere(std::string_view what, const std::function<bool()>& condition) const;
  void CommandNumber(int number) const;
  std::string Situation() const;

  PROCESS_INFORMATION process_{};
};

}  // namespace vaxel
