#include "drawing/sheet_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <variant>
#include <vector>

#include "drawing/page_bounds.h"
#include "drawing/sheet_overflow.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr double Tolerance = 1e-9;

void ExpectBox(const Box& box, const Box& expected, const std::string& what = "") {
  EXPECT_NEAR(box.Left, expected.Left, Tolerance) << what;
  EXPECT_NEAR(box.Right, expected.Right, Tolerance) << what;
  EXPECT_NEAR(box.Top, expected.Top, Tolerance) << what;
  EXPECT_NEAR(box.Bottom, expected.Bottom, Tolerance) << what;
}

// A4 with a box without a stroke on it.
DisplayList BoxOnSheet(const Box& box) {
  DisplayList list;
  list.BeginPage(210, 297);
  list.Add({0, Black, 7, RectangleShape{{box.Left, box.Top}, {box.Right, box.Bottom}, Fill(Black)}});
  return list;
}

// What the script has drawn on a page, and what the sheet has added.
std::vector<Box> BoxesOn(const DisplayList& list, std::size_t page, bool isAdded) {
  std::vector<Box> boxes;
  BoxMaker maker(list, TextInk::Possible);
  const Page& drawn = list.Pages()[page];
  for (std::size_t i = drawn.First; i < drawn.First + drawn.Count; ++i) {
    if ((list.At(i).SourceLine == 0) == isAdded) boxes.push_back(maker.Of(list.At(i)));
  }
  return boxes;
}

// About the lower-left corner: x times 1.01, and the height above the lower edge times 0.98.
TEST(SheetLayout, EnlargesPlacesAndShapesAlone) {
  const DisplayList drawing = RunText(
                                  "CentreI = 100, 100, N\nTrait = 0, 0, 50, 50, 0.4mm\n"
                                  "Trait = 0, 0, 100, 0, 1mm§C\nCercle = 0, 0, 20, 0, 90\n"
                                  "Trait = 10, 10, 10, 10, 2mm§C\nCadre = 0, 0, 20, 30\n"
                                  "CadreA = 0, 0, 10, 6, 2§D",
                                  ForPrinter())
                                  .List;
  SheetOptions options;
  options.Factors = {1.01, 0.98};
  const DisplayList sheet = ComposeSheets(drawing, options);
  EXPECT_EQ(ListText(sheet),
            "line 2  #000000 0.400  101.000,199.000 151.500,150.000\n"
            "polygon 3  #000000 0.000 fill #000000  101.000,199.500 101.000,198.500 202.000,198.500 "
            "202.000,199.500\n"
            "arc 4  #000000 0.042  101.000,199.000 20.200 19.600 0.000 90.000\n"
            "polygon 5  #000000 0.000 fill #000000  111.100,189.200 111.100,189.200 111.100,189.200 "
            "111.100,189.200\n"
            "rectangle 6  #000000 0.042  101.000,199.000 121.200,169.600\n"
            "polygon 7  #000000 0.042  111.100,195.080 109.080,193.120 103.020,193.120 101.000,195.080 "
            "101.000,197.040 103.020,199.000 109.080,199.000 111.100,197.040\n");
  EXPECT_EQ(sheet.Pages()[0].Width, 210);
  EXPECT_EQ(sheet.Pages()[0].Origin.X, 101);
  EXPECT_EQ(ListText(ComposeSheets(drawing, {})), ListText(drawing));
}

// A stroke that runs askew turns with its ends and keeps its width.
TEST(SheetLayout, KeepsTheWidthOfStrokesAskew) {
  const DisplayList drawing = RunText("Trait = 0, 0, 30, 40, 2mm§C", ForPrinter()).List;
  SheetOptions options;
  options.Factors = {1.1, 0.9};
  const DisplayList sheet = ComposeSheets(drawing, options);
  std::vector<Point> corners;
  sheet.Corners(std::get<PolygonShape>(sheet.At(0).Figure), corners);
  const Point across = corners[0] - corners[1], along = corners[3] - corners[0];
  EXPECT_NEAR(std::hypot(across.X, across.Y), 2, Tolerance);
  EXPECT_NEAR(along.X, 33, Tolerance);
  EXPECT_NEAR(along.Y, -36, Tolerance);
  EXPECT_NEAR(across.X * along.X + across.Y * along.Y, 0, Tolerance);
}

