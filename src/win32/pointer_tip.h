// A text beside the pointer, over a window that says itself when it appears.
#pragma once

#include <windows.h>

#include <string_view>

namespace vaxel {

class PointerTip {
 public:
  // The tip is destroyed with its owner.
  PointerTip(HINSTANCE instance, HWND owner);

  // Beside the pointer, in as many lines as the text has; an empty one hides it.
  void Show(std::string_view text);
  void Hide();

 private:
  HWND owner_;
  HWND tip_;
  bool isShown_ = false;
};

}  // namespace vaxel
