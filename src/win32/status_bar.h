// The status fields of the main window on Windows.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "app/main_window.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

// The fields at the window's lower edge, with their tooltips.
class StatusBar {
 public:
  StatusBar(HINSTANCE instance, HWND parent);

  void SetText(StatusField field, std::string_view text);
  void SetToolTip(StatusField field, std::string_view text);
  // The font, and with it the height, follow the resolution.
  void SetDpi(UINT dpi);
  int Height() const { return height_; }
  void Place(int top, int width);

 private:
  bool Says(StatusField field) const { return !texts_[static_cast<std::size_t>(field)].empty(); }
  HWND FieldOf(StatusField field) const { return fields_[static_cast<std::size_t>(field)]; }

  HWND parent_;
  std::array<HWND, StatusFields> fields_{};
  std::array<std::wstring, StatusFields> texts_;
  HWND toolTips_ = nullptr;
  UniqueGdi<HFONT> font_;
  UINT dpi_ = 96;
  int height_ = 0, textHeight_ = 0;
  int top_ = 0, width_ = 0;
};

}  // namespace vaxel
