// A test sheet printed on the file printer and measured: tests/win32/print_test.sh runs Printing, turns the
// job into pictures of the pages and runs PrintedSheet on those. Both need the prefix that has the printer.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "drawing/sheet_copier.h"
#include "render/gdi/printer.h"

namespace vaxel {
namespace {

// As printer.ppd says: points of the sheet in portrait.
constexpr double PointMm = 25.4 / 72;
constexpr double MarginLeft = 12 * PointMm, MarginBottom = 24 * PointMm, MarginRight = 18 * PointMm,
                 MarginTop = 30 * PointMm;

struct PaperKind {
  const char* Job;  // the document, and what its pictures are called
  int Number;       // by which Windows knows it
  double Width, Height;
};
constexpr PaperKind A4 = {"Test sheet 1", 9, 595.2 * PointMm, 841.92 * PointMm};
constexpr PaperKind A3 = {"Test sheet 2", 8, 841.92 * PointMm, 1190.52 * PointMm};

constexpr double PixelMm = 25.4 / 600;
constexpr double Exact = 0.05;  // mm

struct Edges {
  double Left, Top, Right, Bottom;
};

constexpr double Side = 4.03, Stroke = 0.29, Radius = 2.51, Half = Stroke / 2;
const Fill Solid(true, Black);

// What is drawn at a place, around it, and by how much its stroke is wider; mm.
struct Figure {
  const char* Name;
  Edges Shape;
  double Around;
  void (*Draw)(DisplayList& list, Point at);
};

constexpr Edges AroundCircle = {-Radius, -Radius, Radius, Radius};

const std::array<Figure, 5> Figures = {
    {{"square",
      {0, 0, Side, Side},
      0,
      [](DisplayList& list, Point at) {
        list.Add({0, Black, 1, RectangleShape{at, at + Point{Side, Side}, Solid}});
      }},
     {"upright line",
      {0, 0, 0, Side},
      Half,
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, LineShape{at, at + Point{0, Side}}});
      }},
     {"ring", AroundCircle, Half,
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, CircleShape{at, Radius, Radius}});
      }},
     {"level line",
      {0, 0, Side, 0},
      Half,
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, LineShape{at, at + Point{Side, 0}}});
      }},
     {"contour", AroundCircle, Half, [](DisplayList& list, Point at) {
        list.AddContour(std::array{ContourArc{at, Radius, 0, 2 * std::numbers::pi}}, Solid,
                        {Stroke, Black, 1, {}});
      }}}};

// A figure, far from all others.
struct Mark {
  const Figure& What;
  Point At;

  Edges Ink(const Calibration& factors, double pageHeight) const {
    const auto x = [&](double place) { return (At.X + place) * factors.X; };
    const auto y = [&](double place) { return pageHeight - (pageHeight - At.Y - place) * factors.Y; };
    return {x(What.Shape.Left) - What.Around, y(What.Shape.Top) - What.Around,
            x(What.Shape.Right) + What.Around, y(What.Shape.Bottom) + What.Around};
  }
};

// All over the page: a scale that is wrong by a fraction shows in the far corner.
std::vector<Mark> MarksOf(double width, double height) {
  std::vector<Mark> marks;
  for (int row = 0; row < 5; ++row) {
    for (int column = 0; column < 5; ++column) {
      marks.push_back({Figures[static_cast<std::size_t>(row + column) % Figures.size()],
                       {5 + column * (width - 15) / 4.013, 5 + row * (height - 15) / 4.027}});
    }
  }
  return marks;
}

struct SheetCase {
  bool IsTurned = false;
  Calibration Factors{};
  bool IsMirrored = false;
};

// In portrait, turned, and turned back, all in one document. What is calibrated is so as it lies.
const std::vector<SheetCase> OnA4 = {{}, {true}, {false, {1.01, 0.99}}, {true, {0.99, 1.01}, true}};
const std::vector<SheetCase> OnA3 = {{}, {true, {}, true}};

