// A page drawn into a bitmap, and what can be measured there. Places are pixels from the upper-left corner,
// counted at the edges of the pixels.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "drawing/display_list.h"
#include "render/gdi/renderer.h"

namespace vaxel::test {

struct PixelEdges {
  double Left = 0, Top = 0, Right = 0, Bottom = 0;
};

// Draws into the page that it is given.
using DrawFunction = std::function<void(DisplayList&)>;

DisplayList ListOf(const DrawFunction& draw);

struct DrawnSettings {
  DeviceTransform Transform{10, 10, 0, 0};
  bool UsesPens = false;
  bool NudgesRightAngles = false;
  PictureDecoder* Decoder = nullptr;
  int Width = 1000, Height = 1000;
  std::optional<double> LeastWidth{};  // see GdiRenderer
};

// White, with the first page upon it.
GdiBitmap Drawn(const DisplayList& list, const DrawnSettings& settings = {}, Result<>* outcome = nullptr);

std::uint32_t PixelAt(const GdiBitmap& bitmap, int x, int y);
// Around all pixels that are not white; all zero when there are none.
PixelEdges InkEdges(const GdiBitmap& bitmap);
// Of black on white: pixels, parts of them counted as parts; and where its middle lies.
double InkArea(const GdiBitmap& bitmap);
Point InkMiddle(const GdiBitmap& bitmap);

// Each edge within the tolerance; "" or what is wrong.
std::string Difference(const PixelEdges& seen, const PixelEdges& expected, double tolerance);

}  // namespace vaxel::test
