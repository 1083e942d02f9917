#include "scale/value_law.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "scale/law_table.h"
#include "scale/scale_support.h"

namespace vaxel {
namespace {

struct Interpolated {
  double Value, Reading;
};

// The numbers are those of scipy.interpolate.PchipInterpolator (SciPy 1.10).
TEST(TableLaw, InterpolatesAsSciPyDoes) {
  struct Case {
    std::vector<LawPoint> Points;
    std::vector<Interpolated> Expected;
  };
  const Case cases[] = {
      {{{0, 0}, {1, 5}, {3, 20}, {4.5, 31}, {7, 40}, {7.5, 60}, {12, 70}, {20, 100}},
       {{0.25, 1.0920516304347825},
        {0.5, 2.2871376811594204},
        {1.5, 8.299712276214834},
        {2, 12.114450127877237},
        {2.9, 19.250218670076723},
        {3.1, 20.75486633667879},
        {4, 27.867075049452602},
        {5, 32.87781660129555},
        {6.5, 36.866412848696854},
        {7.2, 47.35849212437206},
        {7.4, 57.69584515206222},
        {8, 62.39301012074039},
        {9, 65.37068825867404},
        {11, 68.04495940320359},
        {13, 72.85876525800862},
        {16, 82.99784305807928},
        {19.5, 97.6653013916755}}},
      // Falling, and given from the end on.
      {{{30, 2}, {5, 35}, {0, 40}, {-10, 90}},
       {{-9, 82.5296551724138},
        {-5, 57.35632183908046},
        {-1, 41.96689655172415},
        {2.5, 37.22022817587489},
        {4.9, 35.10891534931419},
        {6, 33.88922337546469},
        {20, 16.678185873605948},
        {29, 3.574050973977692}}},
      // The parabola's slope at the start would turn the curve.
      {{{0, 0}, {1, 0.1}, {2, 5}, {5, 6}},
       {{0.1, 0.001036}, {0.5, 0.0255}, {0.9, 0.081324}, {1.5, 2.4831956521739134}, {3, 5.58389694041868}}},
      {{{0, 1}, {4, 3}}, {{1, 1.5}, {3, 2.5}}}};
  for (const Case& c : cases) {
    const TableLaw law(c.Points, false, false);
    for (const LawPoint& point : c.Points) EXPECT_EQ(law.ReadingOf(point.Value), point.Reading);
    for (const Interpolated& at : c.Expected) {
      EXPECT_NEAR(law.ReadingOf(at.Value), at.Reading, 1e-12) << at.Value;
      EXPECT_NEAR(law.ValueOf(at.Reading), at.Value, 1e-9) << at.Value;
    }
  }
  const TableLaw straight(cases[0].Points, false, true);
  EXPECT_NEAR(straight.ReadingOf(7.2), 48, 1e-12);
  EXPECT_NEAR(straight.ValueOf(48), 7.2, 1e-12);
}

// The reference function of IEC 60584-1 for type K from 0 to 1372 degrees, in millivolts.
double TypeK(double celsius) {
  const double coefficients[] = {
      -0.176004136860E-01, 0.389212049750E-01, 0.185587700320E-04,  -0.994575928740E-07, 0.318409457190E-09,
      -0.560728448890E-12, 0.560750590590E-15, -0.320207200030E-18, 0.971511471520E-22,  -0.121047212750E-25};
  double millivolts = 0, power = 1;
  for (double coefficient : coefficients) {
    millivolts += coefficient * power;
    power *= celsius;
  }
  const double fromPeak = celsius - 126.968600000;
  return millivolts + 0.118597600000 * std::exp(-0.118343200000E-03 * fromPeak * fromPeak);
}

// The table of that standard for every 10 degrees, in microvolts as it is printed.
constexpr int TypeKTable[] = {
    0,     397,   798,   1203,  1612,  2023,  2436,  2851,  3267,  3682,  4096,  4509,  4920,  5328,  5735,
    6138,  6540,  6941,  7340,  7739,  8138,  8539,  8940,  9343,  9747,  10153, 10561, 10971, 11382, 11795,
    12209, 12624, 13040, 13457, 13874, 14293, 14713, 15133, 15554, 15975, 16397, 16820, 17243, 17667, 18091,
    18516, 18941, 19366, 19792, 20218, 20644, 21071, 21497, 21924, 22350, 22776, 23203, 23629, 24055, 24480,
    24905, 25330, 25755, 26179, 26602, 27025, 27447, 27869, 28289, 28710, 29129, 29548, 29965, 30382, 30798,
    31213, 31628, 32041, 32453, 32865, 33275, 33685, 34093, 34501, 34908, 35313, 35718, 36121, 36524, 36925,
    37326, 37725, 38124, 38522, 38918, 39314, 39708, 40101, 40494, 40885, 41276, 41665, 42053, 42440, 42826,
    43211, 43595, 43978, 44359, 44740, 45119, 45497, 45873, 46249, 46623, 46995, 47367, 47737, 48105, 48473,
    48838, 49202, 49565, 49926, 50286, 50644, 51000, 51355, 51708, 52060, 52410};

TEST(TableLaw, DrawsAPyrometerFromThePublishedTable) {
  std::string text = "T (°C);mV\n";
  const int last = TypeKTable[std::size(TypeKTable) - 1];
  int celsius = 0;
  for (int microvolts : TypeKTable) {
    const double reading = 100.0 * microvolts / last;
    text += std::to_string(celsius) + ";" + std::to_string(reading) + "\n";
    celsius += 10;
  }
  LawTable table = ReadLawTable(text);
  ASSERT_EQ(table.Fault, TableFault::None);
  for (LawPoint& point : table.Points) point.Reading /= 100;
  ScaleSupport support;
  support.SetHorizontal(0, 100, 0);
  support.SetOwnValues(0, 1300, std::make_shared<TableLaw>(table.Points, false, false));
  for (int at = 0; at <= 1300; at += 5) {
    const double place = support.PlaceOf({static_cast<double>(at)});
    EXPECT_NEAR(place, TypeK(at) / TypeK(1300) * 100, 0.002) << at;
    EXPECT_NEAR(support.ValueAtPlace(place), at, 1e-6);
  }
}

TEST(FunctionLaw, IsTriedBeforeItIsUsed) {
  using Kind = LawFault::Kind;
  struct Case {
    PlaceFunction PlaceOf;
    double First, Last;
    Kind Expected;
    double At;
  };
  const double infinity = HUGE_VAL;
  // The last turns at 0.5 as well, which comes later on the way from infinity.
  const Case cases[] = {
      {[](double v) { return 10 * v; }, 0, 10, Kind::None, 0},
      {[](double v) { return 10 * v; }, 10, 0, Kind::None, 0},
      {[](double v) { return (v - 4) * (v - 4); }, 0, 999, Kind::Turns, 4},
      {[](double v) { return std::sin(v); }, 0, 9.99, Kind::Turns, 1.57},
      {[](double) { return 5.0; }, 0, 10, Kind::Stands, 0},
      {[](double v) { return 100 * v / (v + 3); }, 0, infinity, Kind::None, 0},
      {[](double v) { return 100 / (3 - v); }, -infinity, 0, Kind::None, 0},
      {[](double v) { return std::atan(v); }, -infinity, infinity, Kind::None, 0},
      {[](double v) { return std::atan(v); }, infinity, -infinity, Kind::None, 0},
      {[](double v) { return std::log(v); }, 1, infinity, Kind::NoLimit, infinity},
      {[](double v) { return v * std::exp(-v); }, 0, infinity, Kind::Turns, 1},
      {[](double v) { return v * (v * (v / 3 - 0.75) + 0.5); }, infinity, 0, Kind::Turns, 1}};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    const LawFault fault = FindLawFault(c.PlaceOf, c.First, c.Last);
    EXPECT_EQ(fault.What, c.Expected) << i;
    // Between the places that are tried nothing is known.
    const double step = std::isfinite(c.Last - c.First) ? std::abs(c.Last - c.First) / 999 : 0.05;
    if (std::isinf(c.At)) {
      EXPECT_EQ(fault.At, c.At) << i;
    } else if (c.Expected == Kind::Turns) {
      EXPECT_NEAR(fault.At, c.At, 1.01 * step) << i;
    }
  }
}

TEST(FunctionLaw, HasAnInverseAndLimits) {
  const FunctionLaw ohms([](double v) { return 1000 / (10 + v); }, 0, HUGE_VAL);
  EXPECT_NEAR(ohms.ReadingOf(30), 0.25, 1e-15);
  EXPECT_NEAR(ohms.ReadingOf(HUGE_VAL), 0, 1e-9);
  EXPECT_NEAR(ohms.ValueOf(0.25), 30, 1e-9);
  EXPECT_EQ(ohms.ValueOf(0), HUGE_VAL);
  EXPECT_NEAR(ohms.ValueOf(1), 0, 1e-12);
  const FunctionLaw through([](double v) { return 50 + 50 * v / (1 + std::abs(v)); }, HUGE_VAL, -HUGE_VAL);
  EXPECT_NEAR(through.ValueOf(0.75), 1, 1e-12);
  EXPECT_NEAR(through.ValueOf(0.25), -1, 1e-12);
  EXPECT_EQ(through.ValueOf(0), -HUGE_VAL);
}

// Whatever the law and the support, the value at the place of a value is that value.
TEST(ScaleSupport, KnowsTheValueAtAPlace) {
  std::vector<ScaleSupport> laws(6);
  laws[1].SetPowerLaw(2);
  laws[2].SetLogarithmicLaw(2, 1, 1);
  laws[3].SetOwnValues(90, 10, nullptr);
  laws[3].SetPowerLaw(0.5);
  laws[4].SetOwnValues(0, 100,
                       std::make_shared<FunctionLaw>([](double v) { return 1000 / (10 + v); }, 0, 100));
  laws[5].SetOwnValues(
      0, 100, std::make_shared<TableLaw>(std::vector<LawPoint>{{0, 20}, {30, 25}, {100, 70}}, true, false));
  for (std::size_t i = 0; i < laws.size(); ++i) {
    for (int kind = 0; kind < 3; ++kind) {
      ScaleSupport support = laws[i];
      if (kind == 0) support.SetArc(20, 80, 50);
      if (kind == 1) support.SetHorizontal(60, 10, 5);
      if (kind == 2) support.SetVertical(-20, 90, 5);
      for (double value : {12.0, 25.0, 60.0, 89.0}) {
        EXPECT_NEAR(support.ValueAtPlace(support.PlaceOf({value})), value, 1e-5) << i << kind;
      }
    }
  }
  // Angles of a table do not follow the support.
  ScaleSupport angles = laws[5];
  angles.SetArc(0, 180, 50);
  EXPECT_NEAR(angles.PlaceOf({30}), 25 * RadiansPerDegree, 1e-12);
}

}  // namespace
}  // namespace vaxel
