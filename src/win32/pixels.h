// Between the lengths of a layout and the pixels of a screen.
#pragma once

#include <windows.h>

namespace vaxel {

// Lengths of 1/96 inch, in which layouts are thought of, as pixels and back.
inline int ToPixels(int length, UINT dpi) {
  return MulDiv(length, static_cast<int>(dpi), 96);
}
inline int FromPixels(int pixels, UINT dpi) {
  return MulDiv(pixels, 96, static_cast<int>(dpi));
}

}  // namespace vaxel
