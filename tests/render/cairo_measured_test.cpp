// What comes out, measured on the pixels: PDF through poppler, SVG through librsvg, PNG as written.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

#include "tests/render/cairo_outputs.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr double Dpi = 1016;  // 40 pixels a millimetre

struct Figure {
  const char* Name;
  Shape Drawn;
  Picture::Box Ink;  // worked out by hand, the stroke of 0.2 mm included
};

constexpr double Turn = 2 * std::numbers::pi;
constexpr double Degree = Turn / 360;
const Fill Filled{true, Black};

const std::array<Figure, 11> Figures = {
    {{"line", LineShape{{5, 6}, {31, 21}}, {4.9, 5.9, 31.1, 21.1}},
     {"box", RectangleShape{{30, 20}, {10, 5}, {}}, {9.9, 4.9, 30.1, 20.1}},
     {"filled-box", RectangleShape{{10, 5}, {30, 20}, Filled}, {9.9, 4.9, 30.1, 20.1}},
     {"circle", CircleShape{{20, 15}, 10, 10}, {9.9, 4.9, 30.1, 25.1}},
     {"ellipse", CircleShape{{20, 15}, 15, 5, 0, 0, Filled}, {4.9, 9.9, 35.1, 20.1}},
     // From 30° to 150°: ±10·cos 30° = 8.660 to the sides, y from 10·sin 30° = 5 up to 10.
     {"arc",
      CircleShape{{20, 20}, 10, 10, 30 * Degree, 150 * Degree, {}, CircleForm::Arc},
      {11.2397, 9.9, 28.7603, 15.1}},
     // From −45° through 0° to 45°.
     {"arc-through-0",
      CircleShape{{10, 15}, 10, 10, -45 * Degree, 45 * Degree, {}, CircleForm::Arc},
      {16.9711, 7.8289, 20.1, 22.1711}},
     // All but one degree about 180°.
     {"arc-nearly-whole",
      CircleShape{{20, 15}, 10, 10, -179.5 * Degree, 179.5 * Degree, {}, CircleForm::Arc},
      {9.9004, 4.9, 30.1, 25.1}},
     {"pie", CircleShape{{15, 20}, 10, 10, 0, 90 * Degree, Filled, CircleForm::Pie}, {14.9, 9.9, 25.1, 20.1}},
     // From −30° to 30°, its tip at the centre: up and down by 10·sin 30° = 5.
     {"pie-through-0",
      CircleShape{{15, 15}, 10, 10, -30 * Degree, 30 * Degree, Filled, CircleForm::Pie},
      {14.9, 9.9, 25.1, 20.1}},
     {"dot", LineShape{{12, 13}, {12, 13}}, {11.9, 12.9, 12.1, 13.1}}}};

// Contours of arcs as the reader sees them, y downward. Box, area and perimeter are those of the contour
// itself, without a stroke.
struct Outline {
  const char* Name;
  std::vector<ContourArc> Pieces;
  Picture::Box Extent;
  double Area, Perimeter;
};

const std::array<Outline, 4> Outlines = {
    {// From 0° to 120° between the radii 10 and 15: the outer arc leads back to 15·cos 120° = −7.5. A third
     // of π·(15² − 10²), and a third of 2π·(15 + 10) with two ends of 5.
     {"sector",
      {{{15, 22}, 10, 0, Turn / 3}, {{15, 22}, 15, Turn / 3, -Turn / 3}},
      {7.5, 7, 30, 22},
      130.900,
      62.360},
     // 20 by 15 with corners of 5: 300 − (4 − π)·25, and 2·(10 + 5) + 10π.
     {"rounded-box",
      {{{25, 10}, 5, 0, Turn / 4},
       {{15, 10}, 5, Turn / 4, Turn / 4},
       {{15, 15}, 5, Turn / 2, Turn / 4},
       {{25, 15}, 5, 3 * Turn / 4, Turn / 4}},
      {10, 5, 30, 20},
      278.540,
      61.416},
     // Two circles of radius 10 whose centres are 10 apart: a circle without the lens of
     // 200·π/3 − 5·√300 = 122.837, tips at 60° on the first. Arcs of 240° and 120° make a whole circle.
     {"crescent",
      {{{20, 15}, 10, Turn / 6, 2 * Turn / 3}, {{30, 15}, 10, 2 * Turn / 3, -Turn / 3}},
      {10, 5, 25, 25},
      191.322,
      62.832},
     // A ring is cut open along one radius of 5: π·(10² − 5²), and 2π·(10 + 5) with that line.
     {"ring", {{{20, 15}, 5, 0, Turn}, {{20, 15}, 10, Turn, -Turn}}, {10, 5, 30, 25}, 235.619, 99.248}}};