TEST(SheetLayout, KeepsTextsTheirSizeAboutTheirMiddle) {
  const DisplayList drawing =
      RunText("Police = Arial\nTexte = 0, 0, , C, Volt\nTexte = 0, 0, , R60, Ohm", ForPrinter()).List;
  SheetOptions options;
  options.Factors = {1.1, 0.9};
  const DisplayList sheet = ComposeSheets(drawing, options);
  ASSERT_EQ(sheet.Size(), drawing.Size());
  for (std::size_t i = 0; i < sheet.Size(); ++i) {
    const auto& before = std::get<TextShape>(drawing.At(i).Figure);
    const auto& after = std::get<TextShape>(sheet.At(i).Figure);
    const auto middle = [](const TextShape& text) {
      return text.Start + Point{std::cos(text.Angle), -std::sin(text.Angle)} * (text.Length / 2);
    };
    EXPECT_EQ(after.Size, before.Size);
    EXPECT_EQ(after.Length, before.Length);
    EXPECT_NEAR(middle(after).X, 1.1 * middle(before).X, Tolerance);
    EXPECT_NEAR(middle(after).Y, 297 - 0.9 * (297 - middle(before).Y), Tolerance);
    EXPECT_NEAR(std::tan(after.Angle), std::tan(before.Angle) * 0.9 / 1.1, Tolerance);
    EXPECT_EQ(sheet.TextOf(after), drawing.TextOf(before));
  }
}

// The arcs of a contour become parts of ellipses, which a contour cannot hold.
TEST(SheetLayout, EnlargesContours) {
  DisplayList drawing;
  drawing.BeginPage(100, 100);
  const ContourArc disc{{50, 60}, 20, 0, 2 * std::numbers::pi};
  drawing.AddContour(std::array{disc}, Fill(Black), {0, Black, 1, {}});
  for (const auto& [factors, expected] : {std::pair(Calibration{1.1, 1.1}, Box{33, 77, 34, 78}),
                                          std::pair(Calibration{1.1, 0.95}, Box{33, 77, 43, 81})}) {
    SheetOptions options;
    options.Factors = factors;
    const DisplayList sheet = ComposeSheets(drawing, options);
    const Box box = BoundsOf(sheet, 0).value();
    EXPECT_NEAR(box.Left, expected.Left, 0.002);
    EXPECT_NEAR(box.Right, expected.Right, 0.002);
    EXPECT_NEAR(box.Top, expected.Top, 0.002);
    EXPECT_NEAR(box.Bottom, expected.Bottom, 0.002);
    std::vector<Point> corners;
    if (const auto* const polygon = std::get_if<PolygonShape>(&sheet.At(0).Figure)) {
      for (const Point& corner : sheet.Corners(*polygon, corners)) {
        EXPECT_NEAR(std::hypot((corner.X - 55) / 22, (corner.Y - 62) / 19), 1, 1e-9);
      }
    }
  }
}

// 50 by 40 with 10 between: three go into 210, six into 297. They take 170 by 290.
TEST(SheetLayout, PutsCopiesInRows) {
  const DisplayList drawing = BoxOnSheet({100, 150, 100, 140});
  SheetOptions options;
  options.GapMm = 10;
  options.Copies = AsManyAsFit;
  EXPECT_EQ(CopiesOnSheet(drawing, 0, options), 18U);
  const DisplayList full = ComposeSheets(drawing, options);
  ASSERT_EQ(full.Pages().size(), 1U);
  const std::vector<Box> boxes = BoxesOn(full, 0, false);
  ASSERT_EQ(boxes.size(), 18U);
  ExpectBox(boxes[0], {20, 70, 3.5, 43.5}, "first");
  ExpectBox(boxes[1], {80, 130, 3.5, 43.5}, "second");
  ExpectBox(boxes[17], {140, 190, 253.5, 293.5}, "last");

  options.Copies = 20;
  const DisplayList two = ComposeSheets(drawing, options);
  ASSERT_EQ(two.Pages().size(), 2U);
  EXPECT_EQ(BoxesOn(two, 0, false).size(), 18U);
  ASSERT_EQ(BoxesOn(two, 1, false).size(), 2U);
  ExpectBox(BoxesOn(two, 1, false)[1], boxes[1], "the second sheet begins as the first");

  options.Copies = 2;
  ExpectBox(BoxesOn(ComposeSheets(drawing, options), 0, false)[0], {50, 100, 128.5, 168.5}, "two");
}

