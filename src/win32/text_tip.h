// A text over a window, about what the pointer rests on; a screen reader says it when it appears.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "drawing/colour.h"
#include "winbase/handles.h"

namespace vaxel {

class TextTip {
 public:
  // Tips are for windows of this one.
  explicit TextTip(HWND owner);

  // Shows the text, in as many lines as it has, right and below of a pixel of the screen, on the ground of a
  // colour when there is one. An empty text hides it.
  void Show(std::string_view text, POINT corner, std::optional<Colour> ground = std::nullopt);
  void Hide();
  bool IsShown() const { return isShown_; }

 private:
  HWND owner_;
  UniqueWindow tip_;
  COLORREF usualGround_ = 0, usualInk_ = 0;
  bool isShown_ = false;
};

}  // namespace vaxel