constexpr double Stroke = 0.2;

// A page of the list, and what must be seen on it.
struct Sheet {
  std::string Name;
  Picture::Box Ink;
  double Area = 0, AreaTolerance = 0;  // of the ink, mm²; 0: not worked out
};

std::vector<Sheet> DrawOutlines(DisplayList& list) {
  std::vector<Sheet> sheets;
  for (const Outline& outline : Outlines) {
    for (const auto& [style, isFilled, width] :
         {std::tuple{"-outlined", false, Stroke}, {"-filled", true, Stroke}, {"-bare", true, 0.0}}) {
      list.BeginPage(40, 30);
      list.AddContour(outline.Pieces, {isFilled, Black}, {width, Black, 1, {}});
      // Half of the stroke lies outside.
      const auto& [left, top, right, bottom] = outline.Extent;
      const double more = width / 2, stroked = outline.Perimeter * more;
      sheets.push_back({std::string(outline.Name) + style,
                        {left - more, top - more, right + more, bottom + more},
                        isFilled ? outline.Area + stroked : 2 * stroked,
                        (width > 0 ? 0.01 : 0.005) * outline.Perimeter});
    }
  }
  return sheets;
}

std::vector<Sheet> DrawFigures(DisplayList& list) {
  std::vector<Sheet> sheets;
  for (const Figure& figure : Figures) {
    list.BeginPage(40, 30);
    list.Add({Stroke, Black, 1, figure.Drawn});
    sheets.push_back({figure.Name, figure.Ink});
  }
  for (bool isFilled : {false, true}) {
    list.BeginPage(40, 30);
    list.AddPolygon(std::array{Point{10, 5}, Point{30, 5}, Point{20, 25}}, {isFilled, Black},
                    {Stroke, Black, 1, {}});
    sheets.push_back({isFilled ? "filled-polygon" : "polygon", {9.9, 4.9, 30.1, 25.1}});
  }
  return sheets;
}

// Parts of circles and ellipses with square ends: each end lies on its ray.
std::vector<Sheet> DrawButtArcs(DisplayList& list) {
  struct ButtArc {
    const char* Name;
    CircleShape Shape;
    double Width;
    Picture::Box Ink;
    double Area;
  };
  const auto arc = [](double radiusX, double radiusY, double sweep) {
    return CircleShape{{20, 20}, radiusX, radiusY, 0, sweep, {}, CircleForm::Arc, true};
  };
  const std::array<ButtArc, 3> arcs = {
      {// A quarter of the ring between the radii 8 and 12: π/4·(12² − 8²).
       {"butt-quarter", arc(10, 10, Turn / 4), 4, {20, 8, 32, 20}, 62.832},
       // Its ends stand square on the axes; 14.533 long, a quarter of 58.130, and 2 wide.
       {"butt-ellipse", arc(12, 6, Turn / 4), 2, {20, 13, 33, 20}, 29.065},
       // Shorter than it is wide: 10° of the ring between 7 and 13, from 7·cos 10° to 13, 13·sin 10° high.
       {"butt-short", arc(10, 10, 10 * Degree), 6, {26.8937, 17.7426, 33, 20}, 10.472}}};
  std::vector<Sheet> sheets;
  for (const auto& [name, shape, width, ink, area] : arcs) {
    list.BeginPage(40, 30);
    list.Add({width, Black, 1, shape});
    sheets.push_back({name, ink, area, 0.1});
  }
  return sheets;
}

constexpr double Agreement = 0.05;

void ExpectBox(const Picture::Box& measured, const Picture::Box& expected, const std::string& what) {
  EXPECT_NEAR(measured.Left, expected.Left, Agreement) << what;
  EXPECT_NEAR(measured.Top, expected.Top, Agreement) << what;
  EXPECT_NEAR(measured.Right, expected.Right, Agreement) << what;
  EXPECT_NEAR(measured.Bottom, expected.Bottom, Agreement) << what;
}

