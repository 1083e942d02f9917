#include "scale/scale_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vaxel {
namespace {

TEST(ScaleSupport, PowerLawFollowsTheTableOfRoots) {
  ScaleSupport support;
  // Published roots: √0.1 = 0.3162278, √0.5 = 0.7071068, ∛0.1 = 0.4641589, ∛0.5 = 0.7937005.
  struct Case {
    double Exposant, Value, Fraction;
  };
  const Case cases[] = {{1, 37, 0.37},      {2, 25, 0.5},       {2, 10, 0.3162278}, {2, 50, 0.7071068},
                        {3, 10, 0.4641589}, {3, 50, 0.7937005}, {0.5, 50, 0.25},    {0.5, 30, 0.09},
                        {2, 0, 0},          {2, 100, 1},        {2, 144, 1.2}};
  for (const Case& c : cases) {
    support.SetPowerLaw(c.Exposant);
    EXPECT_NEAR(support.ScaleFraction(c.Value), c.Fraction, 2e-7) << c.Exposant << " " << c.Value;
  }
}

TEST(ScaleSupport, LogarithmicLawFollowsTheTableOfLogarithms) {
  ScaleSupport support;
  // A published table of decimal logarithms: log 2 = 0.30103, log 3 = 0.47712, log 5 = 0.69897, log 7 =
  // 0.84510.
  support.SetLogarithmicLaw(0, 0, 0);
  EXPECT_EQ(support.Decades, 1);
  EXPECT_EQ(support.LogSpan, 1.0F);
  const double table[][2] = {{1, 0},       {2, 0.30103}, {3, 0.47712},   {5, 0.69897},
                             {7, 0.84510}, {10, 1},      {0.5, -0.30103}};
  for (const auto& row : table) EXPECT_NEAR(support.ScaleFraction(row[0]), row[1], 5e-6) << row[0];

  // From 2 to 500, 2.39794 decades: (log v − 0.30103) / 2.39794.
  support.SetLogarithmicLaw(2, 2, 5);
  EXPECT_NEAR(support.LogSpan, 2.39794, 1e-5);
  const double wider[][2] = {{2, 0}, {20, 0.41702}, {100, 0.70851}, {500, 1}, {1, -0.12554}};
  for (const auto& row : wider) EXPECT_NEAR(support.ScaleFraction(row[0]), row[1], 1e-5) << row[0];
  EXPECT_NEAR(support.LogFractionMantissa(2, 1), support.LogFraction(20), 1e-12);
  EXPECT_FALSE(std::isfinite(support.ScaleFraction(0)));
  EXPECT_FALSE(std::isfinite(support.ScaleFraction(-1)));

  support.SetPowerLaw(1);
  EXPECT_EQ(support.ScaleFraction(50), 0.5);
}

TEST(ScaleSupport, ArcSineHasNoAnswerBeyondItsRange) {
  EXPECT_EQ(ArcSine(1), Pi / 2);
  EXPECT_NEAR(ArcSine(0.5), Pi / 6, 1e-14);
  EXPECT_FALSE(std::isfinite(ArcSine(-1)));
  EXPECT_FALSE(std::isfinite(ArcSine(1.01)));
}

}  // namespace
}  // namespace vaxel
