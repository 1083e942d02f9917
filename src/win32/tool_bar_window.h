// The tool bar of the main window on Windows.
#pragma once

#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include <array>
#include <string>
#include <string_view>

#include "app/tool_bar.h"
#include "win32/theme.h"

namespace vaxel {

// The buttons of the table at the window's upper edge. They tell the parent of a press as its menu does, and
// Stop with StopId. A parent that is disabled by a run asks whether a click was meant for Stop, as the system
// has no clicks for it.
class ToolBarWindow {
 public:
  ToolBarWindow(HINSTANCE instance, HWND parent);

  HWND Window() const { return window_; }
  void SetText(ToolIcon button, std::string_view text);
  void SetItemEnabled(MenuId item, bool isEnabled);
  void SetStopEnabled(bool isEnabled);
  // Whether the place of the screen is on the button that ends a run.
  bool IsOverStop(POINT place) const;
  void SetTheme(const Theme& theme);
  void SetDpi(UINT dpi);
  void Show(bool isShown);
  int Height() const { return isShown_ ? height_ : 0; }  // pixels
  void Place(int width);
  // A notification of the control to its parent, and the answer.
  LRESULT Notified(const NMHDR& header);

 private:
  LRESULT Draw(const NMTBCUSTOMDRAW& drawing);
  void DrawButton(const NMTBCUSTOMDRAW& drawing) const;
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(window_, message, wParam, lParam);
  }

  HWND window_ = nullptr;
  std::array<std::wstring, ToolIcons> texts_;
  Theme theme_{};
  UINT dpi_ = 96;
  int height_ = 0;
  bool isShown_ = true;
};

}  // namespace vaxel
