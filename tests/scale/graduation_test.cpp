#include "scale/graduation.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>

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

TEST(SplitDecimal, GivesMantissasBelowTen) {
  const std::tuple<double, float, int> cases[] = {
      {1, 1.0F, 0},     {9.5, 9.5F, 0},           {10, 1.0F, 1},
      {0.25, 2.5F, -1}, {99.9999999999, 1.0F, 2}, {0.0099999999999, 1.0F, -2}};
  for (const auto& [value, mantissa, exponent] : cases) {
    const DecimalSplit split = SplitDecimal(value);
    EXPECT_EQ(split.Mantissa, mantissa) << value;
    EXPECT_EQ(split.Exponent, exponent) << value;
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

}  // namespace
}  // namespace vaxel
