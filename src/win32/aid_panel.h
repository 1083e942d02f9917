// The panel below the editor: the help of the line, and what the last run found wrong.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/writing_aid_view.h"
#include "win32/rich_text.h"
#include "win32/theme.h"
#include "win32/window_class.h"
#include "winbase/gdi_handles.h"
#include "winbase/handles.h"

namespace vaxel {

class AidPanel {
 public:
  AidPanel(HINSTANCE instance, HWND parent, FailureHandler onFailure);

  HWND Window() const { return window_; }
  // Pixels; 0 when no page is shown.
  int Height() const;
  void SetDpi(UINT dpi);
  void SetTheme(const Theme& theme);
  void SetHelp(const AidHelp& help);
  void SetProblems(const std::vector<std::string>& problems);
  void ChooseProblem(std::size_t index);
  void ShowPage(AidPage page);
  // What screen readers call it.
  void SetName(std::string_view name) const;
  void SetCaptions(const std::string& help, const std::string& problems);
  // A problem was clicked.
  std::function<void(std::size_t index)> OnProblem;
  // The user asks for a page by its caption, or for none.
  std::function<void(AidPage page)> OnPage;

  bool IsComplete() const { return window_ != nullptr; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Failed() const { onFailure_(); }

 private:
  void Layout();
  void Paint() const;
  // The box of a page's caption, and of what closes the panel.
  RECT CaptionBox(std::size_t page) const;
  RECT CloseBox() const;
  void Press(POINT pixel);
  int Pixels(int length) const;
  int CaptionHeight() const { return textHeight_ + Pixels(4); }

  FailureHandler onFailure_;
  UniqueLibrary library_;
  HWND window_ = nullptr, help_ = nullptr, problems_ = nullptr;
  RichText helpText_;
  std::array<std::wstring, 2> captions_;
  AidPage page_ = AidPage::None;
  UniqueGdi<HFONT> font_;
  UINT dpi_ = 96;
  Theme theme_ = SystemTheme();
  UniqueGdi<HBRUSH> field_;
  int textHeight_ = 16;
};

}  // namespace vaxel
