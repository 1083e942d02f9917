// The list beside the cursor of what may be meant by what is typed.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/writing_aid_view.h"
#include "win32/window_class.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

// A window of its own, which never gets the focus: the keys stay with the editor.
class OfferList {
 public:
  OfferList(HINSTANCE instance, HWND owner, FailureHandler onFailure);

  HWND Window() const { return window_; }

  // Below, or where there is no room above, the box of a line on the screen. The first offer is chosen.
  void Show(const std::vector<Offer>& offers, const RECT& line);
  void Choose(std::size_t index);
  void Hide();
  // An offer was clicked.
  std::function<void(std::size_t index)> OnTaken;

  bool IsComplete() const { return window_ != nullptr; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Failed() const { onFailure_(); }

 private:
  struct Row {
    std::wstring Shown, Explanation;
    std::optional<Colour> Sample;
  };

  void MakeFont();
  void Paint() const;
  void PaintRow(HDC context, const RECT& box, const Row& row, bool isChosen) const;
  int Pixels(int length) const;
  std::size_t VisibleRows() const;
  void ScrollTo(std::size_t row);

  FailureHandler onFailure_;
  HWND window_ = nullptr;
  UniqueGdi<HFONT> font_;
  UINT dpi_ = 0;
  int rowHeight_ = 1;
  int shownWidth_ = 0;  // pixels, of the first column
  std::vector<Row> rows_;
  std::size_t chosen_ = 0, first_ = 0;
};

}  // namespace vaxel
