#include "scale/value_steps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "base/number_text.h"

namespace vaxel {
namespace {

std::string Text(const std::vector<double>& values) {
  std::string text;
  for (double value : values) text += (text.empty() ? "" : " ") + NumberText(value);
  return text;
}

TEST(MultiplesBetween, CountsTheEndsAndKeepsDecimals) {
  EXPECT_EQ(Text(*MultiplesBetween(0.1, 0, 1)), "0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1");
  EXPECT_EQ(Text(*MultiplesBetween(0.3, 0.9, -0.3)), "-0.3 0 0.3 0.6 0.9");
  EXPECT_EQ(Text(*MultiplesBetween(20, 15, 65)), "20 40 60");
  EXPECT_EQ(Text(*MultiplesBetween(20, 41, 59)), "");
  // A billionth of a step beyond an end, and more.
  EXPECT_EQ(Text(*MultiplesBetween(5, 5 + 4e-9, 10 - 4e-9)), "5 10");
  EXPECT_EQ(Text(*MultiplesBetween(5, 5 + 6e-9, 10 - 6e-9)), "");
  EXPECT_EQ(MultiplesBetween(1, 0, 999999)->size(), 1000000U);
  EXPECT_FALSE(MultiplesBetween(1, 0, 1000000));
  EXPECT_FALSE(MultiplesBetween(1, 0, HUGE_VAL));
  EXPECT_FALSE(MultiplesBetween(1e-300, 0, 1e300));
}

TEST(IsMultipleOf, PassesOverWhatArithmeticLeaves) {
  EXPECT_TRUE(IsMultipleOf(0.1 * 3, 0.3));
  EXPECT_TRUE(IsMultipleOf(-4, 2));
  EXPECT_TRUE(IsMultipleOf(0, 7));
  EXPECT_FALSE(IsMultipleOf(0.1, 0.2));
  EXPECT_FALSE(IsMultipleOf(3.001, 1));
}

using Place = double (*)(double);

AreApart ApartOn(Place placeOf, double distance) {
  return [=](double a, double b) { return std::abs(placeOf(a) - placeOf(b)) >= distance; };
}

double Straight(double v) {
  return v;
}
double Ohms(double v) {
  return 100 - 1000 / (10 + v);
}
double Squared(double v) {
  return v * v / 100;
}
double Rooted(double v) {
  return std::copysign(std::sqrt(std::abs(v)), v) * 10;
}

TEST(ChooseValues, FillsTheScaleWithRoundValues) {
  struct Case {
    double From, To;
    Place PlaceOf;
    double Distance;
    const char* Expected;
  };
  const Case cases[] = {
      // An even scale has one step, in either direction, whatever its ends are.
      {0, 100, Straight, 9, "0 10 20 30 40 50 60 70 80 90 100"},
      {100, 0, Straight, 11, "0 20 40 60 80 100"},
      {0, 10, Straight, 2, "0 2 4 6 8 10"},
      {-10, 10, Straight, 5, "-10 -5 0 5 10"},
      {4, 20, Straight, 2, "4 6 8 10 12 14 16 18 20"},
      {0.004, 0.0072, Straight, 0.001, "0.004 0.005 0.006 0.007"},
      {33, 97, Straight, 20, "40 60 80"},
      {3, 3, Straight, 1, "3"},
      {1e6, 1e6 + 5, Straight, 1, "1000000 1000001 1000002 1000003 1000004 1000005"},
      // An ohmmeter, 10 at its middle: from 1 to 1.5 there are 3.95, from 40 to 50 3.33, from 20 to 30 8.33.
      {0, HUGE_VAL, Ohms, 4, "0 0.5 1 2 3 4 5 10 15 20 30 50 100 200 inf"},
      // Crowded at the start: fives where twos would not begin at 5, nothing where there is no room.
      {0, 100, Squared, 4, "0 20 30 40 50 55 60 65 70 75 80 85 90 95 100"},
      // Crowded at the end, on both sides of 0.
      {-100, 100, Rooted, 12, "-100 -50 -20 -10 -2 0 2 10 20 50 100"}};
  for (const Case& c : cases) {
    const std::vector<double> values = ChooseValues(c.From, c.To, ApartOn(c.PlaceOf, c.Distance)).Values;
    EXPECT_EQ(Text(values), c.Expected);
    for (std::size_t i = 1; i < values.size(); ++i) {
      EXPECT_GE(std::abs(c.PlaceOf(values[i]) - c.PlaceOf(values[i - 1])), c.Distance) << c.Expected;
    }
  }
}

// Three digits need more room than two, but what is even stays even.
TEST(ChooseAmong, KeepsAnEvenScaleEven) {
  const auto room = [](double a, double b) { return std::abs(a - b) >= (std::abs(b) < 100 ? 15 : 30); };
  EXPECT_EQ(Text(ChooseAmong(ChooseValues(0, 250, ApartOn(Straight, 5)), room)), "0 50 100 150 200 250");
  EXPECT_EQ(Text(ChooseAmong(ChooseValues(0, 250, ApartOn(Straight, 12)), room)), "0 100 200");
  EXPECT_EQ(Text(ChooseAmong(ChooseValues(0, HUGE_VAL, ApartOn(Ohms, 4)), ApartOn(Ohms, 6))),
            "0 1 2 3 5 10 15 20 50 100 inf");
  EXPECT_EQ(Text(ChooseAmong(ChooseValues(7, 7, ApartOn(Straight, 1)), room)), "7");
}

TEST(ChooseValues, EndsWhateverTheScaleIs) {
  // Where nothing has room; where everything has.
  EXPECT_LE(ChooseValues(0, 100, [](double, double) { return false; }).Values.size(), 1U);
  EXPECT_LE(ChooseValues(-HUGE_VAL, HUGE_VAL, [](double, double) { return false; }).Values.size(), 2U);
  EXPECT_LE(ChooseValues(1e-300, 1e300, ApartOn([](double v) { return std::log10(v); }, 100)).Values.size(),
            7U);
  EXPECT_LE(ChooseValues(0, HUGE_VAL, ApartOn([](double v) { return std::atan(v); }, 0.5)).Values.size(), 5U);
  EXPECT_LE(ChooseValues(1e9, HUGE_VAL, ApartOn([](double v) { return v / (1e9 + v); }, 0.1)).Values.size(),
            7U);
}

}  // namespace
}  // namespace vaxel
