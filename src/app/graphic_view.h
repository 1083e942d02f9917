// How the window shows the drawing: enlarged and moved without running the script again.
#pragma once

#include "base/point.h"
#include "base/units.h"
#include "drawing/display_list.h"

namespace vaxel {

// The graphic area: its size in pixels, at least 1, and what the system says of the size of a pixel.
struct GraphicArea {
  double WidthPx = 1, HeightPx = 1;
  double PixelMm = MillimetresPerInch / 96;

  Point MiddlePx() const { return Point{WidthPx, HeightPx} * 0.5; }
};

// Where a page lies in the graphic area, in pixels from the area's upper-left corner.
struct PagePlace {
  double PixelsPerMm = 1;
  Point Corner;  // the page's upper-left one

  Point ToPixels(Point millimetres) const { return Corner + millimetres * PixelsPerMm; }
  Point ToMillimetres(Point pixel) const { return (pixel - Corner) * (1 / PixelsPerMm); }
};

// The default view has the page's middle in the middle of the area. All that a script draws on the screen is
// counted from there, so a drawing follows the size of the area to where a new run would draw it.
struct GraphicView {
  static constexpr double MinScale = 0.05, MaxScale = 200;

  double Scale = 1;
  Point Offset;  // of the page's middle from the area's, in pixels

  bool IsDefault() const { return Scale == 1 && Offset.X == 0 && Offset.Y == 0; }
  // The place in the drawing, in pixels of the default view from the page's middle, that is shown at a pixel,
  // which is counted from the area's middle too.
  Point ToDrawing(Point pixel) const { return (pixel - Offset) * (1 / Scale); }
  Point ToPixel(Point drawing) const { return Offset + drawing * Scale; }
  // Enlarges by the factor; what is at the pixel, counted from the area's middle, stays there.
  void ZoomAt(Point pixel, double factor);
  void Move(Point byPixels) { Offset = Offset + byPixels; }
};

PagePlace PlaceOf(const GraphicView& view, const Page& page, const GraphicArea& area);

}  // namespace vaxel
