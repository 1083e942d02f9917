// What the figures of a series promise wherever there is room for them: they stand at marks, and do not meet.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

struct Figure {
  double Middle = 0, Length = 0;
  std::string Text;
};

// The places of the marks and the figures that a script draws along a horizontal line.
struct DrawnSeries {
  std::vector<double> Marks;
  std::vector<Figure> Figures;
};

DrawnSeries SeriesOf(const std::string& script) {
  DrawnSeries series;
  std::istringstream lines(Drawn(script));
  for (std::string line; std::getline(lines, line);) {
    std::replace(line.begin(), line.end(), ',', ' ');
    std::istringstream words(line);
    std::string kind, number, colour;
    words >> kind >> number >> colour;
    double x = 0, y = 0, angle = 0, size = 0, length = 0;
    if (kind == "line" && words >> size >> x) series.Marks.push_back(x);
    if (kind == "text" && words >> x >> y >> angle >> size >> length) {
      series.Figures.push_back({x + length / 2, length, line.substr(line.find(": ") + 2)});
    }
  }
  return series;
}

TEST(Series, ChosenFiguresStandAtMarksAndApart) {
  struct Case {
    const char* Scale;
    std::size_t LeastFigures;
  };
  const Case cases[] = {{"", 11},
                        {"Echelle = 0, 1", 11},
                        {"Echelle = -500, 800", 11},
                        {"Echelle =< 0, ∞, 1000/(10+%V)", 12},
                        {"Echelle =< 1, ∞, 100*(%V-1)/(%V+1)", 8},
                        {"Echelle =< -20, 3, 100*10^((%V-3)/20)", 9},
                        {"Exposant = 2\nEchelle = 0, 250", 9},
                        {"Exposant = 0.5\nEchelle = 250, 0", 9},
                        {"Exposant = L, 3", 8},
                        {"Echelle = liste, 12, 0, 30, 40, 31, 80, 77, 100", 5}};
  for (const char* distance : {"", "§1.5", "§5", "§13"}) {
    for (const Case& c : cases) {
      const std::string series = std::string("auto") + distance;
      const std::string script = std::string("Droite = -60, 60, 0, N\n") + c.Scale + "\nGradV = " + series +
                                 ", 3\nValV = " + series + ", 6";
      const DrawnSeries drawn = SeriesOf(script);
      const std::vector<double>& marks = drawn.Marks;
      const std::vector<Figure>& figures = drawn.Figures;
      EXPECT_GE(figures.size(), *distance == '\0' ? c.LeastFigures : 2U) << script;
      const double digit = 3.528 / 2;  // in the font that a script begins with
      for (std::size_t i = 0; i < figures.size(); ++i) {
        const auto isThere = [&](double mark) { return std::abs(mark - figures[i].Middle) < 0.002; };
        EXPECT_TRUE(std::any_of(marks.begin(), marks.end(), isThere)) << script << " " << figures[i].Text;
        for (std::size_t j = 0; j < i; ++j) {
          const double room =
              std::abs(figures[i].Middle - figures[j].Middle) - (figures[i].Length + figures[j].Length) / 2;
          EXPECT_GE(room, digit / 2 - 0.003) << script << " " << figures[i].Text << " " << figures[j].Text;
        }
      }
    }
  }
}

// A scale all around has one figure where its ends meet.
TEST(Series, LeavesOneOfTwoFiguresThatMeet) {
  const std::vector<Figure> figures =
      SeriesOf("Arc = 90, 450, 40, N\nEchelle = 0, 360\nValV = auto, 6").Figures;
  EXPECT_EQ(std::count_if(figures.begin(), figures.end(),
                          [](const Figure& figure) { return figure.Text == "0" || figure.Text == "360"; }),
            1);
}

// One above the other they take what a digit is high, 0.676 of the size in Times New Roman, and half its
// width: 2.385 and 0.882 mm in the font that a script begins with.
TEST(Series, StandsAsHighAsItsDigits) {
  const auto figuresIn = [](const std::string& length) {
    return SeriesOf("DroiteV = 0, " + length + ", 0, N\nEchelle = 0, 10\nValV = auto§1.5, 6").Figures.size();
  };
  EXPECT_EQ(figuresIn("32.8"), 11U);
  EXPECT_EQ(figuresIn("32.5"), 6U);
}

}  // namespace
}  // namespace vaxel::test
