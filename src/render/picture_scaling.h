// Pictures in the size in which they are drawn.
#pragma once

#include <cstdint>
#include <vector>

namespace vaxel {

// Pixels row by row from the upper-left corner, each 0xAARRGGBB with its colour multiplied by its alpha.
struct PixelView {
  const std::uint32_t* Pixels = nullptr;
  int Width = 0, Height = 0;
};

// A box of pixels; right and bottom are outside.
struct PixelBox {
  int Left = 0, Top = 0, Right = 0, Bottom = 0;
  int Width() const { return Right - Left; }
  int Height() const { return Bottom - Top; }
};

// The part of a picture, scaled to width by height, that lies in a box, which must lie within. What is
// enlarged is smooth, what is reduced is the mean of what it shows.
std::vector<std::uint32_t> ScalePicture(const PixelView& picture, int width, int height,
                                        const PixelBox& part);

}  // namespace vaxel
