// A line of text beside the pointer, about the word on which it rests.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "drawing/colour.h"
#include "winbase/handles.h"

namespace vaxel {

class WordTip {
 public:
  // Tips are for windows of this one.
  explicit WordTip(HWND owner);

  // Shows the text below a box of the screen, on the ground of a colour when there is one.
  void Show(std::string_view text, const RECT& box, std::optional<Colour> ground);
  void Hide();
  bool IsShown() const { return isShown_; }

 private:
  HWND owner_;
  UniqueWindow tip_;
  COLORREF usualGround_ = 0, usualInk_ = 0;
  bool isShown_ = false;
};

}  // namespace vaxel
