#include "scale/scale_reading.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vaxel {
namespace {

// The point at a scale angle, 0 to the left, 90 upward, and a distance from the pivot.
Point At(double angleDegrees, double distance) {
  const double angle = angleDegrees * RadiansPerDegree;
  return {-distance * std::cos(angle), distance * std::sin(angle)};
}

TEST(ScaleReading, TellsAngleRadiusAndValueOnAnArc) {
  ScaleSupport support;
  support.SetArc(45, 135, 40);
  const ScaleReading middle = ReadScaleAt(support, At(90, 33));
  EXPECT_NEAR(*middle.AngleDegrees, 90, 1e-6);
  EXPECT_NEAR(*middle.Radius, 33, 1e-9);
  EXPECT_NEAR(*middle.Value, 50, 1e-6);
  EXPECT_NEAR(*ReadScaleAt(support, At(45, 3)).Value, 0, 1e-6);
  EXPECT_NEAR(*ReadScaleAt(support, At(112.5, 3)).Value, 75, 1e-6);
  EXPECT_FALSE(ReadScaleAt(support, At(40, 40)).Value);
  EXPECT_NEAR(*ReadScaleAt(support, At(40, 40)).AngleDegrees, 40, 1e-6);
  // v = 100 · f^(1/exponent): at half the arc of a square law 100 · √0.5.
  support.SetPowerLaw(0.5);
  EXPECT_NEAR(*ReadScaleAt(support, At(90, 40)).Value, 70.7107, 1e-3);
}

TEST(ScaleReading, FollowsArcsBeyondATurnBackwardAndWithADistantCentre) {
  ScaleSupport support;
  support.SetArc(-45, 225, 30);
  EXPECT_NEAR(*ReadScaleAt(support, At(-45, 30)).Value, 0, 1e-5);
  EXPECT_NEAR(*ReadScaleAt(support, At(225, 30)).Value, 100, 1e-5);
  EXPECT_NEAR(*ReadScaleAt(support, At(0, 30)).Value, 100.0 / 6, 1e-5);
  support.SetArc(135, 45, 30);
  EXPECT_NEAR(*ReadScaleAt(support, At(112.5, 30)).Value, 25, 1e-5);
  support.SetArc(45, 135, -30);
  EXPECT_NEAR(*ReadScaleAt(support, At(90, -30)).Value, 50, 1e-5);
  support = {};
  support.CentreOffset = 15;
  support.SetArc(40, 140, 50);
  for (double value : {10.0, 50.0, 80.0}) {
    const ScaleSupport::Mark mark = support.MarkAt(support.PlaceOf({value}), 5);
    EXPECT_NEAR(*ReadScaleAt(support, mark.Inner).Value, value, 1e-6);
    EXPECT_NEAR(*ReadScaleAt(support, mark.Outer).Value, value, 1e-6);
  }
}

TEST(ScaleReading, ReadsLinesLogarithmsAndOwnValues) {
  ScaleSupport support;
  support.SetHorizontal(-20, 60, 3);
  const ScaleReading onLine = ReadScaleAt(support, {0, 77});
  EXPECT_NEAR(*onLine.Value, 25, 1e-9);
  EXPECT_FALSE(onLine.AngleDegrees);
  EXPECT_FALSE(ReadScaleAt(support, {60.1, 3}).Value);
  support.SetVertical(50, 10, 0);
  support.SetLogarithmicLaw(2, 1, 1);
  EXPECT_NEAR(*ReadScaleAt(support, {0, 50}).Value, 1, 1e-6);
  EXPECT_NEAR(*ReadScaleAt(support, {0, 30}).Value, 10, 1e-5);
  EXPECT_NEAR(*ReadScaleAt(support, {0, 10}).Value, 100, 1e-4);
  support = {};
  support.SetArc(0, 180, 40);
  support.SetOwnValues(-40, 120, nullptr);
  EXPECT_NEAR(*ReadScaleAt(support, At(90, 40)).Value, 40, 1e-6);
  // An ohmmeter: 15 ohms in the middle, infinity at the left end.
  const PlaceFunction ohms = [](double ohm) { return 100 * 15 / (15 + ohm); };
  const double infinity = std::numeric_limits<double>::infinity();
  support.SetOwnValues(infinity, 0, std::make_shared<FunctionLaw>(ohms, infinity, 0));
  EXPECT_NEAR(*ReadScaleAt(support, At(90, 40)).Value, 15, 1e-4);
  EXPECT_NEAR(*ReadScaleAt(support, At(45, 40)).Value, 45, 1e-3);
  EXPECT_TRUE(std::isinf(*ReadScaleAt(support, At(0, 40)).Value));
  EXPECT_FALSE(ReadScaleAt({}, {1, 2}).Value);  // no support yet
}

}  // namespace
}  // namespace vaxel
