#include "drawing/draw_surface.h"

#include <gtest/gtest.h>

#include <limits>
#include <variant>

#include "drawing/drawing_fault.h"
#include "drawing/pen.h"

namespace vaxel {
namespace {

TEST(DrawSurface, RefusesCoordinatesThatNoFormatHolds) {
  DisplayList list;
  DrawSurface surface(list);
  surface.Begin({});
  EXPECT_THROW(surface.Line({}, {1e10, 0}, {}), DrawingFault);
  EXPECT_THROW(surface.Line({}, {0, std::numeric_limits<double>::quiet_NaN()}, {}), DrawingFault);
  EXPECT_THROW(surface.Line({}, {}, {.Width = 1e10}), DrawingFault);
  EXPECT_THROW(surface.Circle({{}, -1e10}, {}), DrawingFault);
  EXPECT_EQ(list.Size(), 0U);
}

TEST(DrawSurface, OutlinesSquareEndsForPixelDevicesAlone) {
  for (const bool isPixelDevice : {false, true}) {
    DisplayList list;
    DrawSurface surface(list);
    surface.Begin({.PixelMm = 0.5, .IsPixelDevice = isPixelDevice});
    DrawStroke(surface, {.Width = 4, .SquareEnds = true}, {10, 10}, {20, 10}, 0);
    EXPECT_EQ(list.At(0).Width, isPixelDevice ? 0.5 : 0);
    EXPECT_EQ(std::get<PolygonShape>(list.At(0).Figure).Use, PolygonUse::Stroke);
  }
}

// A pixel finer than the printers' is still drawn; one of a device of its own is always 1.
TEST(DrawSurface, IsAsFineInFilesAsAPrinter) {
  struct Case {
    double PixelMm;
    bool IsPixelDevice;
    double LeastMm;
  };
  constexpr double printer = 25.4 / 600;
  for (const auto& [pixelMm, isPixelDevice, leastMm] :
       {Case{0.5, false, printer}, {printer, false, printer}, {0.01, false, 0.01}, {0.5, true, 0.5}}) {
    DisplayList list;
    DrawSurface surface(list);
    surface.Begin({.PixelMm = pixelMm, .IsPixelDevice = isPixelDevice, .Zoom = 3});
    EXPECT_DOUBLE_EQ(surface.LeastWidth() * pixelMm, leastMm) << pixelMm;
  }
}

}  // namespace
}  // namespace vaxel
