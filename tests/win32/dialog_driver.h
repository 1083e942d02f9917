// Presses the controls of dialogs that this process shows, from a thread beside the one that shows them.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace vaxel {

// A dialog on the screen.
class ShownDialog {
 public:
  explicit ShownDialog(HWND window) : window_(window) {}

  HWND Window() const { return window_; }
  HWND Control(int id) const { return GetDlgItem(window_, id); }
  bool IsOpen() const { return IsWindow(window_) && IsWindowVisible(window_); }
  std::wstring Caption() const;
  std::wstring Text(int id) const;
  // The id of the control with the focus.
  int Focus() const;
  bool WaitFocus(int id) const;
  // As the text of a field, selected as far as it is.
  std::wstring Selected(int id) const;

  void Type(int id, const std::wstring& text) const;
  void Press(int id) const { PostMessageW(window_, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0); }
  void Click(int id) const { SendMessageW(Control(id), BM_CLICK, 0, 0); }
  // Sent to the control with the focus, as the keyboard does.
  void Key(WORD key) const;
  void AltLetter(wchar_t letter) const;
  bool WaitClosed() const;

 private:
  HWND FocusWindow() const;

  HWND window_;
};

// The dialog with this caption, or any; it fails the test and gives none when there is none after some
// seconds.
ShownDialog WaitForDialog(const std::wstring& caption = {});

// Runs `show`, which shows a dialog, and beside it `drive`. What is open when `drive` has returned is a
// failure, and closed.
void Drive(const std::function<void()>& show, const std::function<void(const ShownDialog&)>& drive);

// What is left behind by so many showings of a dialog, at the least. The system keeps some objects for later,
// a handful at a time, so the best of several batches is taken: what a dialog loses, it loses in each.
struct ShowingCost {
  int Showings = 25;
  int Windows = 0, GdiObjects = 0, UserObjects = 0;
};
ShowingCost MeasureShowings(const std::function<void()>& show,
                            const std::function<void(const ShownDialog&)>& drive);

}  // namespace vaxel
