// A soft glow around outlines, for a window that marks some elements of a drawing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "drawing/colour.h"
#include "drawing/operation_search.h"

namespace vaxel {

// Where the outlines lie among the pixels.
struct HaloFrame {
  int Width = 1, Height = 1;
  double PixelsPerMm = 1;
  Point Corner;      // the page's upper-left one, in pixels
  double Reach = 1;  // of the glow from a stroke's edge, pixels
};

class Halo {
 public:
  // Works out the glow, which is as strong on a stroke as it ever gets, and fades to nothing at its reach. It
  // takes a few milliseconds, and of very many or very long outlines leaves out the last.
  Halo(const std::vector<OperationOutline>& outlines, const HaloFrame& frame);

  // Of each pixel, row by row; 255 is the strongest.
  const std::vector<std::uint8_t>& Strengths() const { return strengths_; }
  // Blends the ink into pixels, 0xAARRGGBB, of the frame's size.
  void BlendInto(std::uint32_t* pixels, Colour ink) const;

 private:
  void AddStroke(Point from, Point to, double half);
  void AddPiece(Point from, Point to, double half);

  int width_, height_;
  double reach_;
  std::size_t left_;  // pixels that may still be looked at
  std::vector<std::uint8_t> strengths_;
};

}  // namespace vaxel
