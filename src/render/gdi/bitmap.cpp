#include "render/gdi/bitmap.h"

namespace vaxel {

GdiBitmap::GdiBitmap(int width, int height) : width_(width), height_(height) {
  const BITMAPINFO info = TopDownPixels(width, height);
  void* pixels = nullptr;
  handle_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
  if (handle_) pixels_ = static_cast<std::uint32_t*>(pixels);
}

BITMAPINFO TopDownPixels(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

}  // namespace vaxel
