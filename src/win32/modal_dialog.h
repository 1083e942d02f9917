// One procedure for all dialogs of our own.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "win32/dialog_layout.h"

namespace vaxel {

struct DialogActions {
  // All controls exist. The answer is what gets the focus; null leaves it to the first one.
  std::function<HWND(HWND dialog)> OnInit;
  // A button was pressed; IDCANCEL stands for Escape and the caption's button too. The answer says whether
  // the dialog closes.
  std::function<bool(HWND dialog, int id)> OnPressed;
  // Any message once the dialog is complete, before the others; there is no answer for what is left to them.
  // EndDialog closes the dialog.
  std::function<std::optional<INT_PTR>(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)> OnMessage{};
};

// Lets a window that is disabled already be the owner of a dialog: it is enabled again when the dialog goes,
// as the system would otherwise activate another program, and disabled once the dialog is gone.
class DialogOwner {
 public:
  explicit DialogOwner(HWND window);
  ~DialogOwner();
  DialogOwner(const DialogOwner&) = delete;
  DialogOwner& operator=(const DialogOwner&) = delete;

  HWND Window() const { return window_; }

 private:
  HWND window_;
  bool wasDisabled_;
};

// Shows a dialog over the middle of its owner, or of the screen without one. Returns the id of the button
// that closed it. What an action throws closes the dialog and is thrown from here: it must not pass through
// the system.
int RunDialog(HINSTANCE instance, HWND owner, const DialogSpec& spec, const DialogActions& actions);

std::wstring TextOfControl(HWND dialog, int id);

}  // namespace vaxel