void ExpectSheets(const DisplayList& list, const std::vector<Sheet>& sheets, const std::string& document) {
  for (std::size_t page = 0; page < sheets.size(); ++page) {
    const auto& [name, box, area, areaTolerance] = sheets[page];
    const std::array pictures = {ThroughPng(list, name, Dpi, page), ThroughSvg(list, name, Dpi, page),
                                 ThroughPdf(list, document, Dpi, page)};
    const Picture::Place centre = pictures[0].CentreOfInk(pictures[0].Whole());
    const double first = pictures[0].InkIn(pictures[0].Whole());
    const double ink = area > 0 ? area : first;
    const double tolerance = area > 0 ? areaTolerance : 0.02 * first + 0.003;
    for (const Picture& picture : pictures) {
      ExpectBox(picture.InkBox(), box, name);
      const Picture::Place own = picture.CentreOfInk(picture.Whole());
      EXPECT_NEAR(own.X, centre.X, 0.02) << name;
      EXPECT_NEAR(own.Y, centre.Y, 0.02) << name;
      EXPECT_NEAR(picture.InkIn(picture.Whole()), ink, tolerance) << name;
    }
  }
}

TEST(MeasuredOutput, AllRenderersDrawTheSameFigures) {
  DisplayList list;
  const std::vector<Sheet> sheets = DrawFigures(list);
  ExpectSheets(list, sheets, "figures");
}

TEST(MeasuredOutput, AllRenderersDrawTheSameContours) {
  DisplayList list;
  const std::vector<Sheet> sheets = DrawOutlines(list);
  ExpectSheets(list, sheets, "contours");
}

TEST(MeasuredOutput, ArcsEndOnTheRaysOfTheirEnds) {
  DisplayList list;
  const std::vector<Sheet> sheets = DrawButtArcs(list);
  ExpectSheets(list, sheets, "butt-arcs");
}

// The width of a stroke of 30 mm in the middle of a sheet: all of its ink over its length.
double WidthOf(const Picture& picture, bool isRound) {
  constexpr double length = 30;
  const double ink = picture.InkIn(picture.Whole());
  // Round ends add a circle of the width.
  const double quarterPi = std::numbers::pi / 4;
  return isRound ? (std::sqrt(length * length + 4 * quarterPi * ink) - length) / (2 * quarterPi)
                 : ink / length;
}

TEST(MeasuredOutput, StrokesAreAsWideAsTheySay) {
  constexpr double tolerance = 0.005, pngDpi = 300, pngPixel = 25.4 / pngDpi;
  struct Case {
    double Width;
    double Drawn;  // no less than 1/600 inch
    bool IsPixelDevice;
    double ReaderDpi = Dpi;  // poppler draws level strokes a whole number of pixels wide
  };
  for (const auto& [width, drawn, isPixelDevice, readerDpi] :
       {Case{0.2, 0.2, false}, {0.05, 0.05, false}, {0.01, 25.4 / 600, false, 1200}, {0.5, 0.5, true}}) {
    for (const char* pen : {"C", "R"}) {
      for (const int angle : {0, 17, 90}) {
        RunSettings settings;
        settings.Target.WidthMm = settings.Target.HeightMm = 40;
        settings.Target.IsPixelDevice = isPixelDevice;
        const std::string name = std::to_string(width) + pen + std::to_string(angle);
        const ScriptRun run =
            RunText("CT = " + std::to_string(angle) + "°, -15, N\nTrait = 0, 0, " + std::to_string(angle) +
                        "°, 30, " + std::to_string(width) + "mm§" + pen,
                    settings);
        ASSERT_EQ(run.End, RunEnd::Completed) << run.Reason();
        const bool isRound = *pen == 'R';
        EXPECT_NEAR(WidthOf(ThroughSvg(run.List, "width", readerDpi), isRound), drawn, tolerance) << name;
        EXPECT_NEAR(WidthOf(ThroughPdf(run.List, "width", readerDpi), isRound), drawn, tolerance) << name;
        // A picture draws no less than a pixel of its own.
        EXPECT_NEAR(WidthOf(ThroughPng(run.List, "width", pngDpi), isRound), std::max(drawn, pngPixel),
                    tolerance)
            << name;
      }
    }
  }
}

TEST(MeasuredOutput, AHundredMillimetresAreAHundredMillimetres) {
  // A stroke with round ends of 0.2 mm, and the end marks of a scale of the same length.
  const ScriptRun run = RunText(
      "CentreI = 105, 148.5, N\nTrait = -50, 0, 50, 0, 0.2mm§R\nDroite = -50, 50, 30, N\nGrad = 1, 5, , , "
      "0.2mm§R",
      ForPrinter());
  ASSERT_EQ(run.End, RunEnd::Completed);
  const Picture page = ThroughPdf(run.List, "true-size", 600);
  EXPECT_NEAR(page.WidthMm(), 210, 0.05);
  EXPECT_NEAR(page.HeightMm(), 297, 0.05);
  // The middle of the stroke is all ink, so that the ink of one row of pixels is the stroke's length there.
  const double row = 25.4 / 600;
  const double length = page.InkIn({0, 148.5 - row / 2, 210, 148.5 + row / 2}) / row;
  EXPECT_NEAR(length - 0.2, 100, 0.02);
  const Picture::Place left = page.CentreOfInk({50, 110, 60, 125});
  const Picture::Place right = page.CentreOfInk({150, 110, 160, 125});
  EXPECT_NEAR(right.X - left.X, 100, 0.02);
  EXPECT_NEAR(left.X, 55, 0.02);
  EXPECT_NEAR(left.Y, 148.5 - 30 - 2.5, 0.02);
}