Point PageSize(const PaperKind& paper, bool turned) {
  const Point portrait = {paper.Width - MarginLeft - MarginRight, paper.Height - MarginTop - MarginBottom};
  return turned ? Point{portrait.Y, portrait.X} : portrait;
}

constexpr const char* Message = "Vaxel \u03A9 \u00B5 \u00B0";

TEST(Printing, KnowsTheDefaultPrinter) {
  EXPECT_EQ(DefaultPrinter(), "Vaxel Test");
  const auto facts = FactsOf({.Name = DefaultPrinter()}), larger = FactsOf({DefaultPrinter(), A3.Number});
  ASSERT_TRUE(facts);
  EXPECT_NEAR(facts->WidthMm, PageSize(A4, false).X, Exact);
  EXPECT_NEAR(facts->HeightMm, PageSize(A4, false).Y, Exact);
  EXPECT_NEAR(facts->LeftMm, MarginLeft, Exact);
  EXPECT_NEAR(facts->TopMm, MarginTop, Exact);
  EXPECT_NEAR(facts->PaperWidthMm, 210, Exact);
  EXPECT_NEAR(facts->PaperHeightMm, 297, Exact);
  EXPECT_NEAR(facts->PixelMm, PixelMm, 1e-9);
  ASSERT_TRUE(larger);
  EXPECT_NEAR(larger->HeightMm, PageSize(A3, false).Y, Exact);
  EXPECT_TRUE(HasPrinter("Vaxel PDF"));
}

TEST(Printing, RefusesWhatIsNotThere) {
  DisplayList list;
  list.BeginPage(100, 100);
  for (const char* name : {"No such printer", ""}) {
    EXPECT_FALSE(FactsOf({.Name = name})) << name;
    EXPECT_FALSE(HasPrinter(name)) << name;
    EXPECT_FALSE(Print(list, {.Printer = {.Name = name}, .DocumentName = "x"})) << name;
  }
}

// Each page is made of one that has the marks, as sheets are composed.
void PrintSheets(const PaperKind& paper, const std::vector<SheetCase>& cases) {
  DisplayList sheets;
  for (const SheetCase& wanted : cases) {
    const Point size = PageSize(paper, wanted.IsTurned);
    DisplayList plain;
    plain.BeginPage(size.X, size.Y);
    for (const Mark& mark : MarksOf(size.X, size.Y)) mark.What.Draw(plain, mark.At);
    plain.AddText(Message, {"Times New Roman"}, {{size.X / 2 - 25, size.Y / 2 + 22}, 0, 5, 40, 0, 0},
                  {0, Black, 1, {}});
    sheets.BeginPage(size.X, size.Y);
    if (wanted.IsMirrored) sheets.MirrorPage();
    SheetCopier(plain, sheets, wanted.Factors).Copy(0, {0, size.Y / wanted.Factors.Y - size.Y});
  }
  ASSERT_TRUE(Print(sheets, {.Printer = {DefaultPrinter(), paper.Number}, .DocumentName = paper.Job}));
}

TEST(Printing, PrintsTheSheets) {
  PrintSheets(A4, OnA4);
  PrintSheets(A3, OnA3);
}

// A page as Ghostscript's pgmraw writes it, in the printer's pixels.
struct PrintedPage {
  int Width = 0, Height = 0;
  std::string Grey;

  bool IsInk(int x, int y) const {
    return static_cast<unsigned char>(Grey[static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
                                           static_cast<std::size_t>(x)]) < 128;
  }
};

