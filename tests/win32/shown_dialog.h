// Dialogs on the screen, pressed and read by another thread or another process. Nothing waits for ever: what
// does not come about is thrown as a DriveFailure.
#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vaxel {

class DriveFailure : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

// How long anything may take: 15 seconds, or as many as the variable VAXEL_TEST_PATIENCE says where all is
// slow.
std::chrono::milliseconds Patience();

// Asks again until the answer is true.
void Await(std::string_view what, const std::function<bool()>& condition,
           std::chrono::milliseconds patience = Patience());

// However long the answer takes: it may be a whole run. A window that is closing says nothing.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
void SetTextOf(HWND window, const std::wstring& text);
std::string TextOf(HWND window);
std::wstring ClassOf(HWND window);
// Those of the whole screen, hidden ones too.
std::vector<HWND> WindowsOf(DWORD process);
std::vector<HWND> ChildrenOf(HWND window);

// A dialog, or a message box of the system or of our own.
class ShownDialog {
 public:
  explicit ShownDialog(HWND window) : window_(window) {}

  HWND Window() const { return window_; }
  HWND Control(int id) const;
  bool IsOpen() const { return IsWindow(window_) && IsWindowVisible(window_); }
  bool IsMessageBox() const;
  bool IsFileDialog() const;
  std::string Caption() const { return TextOf(window_); }
  std::string Text(int id) const { return TextOf(Control(id)); }
  // As the text of a field, selected as far as it is.
  std::string Selected(int id) const;
  // What a message box says.
  std::string Message() const;
  std::string FileName() const;
  // The id of the control with the focus.
  int Focus() const;

  void Type(int id, const std::string& text) const;
  void Click(int id) const { Send(Control(id), BM_CLICK); }
  // Sent to the control with the focus, as the keyboard does.
  void Key(WORD key) const;
  void CtrlKey(WORD key) const;
  void AltLetter(wchar_t letter) const;
  void Press(int id) const;
  // As Press; the dialog then closes.
  void Answer(int id) const;
  void AnswerFile(const std::string& name) const;
  void AwaitFocus(int id) const;
  void AwaitClosed() const;

 private:
  HWND FocusWindow() const;
  HWND NameField() const;

  HWND window_;
};

// The dialog with this caption, or any, that can be answered: those under it are disabled.
std::optional<ShownDialog> FindDialog(DWORD process, const std::string& caption = {});

}  // namespace vaxel
