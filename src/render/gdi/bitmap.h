// Bitmaps whose pixels the program can read and write.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "winbase/gdi_handles.h"

namespace vaxel {

// A bitmap of Windows whose pixels are at hand: 0xAARRGGBB, row by row from the upper-left corner, without
// gaps. GdiFlush must come between drawing into it and reading them.
class GdiBitmap {
 public:
  GdiBitmap() = default;
  // Both sizes above 0. When there is no memory for it the bitmap is none.
  GdiBitmap(int width, int height);

  explicit operator bool() const { return pixels_ != nullptr; }
  HBITMAP Handle() const { return handle_.get(); }
  std::uint32_t* Pixels() { return pixels_; }
  const std::uint32_t* Pixels() const { return pixels_; }
  int Width() const { return width_; }
  int Height() const { return height_; }
  std::size_t PixelCount() const {
    return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  }

 private:
  UniqueGdi<HBITMAP> handle_;
  std::uint32_t* pixels_ = nullptr;
  int width_ = 0, height_ = 0;
};

// A context that draws into a bitmap, which must live longer.
class BitmapDc {
 public:
  explicit BitmapDc(GdiBitmap& bitmap)
      : bitmap_(bitmap), context_(CreateCompatibleDC(nullptr)), selected_(context_.get(), bitmap.Handle()) {}

  HDC Handle() const { return context_.get(); }
  GdiBitmap& Bitmap() const { return bitmap_; }

 private:
  GdiBitmap& bitmap_;
  UniqueDc context_;
  SelectedObject selected_;
};

// A picture of 32-bit pixels as the calls of Windows are told of it, its first row uppermost.
BITMAPINFO TopDownPixels(int width, int height);

}  // namespace vaxel