// With factors the gaps are true, too, and there is room for fewer.
TEST(SheetLayout, CalibratesTheSheetAsAWhole) {
  const DisplayList drawing = BoxOnSheet({0, 50, 0, 40});
  SheetOptions options;
  options.GapMm = 10;
  options.Copies = AsManyAsFit;
  options.Factors = {1.1, 1.05};
  const DisplayList sheet = ComposeSheets(drawing, options);
  const std::vector<Box> boxes = BoxesOn(sheet, 0, false);
  ASSERT_EQ(boxes.size(), 15U);
  EXPECT_NEAR(boxes[1].Left - boxes[0].Left, 66, Tolerance);
  EXPECT_NEAR(boxes[3].Top - boxes[0].Top, 52.5, Tolerance);
  EXPECT_TRUE(FindSheetOverflows(sheet).empty());
}

// A printer turns a page in landscape, not itself.
TEST(SheetLayout, TurnsTheFactorsWithThePage) {
  DisplayList drawing = BoxOnSheet({0, 100, 197, 297});
  drawing.BeginPage(297, 210);
  drawing.Add({0, Black, 1, RectangleShape{{0, 110}, {100, 210}, Fill(Black)}});
  SheetOptions options;
  options.Factors = {1.1, 0.95};
  options.UprightWidthMm = 210;
  const DisplayList sheets = ComposeSheets(drawing, options);
  ExpectBox(BoxesOn(sheets, 0, false).at(0), {0, 110, 202, 297}, "portrait");
  ExpectBox(BoxesOn(sheets, 1, false).at(0), {0, 95, 100, 210}, "landscape");
}

