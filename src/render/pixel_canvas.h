// Figures drawn into pixels of memory without a graphics library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "drawing/colour.h"
#include "render/device_transform.h"
#include "render/picture_scaling.h"
#include "render/stroke_outline.h"

namespace vaxel {

// As pixels hold a colour.
constexpr std::uint32_t OpaquePixel(Colour colour) {
  return 0xFF000000 | RedOf(colour) << 16 | GreenOf(colour) << 8 | BlueOf(colour);
}

// Draws into pixels of memory, row by row from the upper-left corner: those whose middles lie within a
// figure. So every edge is within half a pixel of its place, and a stroke of a pixel or more has no gaps.
class PixelCanvas {
 public:
  // The pixels must outlive the canvas.
  PixelCanvas(std::uint32_t* pixels, int width, int height)
      : pixels_(pixels), width_(width), height_(height) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  // Contours in millimetres, filled together by the non-zero rule.
  void Fill(const Contours& contours, const DeviceTransform& transform, Colour ink);
  // Scales the picture to the box and lays it over what is there.
  void Blend(const PixelView& picture, const PixelBox& box);

 private:
  // A side of a contour, from the first row whose middle it crosses to the last.
  struct Side {
    int First, Last;
    double X;     // in the middle of the present row
    double Step;  // of X, from row to row
    int Turn;     // 1 downward, -1 upward
  };

  void AddSide(Point from, Point to);
  void FillRow(int y, std::uint32_t pixel);

  std::uint32_t* pixels_;
  int width_, height_;
  std::vector<Side> sides_, active_;
};

}  // namespace vaxel
