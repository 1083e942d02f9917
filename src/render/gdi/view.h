// The drawing as the window shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "base/result.h"
#include "render/gdi/bitmap.h"
#include "render/gdi/renderer.h"

namespace vaxel {

// A box of thin lines behind what is drawn, in millimetres of the page.
struct BoxBehind {
  Point Corner, Opposite;  // the upper-left and the lower-right one
  Colour Ink = Black;
};

// What a view shows of a page.
struct ViewFrame {
  int Width = 0, Height = 0;  // pixels, above 0
  DeviceTransform Place{};
  Colour Paper = White;    // everywhere where nothing is drawn
  bool IsForFile = false;  // its strokes are as wide as they say, at least a pixel; else as a window has them
  std::vector<BoxBehind> Behind{};
};

// Antialiased pictures of the pages of one list, which must outlive the view and may grow meanwhile. What one
// picture needed serves the next, so a view is kept as long as the drawing of a run.
class GdiView {
 public:
  GdiView(const DisplayList& list, PictureDecoder* decoder, bool nudgesRightAngles = false)
      : list_(list), stock_(decoder, nudgesRightAngles) {}

  // Opaque. None when there is no memory for it. What goOn leaves out is missing.
  GdiBitmap Draw(std::size_t page, const ViewFrame& frame, const PlayWatch& goOn = {});

  // The same without a bitmap of all: hands out rows from the top, as many as it has at a time, until the
  // taker returns false. False then, or when there was no memory.
  using RowTaker = std::function<bool(const std::uint32_t* pixels, int rows)>;
  bool DrawRows(std::size_t page, const ViewFrame& frame, const RowTaker& take, const PlayWatch& goOn = {});

  // What failed first since the view was made, when anything has.
  const Result<>& Outcome() const { return outcome_; }

 private:
  const DisplayList& list_;
  GdiStock stock_;
  Result<> outcome_;
};

}  // namespace vaxel