// A thousand copies take long: whoever ends them is heard within each.
TEST(SheetLayout, IsComposedAsLongAsItGoesOn) {
  DisplayList drawing;
  drawing.BeginPage(210, 297);
  for (int i = 0; i < 1000; ++i) drawing.Add({0, Black, 7, LineShape{{10, 10}, {20, 20}}});
  SheetOptions options;
  options.Copies = 100;
  int questions = 0;
  EXPECT_EQ(ComposeSheets(drawing, options, nullptr, [&] { return ++questions > 0; }).Size(), 100'000U);
  EXPECT_GT(questions, 1000);
  questions = 0;
  const DisplayList ended = ComposeSheets(drawing, options, nullptr, [&] { return ++questions < 20; });
  EXPECT_GT(ended.Size(), 1000U);
  EXPECT_LT(ended.Size(), 2000U);
}

TEST(SheetLayout, GivesEachPageItsOwnCopies) {
  DisplayList drawing = BoxOnSheet({0, 150, 0, 200});  // too large for a second one
  drawing.BeginPage(210, 297);
  drawing.BeginPage(297, 210);
  drawing.Add({0.2, Black, 9, LineShape{{10, 10}, {11, 11}}});
  SheetOptions options;
  options.Copies = 2;
  const DisplayList sheets = ComposeSheets(drawing, options);
  ASSERT_EQ(sheets.Pages().size(), 4U);
  for (const std::size_t page : {0U, 1U}) ExpectBox(BoxesOn(sheets, page, false).at(0), {0, 150, 0, 200});
  EXPECT_EQ(sheets.Pages()[2].Count, 0U);
  EXPECT_EQ(sheets.Pages()[3].Width, 297);
  EXPECT_EQ(BoxesOn(sheets, 3, false).size(), 2U);
}

TEST(SheetLayout, MarksWhereToCut) {
  SheetOptions options;
  options.CropMarks = true;
  const std::vector<Box> marks = BoxesOn(ComposeSheets(BoxOnSheet({50, 100, 60, 110}), options), 0, true);
  ASSERT_EQ(marks.size(), 8U);
  // One at each corner for each of its sides, on the line to be cut along, with half its width about it.
  ExpectBox(marks[0], {44.95, 49.05, 59.95, 60.05});
  ExpectBox(marks[1], {100.95, 105.05, 59.95, 60.05});
  ExpectBox(marks[4], {49.95, 50.05, 54.95, 59.05});
  ExpectBox(marks[7], {99.95, 100.05, 110.95, 115.05});
  // A sheet ends where it ends: three millimetres are left on the left, none above.
  const std::vector<Box> cut = BoxesOn(ComposeSheets(BoxOnSheet({3, 100, 0, 110}), options), 0, true);
  ASSERT_EQ(cut.size(), 6U);
  ExpectBox(cut[0], {-0.05, 2.05, -0.05, 0.05});
}

// Whatever the gap, what is cut out shows no mark.
TEST(SheetLayout, LeavesCopiesFreeOfMarks) {
  for (const double gap : {0.0, 1.0, 2.0, 3.5, 20.0}) {
    SheetOptions options;
    options.CropMarks = true;
    options.Copies = 7;
    options.GapMm = gap;
    const DisplayList sheet = ComposeSheets(BoxOnSheet({0, 60, 0, 60}), options);
    const std::vector<Box> copies = BoxesOn(sheet, 0, false);
    EXPECT_EQ(copies.size(), gap > 10 ? 6U : 7U) << gap;
    for (const Box& mark : BoxesOn(sheet, 0, true)) {
      const double x = (mark.Left + mark.Right) / 2, y = (mark.Top + mark.Bottom) / 2;
      for (const Box& copy : copies) {
        EXPECT_FALSE(x > copy.Left + 0.01 && x < copy.Right - 0.01 && y > copy.Top + 0.01 &&
                     y < copy.Bottom - 0.01)
            << gap << ": " << x << "," << y;
      }
    }
    EXPECT_TRUE(FindSheetOverflows(sheet).empty()) << gap;
  }
}

// The longest of the lines that the sheet has added.
LineShape LongestLine(const DisplayList& list) {
  LineShape longest{};
  const auto length = [](const LineShape& line) {
    return std::hypot(line.To.X - line.From.X, line.To.Y - line.From.Y);
  };
  for (std::size_t i = 0; i < list.Size(); ++i) {
    const auto* const line = std::get_if<LineShape>(&list.At(i).Figure);
    if (line && list.At(i).SourceLine == 0 && length(*line) > length(longest)) longest = *line;
  }
  return longest;
}

TEST(SheetLayout, DrawsALineOf100Millimetres) {
  SheetOptions options;
  options.Ruler = true;
  options.Label = "volt   22/11/26";
  const DisplayList sheet = ComposeSheets(BoxOnSheet({20, 190, 20, 277}), options);
  const LineShape line = LongestLine(sheet);
  EXPECT_NEAR(line.To.X - line.From.X, 100, Tolerance);
  EXPECT_GT(line.From.Y, 280);
  const std::string text = ListText(sheet);
  for (const char* written : {": 0\n", ": 100 mm\n", ": volt   22/11/26\n"}) {
    EXPECT_NE(text.find(written), std::string::npos) << written;
  }
  // Where something is drawn at the lower edge, the upper one; where there too, the left one.
  EXPECT_LT(LongestLine(ComposeSheets(BoxOnSheet({20, 190, 20, 290}), options)).From.Y, 20);
  const LineShape upright = LongestLine(ComposeSheets(BoxOnSheet({20, 190, 5, 290}), options));
  EXPECT_NEAR(upright.From.Y - upright.To.Y, 100, Tolerance);
  EXPECT_LT(upright.From.X, 20);
  options.Factors = {1.02, 1};
  const LineShape enlarged = LongestLine(ComposeSheets(BoxOnSheet({20, 190, 20, 277}), options));
  EXPECT_NEAR(enlarged.To.X - enlarged.From.X, 102, Tolerance);
}

TEST(SheetLayout, ShortensTheLineOnASmallSheet) {
  SheetOptions options;
  options.Ruler = true;
  options.Label = "a name that is far too long for so small a sheet";
  for (const auto& [width, height, length] :
       {std::array{60.0, 50.0, 30.0}, {60.0, 200.0, 100.0}, {20.0, 20.0, 0.0}, {10.0, 10.0, 0.0}}) {
    DisplayList drawing;
    drawing.BeginPage(width, height);
    const DisplayList sheet = ComposeSheets(drawing, options);
    const LineShape line = LongestLine(sheet);
    EXPECT_NEAR(std::hypot(line.To.X - line.From.X, line.To.Y - line.From.Y), length, Tolerance) << width;
    EXPECT_EQ(RulerLength(width, height, options), length) << width;
    EXPECT_TRUE(FindSheetOverflows(sheet).empty()) << width;
  }
}

TEST(SheetLayout, TellsTheSidesOfAMirroredSheet) {
  SheetOptions options;
  options.Mirrored = true;
  const DisplayList sheet = ComposeSheets(BoxOnSheet({-4, 50, 10, 50}), options);
  EXPECT_TRUE(PagesText(sheet).starts_with("page 1  210.000 x 297.000 mirrored\n")) << PagesText(sheet);
  const std::vector<SheetOverflow> beyond = FindSheetOverflows(sheet);
  ASSERT_EQ(beyond.size(), 1U);
  EXPECT_EQ(beyond[0].Right, 4);
  EXPECT_EQ(beyond[0].Left, 0);
}

TEST(SheetLayout, TakesPlausibleFactorsAlone) {
  EXPECT_EQ(CalibrationFactor(200, 198), 200.0 / 198);
  EXPECT_EQ(CalibrationFactor(99, 110), 0.9);
  for (const double measured : {0.0, -200.0, 170.0, 230.0, double(NAN), double(INFINITY)}) {
    EXPECT_FALSE(CalibrationFactor(200, measured)) << measured;
  }
  EXPECT_TRUE(IsPlausible({0.9, 1.1}));
  EXPECT_FALSE(IsPlausible({1, NAN}));
}

// Whatever factors are in force, the sheet is complete, and its rulers have the lengths that it names.
TEST(CalibrationSheet, HasRoomForAllFactors) {
  const std::vector<std::string> notes = {"Measure both rulers.", "A printer"};
  for (const auto& [width, height, x, y] : {std::array{203.0, 289.0, 150.0, 230.0},
                                            {289.0, 203.0, 230.0, 150.0},
                                            {4980.0, 9990.0, 4490.0, 9050.0},
                                            {45.0, 60.0, 10.0, 20.0}}) {
    const CalibrationSheet sheet = MakeCalibrationSheet(width, height, notes);
    EXPECT_EQ(sheet.NominalX, x);
    EXPECT_EQ(sheet.NominalY, y);
    for (const Calibration& factors : {Calibration{}, {1.1, 1.1}, {0.9, 0.9}, {1.01, 0.99}}) {
      SheetOptions options;
      options.Factors = factors;
      const DisplayList composed = ComposeSheets(sheet.Drawing, options);
      EXPECT_TRUE(FindSheetOverflows(composed).empty()) << width << " " << factors.X;
      bool hasX = false, hasY = false;
      for (std::size_t i = 0; i < composed.Size(); ++i) {
        const auto* const line = std::get_if<LineShape>(&composed.At(i).Figure);
        if (!line) continue;
        const Point way = line->To - line->From;
        hasX = hasX || (way.Y == 0 && std::abs(way.X - x * factors.X) < 1e-6);
        hasY = hasY || (way.X == 0 && std::abs(-way.Y - y * factors.Y) < 1e-6);
      }
      EXPECT_TRUE(hasX && hasY) << width << " " << factors.X;
    }
    const bool isLarge = width > 100;
    const std::string drawn = ListText(sheet.Drawing);
    EXPECT_EQ(drawn.find("Measure both rulers.") != std::string::npos, isLarge) << width;
    for (const char* figure : {": 0\n", ": 10\n"}) EXPECT_NE(drawn.find(figure), std::string::npos) << width;
    EXPECT_EQ(drawn.find(": 5\n"), std::string::npos) << width;
  }
  for (const auto& [width, height] : {std::pair(10.0, 10.0), {200.0, 20.0}, {0.0, 0.0}}) {
    const CalibrationSheet none = MakeCalibrationSheet(width, height, notes);
    EXPECT_EQ(none.NominalX + none.NominalY, 0);
    EXPECT_EQ(none.Drawing.Size(), 0U);
  }
}

}  // namespace
}  // namespace vaxel::test
