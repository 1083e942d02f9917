// Starts the program in a folder of its own and does what its user would do, from another process. Nothing
// waits for ever: what does not come about is thrown as a DriveFailure.
#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/menu_table.h"

namespace vaxel {

class DriveFailure : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

inline constexpr auto Patience = std::chrono::seconds(15);

// Asks again until the answer is true.
void Await(std::string_view what, const std::function<bool()>& condition,
           std::chrono::milliseconds patience = Patience);

// Empty when there is no such variable.
std::string Environment(const char* name);
std::string BytesOf(const std::filesystem::path& file);
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder, const std::string& extension);

// A folder that is empty at first and gone at last, unless the test has failed.
class TestFolder {
 public:
  explicit TestFolder(const std::string& name);
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // As the program shows it.
  std::string NameOf(const std::string& file) const;
  bool Has(const std::string& file) const { return std::filesystem::exists(path_ / file); }
  std::string Read(const std::string& file) const { return BytesOf(path_ / file); }
  void Write(const std::string& file, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

// A dialog or message box of the program.
class ProgramDialog {
 public:
  explicit ProgramDialog(HWND window) : window_(window) {}

  HWND Window() const { return window_; }
  HWND Control(int id) const { return GetDlgItem(window_, id); }
  bool IsOpen() const { return IsWindow(window_) && IsWindowVisible(window_); }
  std::string Caption() const;
  std::string Text(int id) const;
  // What a message box or a box of our own says.
  std::string Message() const;
  bool IsFileDialog() const;

  void Type(int id, const std::string& text) const;
  void Check(int id) const;
  void Key(WORD key) const;
  void Press(int id) const;
  // As Press; the dialog then closes.
  void Answer(int id) const;
  void AnswerFile(const std::string& name) const;
  void AwaitClosed() const;

 private:
  HWND window_;
};

struct ResourceCount {
  int GdiObjects = 0, UserObjects = 0;
};

class Program {
 public:
  // Its settings lie in the folder.
  explicit Program(const TestFolder& folder, const std::string& parameters = {});
  // Ends it, however it stands.
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  HWND Window() const { return FindMainWindow(); }
  HWND Control(int id) const;
  // The one that can be answered: those under it are disabled.
  ProgramDialog AwaitDialog() const;
  ProgramDialog AwaitDialog(const std::string& caption) const;
  // It waits for the user, with its main window.
  void AwaitIdle() const;
  bool IsBusy() const;

  // A command of the menus: waits until it has been carried out.
  void Command(MenuId item) const { CommandNumber(static_cast<int>(item)); }
  void OpenRecent(int index) const;
  // One that asks the user something.
  ProgramDialog CommandWithDialog(MenuId item) const;
  void Post(MenuId item) const;
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

  ResourceCount CountResources() const;
  int AwaitExit();
  bool HasEnded() const;
  void Kill();

 private:
  HWND FindMainWindow() const;
  std::vector<HWND> Windows() const;
  std::vector<ProgramDialog> Dialogs() const;
  void CommandNumber(int number) const;
  std::string Situation() const;

  PROCESS_INFORMATION process_{};
};

}  // namespace vaxel
