// Pictures as they come out, to be measured.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "drawing/colour.h"

namespace vaxel::test {

// The colour of each pixel, and how much of it is inked: 0 white, 1 black.
class Picture {
 public:
  // Reads a PNG file; an unreadable one is an empty picture.
  Picture(const std::string& fileName, double pixelsPerMm);

  struct Box {
    double Left, Top, Right, Bottom;
  };

  double WidthMm() const { return static_cast<double>(width_) / scale_; }
  double HeightMm() const { return static_cast<double>(height_) / scale_; }
  // The pixels, of all or inside a box, that are at least half inked, in mm.
  Box InkBox() const { return InkBox(Whole()); }
  Box InkBox(const Box& within) const;
  // Sum of the ink inside a box, in mm².
  double InkIn(const Box& box) const;
  // The centre of gravity of the ink inside a box, in mm.
  struct Place {
    double X, Y;
  };
  Place CentreOfInk(const Box& box) const;
  Box Whole() const { return {0, 0, WidthMm(), HeightMm()}; }
  // Of the pixel that holds a place, which must lie in the picture.
  Colour ColourAt(const Place& place) const;

 private:
  template <class Use>
  void ForEachPixel(const Box& box, Use use) const;

  double scale_;
  std::size_t width_ = 0, height_ = 0;
  std::vector<std::uint8_t> rgb_;
};

}  // namespace vaxel::test
