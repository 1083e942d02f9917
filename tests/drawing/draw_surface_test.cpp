#include "drawing/draw_surface.h"

#include <gtest/gtest.h>

#include <limits>

namespace vaxel {
namespace {

class DrawSurfaceTest : public testing::Test {
 protected:
  const Operation& Last() const { return list_.At(list_.Size() - 1); }
  template <class Figure>
  const Figure& LastAs() const {
    return std::get<Figure>(Last().Figure);
  }

  DisplayList list_;
  DrawSurface surface_{list_};
};

TEST_F(DrawSurfaceTest, TextGrowsWithTheDrawing) {
  surface_.Begin({.WidthMm = 300, .HeightMm = 200, .Zoom = 2, .Zmm = 1.25});
  EXPECT_EQ(surface_.Font.Size, surface_.FontSizes.Base * 2.5);
  surface_.Begin({.Kind = TargetKind::Printer, .Zoom = 2});
  EXPECT_EQ(surface_.Font.Size, surface_.FontSizes.Base * 2);
}

TEST_F(DrawSurfaceTest, BoxesAndDotsAreRecorded) {
  surface_.Begin({.WidthMm = 200, .HeightMm = 100, .PixelMm = 0.25, .Zoom = 2});
  surface_.FillColor = 7;
  surface_.Rectangle(10, 10, 20, 5, 1, true);
  EXPECT_EQ(LastAs<RectangleShape>().Corner, (Point{20, 80}));
  EXPECT_EQ(LastAs<RectangleShape>().Opposite, (Point{40, 90}));
  EXPECT_EQ(LastAs<RectangleShape>().Inside.Ink, 7U);
  surface_.PSet(1, 1, 1);
  EXPECT_EQ(LastAs<PointShape>().At, (Point{2, 98}));
}

TEST_F(DrawSurfaceTest, ArcsRunCounterClockwiseByLessThanATurn) {
  surface_.Begin({});
  surface_.FillStyle = true;
  struct Case {
    double From, To, Start, Sweep;
  };
  const Case cases[] = {
      {0, 1, 0, 1}, {1, 0, 1, 2 * 3.141592653589793 - 1}, {-1, 1, -1, 2}, {7, 8, 0.7168146928204138, 1}};
  for (const Case& c : cases) {
    surface_.Circle(50, 50, 10, 0, CircleForm::Arc, c.From, c.To, 0.5);
    const auto& arc = LastAs<CircleShape>();
    EXPECT_NEAR(arc.StartAngle, c.Start, 1e-12);
    EXPECT_NEAR(arc.EndAngle - arc.StartAngle, c.Sweep, 1e-12);
    EXPECT_EQ(arc.RadiusX, 10);
    EXPECT_EQ(arc.RadiusY, 5);
    EXPECT_FALSE(arc.Inside.Solid);
  }
  surface_.Circle(50, 50, 10, 0, CircleForm::Pie, 0, 1);
  EXPECT_TRUE(LastAs<CircleShape>().Inside.Solid);
}

TEST_F(DrawSurfaceTest, RefusesCoordinatesThatNoFormatHolds) {
  surface_.Begin({});
  EXPECT_THROW(surface_.Line(0, 0, 1e10, 0, 0), CoordinateOverflow);
  EXPECT_THROW(surface_.PSet(std::numeric_limits<double>::quiet_NaN(), 0, 0), CoordinateOverflow);
  EXPECT_THROW(surface_.Circle(0, 0, -1e10, 0), CoordinateOverflow);
  EXPECT_EQ(list_.Size(), 0U);
}

}  // namespace
}  // namespace vaxel
