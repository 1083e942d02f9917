#include "drawing/draw_surface.h"

#include <gtest/gtest.h>

#include <limits>

namespace vaxel {
namespace {

TEST(DrawSurface, RefusesCoordinatesThatNoFormatHolds) {
  DisplayList list;
  DrawSurface surface(list);
  surface.Begin({});
  EXPECT_THROW(surface.Line(0, 0, 1e10, 0, 0), CoordinateOverflow);
  EXPECT_THROW(surface.PSet(std::numeric_limits<double>::quiet_NaN(), 0, 0), CoordinateOverflow);
  EXPECT_THROW(surface.Circle(0, 0, -1e10, 0), CoordinateOverflow);
  EXPECT_EQ(list.Size(), 0U);
}

}  // namespace
}  // namespace vaxel