PrintedPage ReadPage(const PaperKind& paper, std::size_t number) {
  const char* folder = std::getenv("VAXEL_PRINTED_FOLDER");
  std::ifstream file(
      std::string(folder ? folder : ".") + "/" + paper.Job + " " + std::to_string(number) + ".pgm",
      std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  PrintedPage page;
  const std::size_t comment = bytes.find('#'), rest = bytes.find('\n', comment);
  int used = 0;
  if (comment == std::string::npos ||
      std::sscanf(bytes.c_str() + rest, "%d %d 255%n", &page.Width, &page.Height, &used) != 2)
    return page;
  page.Grey = bytes.substr(rest + static_cast<std::size_t>(used) + 1);
  return page;
}

// Around the ink near a place of the sheet; mm.
Edges InkNear(const PrintedPage& page, const Edges& expected) {
  constexpr double around = 2;
  const auto pixel = [](double millimetres, int limit) {
    return std::clamp(static_cast<int>(millimetres / PixelMm), 0, limit - 1);
  };
  Edges ink{1e9, 1e9, -1e9, -1e9};
  for (int y = pixel(expected.Top - around, page.Height); y <= pixel(expected.Bottom + around, page.Height);
       ++y) {
    for (int x = pixel(expected.Left - around, page.Width); x <= pixel(expected.Right + around, page.Width);
         ++x) {
      if (!page.IsInk(x, y)) continue;
      ink = {std::min(ink.Left, x * PixelMm), std::min(ink.Top, y * PixelMm),
             std::max(ink.Right, (x + 1) * PixelMm), std::max(ink.Bottom, (y + 1) * PixelMm)};
    }
  }
  return ink;
}

// Where a box of the page lies on the sheet, which lies in portrait.
Edges OnSheet(Edges page, const PaperKind& paper, const SheetCase& wanted) {
  if (wanted.IsMirrored) {
    const double width = PageSize(paper, wanted.IsTurned).X;
    page = {width - page.Right, page.Top, width - page.Left, page.Bottom};
  }
  if (!wanted.IsTurned) {
    return {page.Left + MarginLeft, page.Top + MarginTop, page.Right + MarginLeft, page.Bottom + MarginTop};
  }
  // The page's right is the sheet's top.
  return {page.Top + MarginLeft, paper.Height - MarginBottom - page.Right, page.Bottom + MarginLeft,
          paper.Height - MarginBottom - page.Left};
}

// How far an edge of the marks is from its place at most.
double MeasurePage(const PrintedPage& page, const PaperKind& paper, const SheetCase& wanted) {
  double farthest = 0;
  const Point size = PageSize(paper, wanted.IsTurned);
  for (const Mark& mark : MarksOf(size.X, size.Y)) {
    const Edges expected = OnSheet(mark.Ink(wanted.Factors, size.Y), paper, wanted);
    const Edges ink = InkNear(page, expected);
    const double off =
        std::max({std::abs(ink.Left - expected.Left), std::abs(ink.Top - expected.Top),
                  std::abs(ink.Right - expected.Right), std::abs(ink.Bottom - expected.Bottom)});
    EXPECT_LE(off, Exact) << mark.What.Name << " at " << mark.At.X << ", " << mark.At.Y << ": "
                          << ink.Left - expected.Left << " " << ink.Top - expected.Top << " "
                          << ink.Right - expected.Right << " " << ink.Bottom - expected.Bottom;
    farthest = std::max(farthest, off);
  }
  return farthest;
}

TEST(PrintedSheet, HasEveryMarkAtItsPlace) {
  for (const auto& [paper, cases] : {std::pair(A4, OnA4), std::pair(A3, OnA3)}) {
    for (std::size_t number = 0; number < cases.size(); ++number) {
      SCOPED_TRACE(std::string(paper.Job) + ", page " + std::to_string(number + 1));
      const PrintedPage page = ReadPage(paper, number + 1);
      ASSERT_NEAR(page.Width * PixelMm, paper.Width, 0.1);
      ASSERT_NEAR(page.Height * PixelMm, paper.Height, 0.1);
      std::printf("%s, page %d: no edge is farther than %.3f mm from its place.\n", paper.Job,
                  static_cast<int>(number + 1), MeasurePage(page, paper, cases[number]));
    }
  }
}

}  // namespace
}  // namespace vaxel