// A small sheet with the pivot in its middle, at 60, 60.
RunSettings OnASmallSheet() {
  RunSettings settings = ForPrinter();
  settings.Target.WidthMm = settings.Target.HeightMm = 120;
  return settings;
}

TEST(MeasuredOutput, GraduationsLieWithinAHundredthOfAMillimetre) {
  // The middles of five marks from 50 to 56 mm, worked out by hand: 53 mm from the pivot at each angle.
  const ScriptRun run = RunText("Arc = -45, 225, 50, N\nGrad = 8, 6, , , 0.2mm§R", OnASmallSheet());
  const Picture page = ThroughPdf(run.List, "graduations", Dpi);
  for (int mark = 0; mark <= 8; ++mark) {
    const double angle = (-45 + mark * 33.75) * Degree;
    const double x = 60 - 53 * std::cos(angle), y = 60 - 53 * std::sin(angle);
    const Picture::Place place = page.CentreOfInk({x - 4, y - 4, x + 4, y + 4});
    EXPECT_NEAR(place.X, x, 0.01) << mark;
    EXPECT_NEAR(place.Y, y, 0.01) << mark;
  }
}

TEST(MeasuredOutput, TheArcIsRoundToAHundredthOfAMillimetre) {
  const ScriptRun run = RunText("EpaisT = 0.2mm\nArc = -45, 225, 50", OnASmallSheet());
  const Picture page = ThroughPdf(run.List, "arc", Dpi);
  for (double degrees : {-40.0, 0.0, 13.0, 61.0, 90.0, 121.0, 200.0}) {
    const double x = 60 - 50 * std::cos(degrees * Degree), y = 60 - 50 * std::sin(degrees * Degree);
    const Picture::Place near = page.CentreOfInk({x - 0.5, y - 0.5, x + 0.5, y + 0.5});
    EXPECT_NEAR(std::hypot(near.X - 60, near.Y - 60), 50, 0.01) << degrees;
  }
}

// A page of many pixels is drawn in bands; a narrower one with the same drawing has its bands elsewhere.
TEST(MeasuredOutput, BandsOfALargePictureMeet) {
  const auto drawnOn = [](double width) {
    RunSettings settings = ForPrinter();
    settings.Target.WidthMm = width;
    settings.Target.HeightMm = 200;
    // Scripts count from the middle.
    settings.Variables = {{"%X", std::to_string(50 - width / 2)}};
    const char* const script =
        "Cercle = %X, -43, 8\nTrait = %X-40, -36, %X+40, -50\nTexte = %X-30, -55, Rouge, *2R25°, "
        "(0123456789)\n";
    return RunText(script, settings).List;
  };
  constexpr double dpi = 600, pixel = 25.4 / dpi;
  const Picture wide = ThroughPng(drawnOn(200), "bands", dpi),
                narrow = ThroughPng(drawnOn(100), "one-band", dpi);
  EXPECT_GT(narrow.InkIn(narrow.Whole()), 10);
  int others = 0;
  // 16 million pixels are 3386 rows of 4725: 143.34 mm.
  for (double y = 138; y < 149; y += pixel) {
    for (double x = pixel / 2; x < 100; x += pixel)
      others += wide.ColourAt({x, y}) != narrow.ColourAt({x, y});
  }
  EXPECT_EQ(others, 0);
}

TEST(MeasuredOutput, StrokesThatLeaveThePageFarAwayStillCrossIt) {
  DisplayList list;
  list.BeginPage(40, 30);
  list.Add({0.2, Black, 1, LineShape{{-1e7, 15}, {1e7, 15}}});
  list.Add({0.2, Black, 1, CircleShape{{20, 15}, 1e7, 1e7}});
  const Picture picture = ThroughPng(list, "far", Dpi);
  ExpectBox(picture.InkBox(), {0, 14.9, 40, 15.1}, "far");
}

}  // namespace
}  // namespace vaxel::test
