#include "scale/graduation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace vaxel {
namespace {

// The values of all marks, "mantissa" or "mantissaEexponent", blanks between them.
std::string LogMarks(const LogStepping& stepping, double first, double last) {
  ScaleSupport support;
  support.SetLogarithmicLaw(1, 1, 1);
  support.SetHorizontal(0, 100, 0);
  LogGraduation graduation(support, stepping, first, last);
  std::string marks;
  while (graduation.Next() == StepResult::Mark) {
    char text[40];
    std::snprintf(text, sizeof text, "%.4g", double{graduation.Mantissa()});
    marks += (marks.empty() ? "" : " ") + std::string(text);
    if (graduation.Exponent() != 0) marks += "E" + std::to_string(graduation.Exponent());
  }
  return marks;
}

TEST(LogGraduation, StepsDecadeByDecade) {
  struct Case {
    LogStepping Stepping;
    double First, Last;
    const char* Marks;
  };
  const Case cases[] = {
      {{1}, 1, 10, "1 2 3 4 5 6 7 8 9 1E1"},
      {{5}, 1, 10, "1 5 1E1"},
      {{2}, 1, 10, "1 2 4 6 8 1E1"},
      {{2}, 1, 100, "1 2 4 6 8 1E1 2E1 4E1 6E1 8E1 1E2"},
      {{1}, 2, 500, "2 3 4 5 6 7 8 9 1E1 2E1 3E1 4E1 5E1 6E1 7E1 8E1 9E1 1E2 2E2 3E2 4E2 5E2"},
      {{0.1F, 2}, 1, 10, "1 1.1 1.2 1.3 1.4 1.5 1.6 1.7 1.8 1.9 2 1E1"},
      {{0.5F, 2}, 1, 100, "1 1.5 2 1E1 1.5E1 2E1 1E2"},
      {{0.5F, 4, 3}, 1, 20, "3 3.5 4 2E1"},
      // Beyond the end of the range a coarser step draws nothing either; it only leads to the next decade.
      {{0.1F, -1.2F}, 1, 10, "1 1.1 1.2 1E1"},
      {{0.5F}, 1.2, 3.4, "1.5 2 2.5 3"},
      {{5}, 7, 60, "1E1 5E1"},
      {{1}, 0.02, 0.05, "2E-2 3E-2 4E-2 5E-2"},
      {{3}, 1, 10, "1 3 6 9 1E1"},
      {{20}, 1, 1000, "1 1E1 1E2 1E3"},
      {{1}, 5, 5, "5"},
      {{1}, 6, 5, ""}};
  for (const Case& c : cases) {
    EXPECT_EQ(LogMarks(c.Stepping, c.First, c.Last), c.Marks)
        << double{c.Stepping.LogInterval} << " from " << c.First << " to " << c.Last;
  }
}

TEST(LogGraduation, ReachesTheEndInTheSmallestSteps) {
  ScaleSupport support;
  support.SetLogarithmicLaw(1, 1, 1);
  LogGraduation graduation(support, {LogStepping::SmallestInterval}, 1, 10);
  int count = 0;
  while (count < 100'000 && graduation.Next() == StepResult::Mark) ++count;
  EXPECT_EQ(count, 90001);
}

TEST(LinearGraduation, PlacesMarksByTheLawOfTheScale) {
  ScaleSupport support;
  support.SetArc(45, 135, 50);
  support.SetPowerLaw(2);
  // The angle of mark i of 4: 45 + 90·√(i / 4); √0.25 = 0.5, √0.5 = 0.7071068, √0.75 = 0.8660254.
  const double expected[] = {45, 90, 108.639610, 122.942286, 135};
  LinearGraduation graduation(support, 4, 0, 0);
  for (double degrees : expected) {
    ASSERT_EQ(graduation.Next(), StepResult::Mark);
    EXPECT_NEAR(graduation.Place() / RadiansPerDegree, degrees, 1e-5);
    EXPECT_NEAR(graduation.Place(), support.ScaleAngle({graduation.Index() * 25.0}), 1e-6);
  }
  EXPECT_EQ(graduation.Next(), StepResult::End);
}

TEST(LinearGraduation, KeepsItsIndexInSixteenBits) {
  ScaleSupport support;
  support.SetArc(0, 90, 50);
  EXPECT_EQ(LinearGraduation(support, 10, 40000, 0).Next(), StepResult::Overflow);
  LinearGraduation graduation(support, 40000, 32766, 0);
  EXPECT_EQ(graduation.Next(), StepResult::Mark);
  EXPECT_EQ(graduation.Next(), StepResult::Mark);
  EXPECT_EQ(graduation.Next(), StepResult::Overflow);
  // Halves to the even neighbour: 0.5 − 1 is 0, so the first mark is number 1; 1.5 − 1 is 0 too.
  for (double first : {0.5, 1.5}) {
    LinearGraduation rounded(support, 10, first, 0);
    rounded.Next();
    EXPECT_EQ(rounded.Index(), 1) << first;
  }
}

}  // namespace
}  // namespace vaxel
