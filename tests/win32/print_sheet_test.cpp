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
#include <vector>

#include "render/gdi/printer.h"

namespace vaxel {
namespace {

// As printer.ppd says: points of the sheet in portrait.
constexpr double PointMm = 25.4 / 72;
constexpr double SheetWidth = 595.2 * PointMm, SheetHeight = 841.92 * PointMm;
constexpr double MarginLeft = 12 * PointMm, MarginBottom = 24 * PointMm, MarginRight = 18 * PointMm,
                 MarginTop = 30 * PointMm;
constexpr double PixelMm = 25.4 / 600;
constexpr double Exact = 0.05;  // mm

struct Edges {
  double Left, Top, Right, Bottom;
};

constexpr double Side = 4.03, Stroke = 0.29, Radius = 2.51, Half = Stroke / 2;
const Fill Solid(true, Black);

// What is drawn at a place, and its ink around that; mm.
struct Figure {
  const char* Name;
  Edges Ink;
  void (*Draw)(DisplayList& list, Point at);
};

constexpr Edges AroundCircle = {-Radius - Half, -Radius - Half, Radius + Half, Radius + Half};

const std::array<Figure, 5> Figures = {
    {{"square",
      {0, 0, Side, Side},
      [](DisplayList& list, Point at) {
        list.Add({0, Black, 1, RectangleShape{at, at + Point{Side, Side}, Solid}});
      }},
     {"upright line",
      {-Half, -Half, Half, Side + Half},
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, LineShape{at, at + Point{0, Side}}});
      }},
     {"ring", AroundCircle,
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, CircleShape{at, Radius, Radius}});
      }},
     {"level line",
      {-Half, -Half, Side + Half, Half},
      [](DisplayList& list, Point at) {
        list.Add({Stroke, Black, 1, LineShape{at, at + Point{Side, 0}}});
      }},
     {"contour", AroundCircle, [](DisplayList& list, Point at) {
        list.AddContour(std::array{ContourArc{at, Radius, 0, 2 * std::numbers::pi}}, Solid,
                        {Stroke, Black, 1, {}});
      }}}};

// A figure, far from all others.
struct Mark {
  const Figure& What;
  Point At;

  Edges Ink() const {
    return {At.X + What.Ink.Left, At.Y + What.Ink.Top, At.X + What.Ink.Right, At.Y + What.Ink.Bottom};
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

// In portrait, turned, and turned back.
constexpr std::array Turned = {false, true, false};

Point PageSize(bool turned) {
  const Point portrait = {SheetWidth - MarginLeft - MarginRight, SheetHeight - MarginTop - MarginBottom};
  return turned ? Point{portrait.Y, portrait.X} : portrait;
}

constexpr const char* Message = "Vaxel \u03A9 \u00B5 \u00B0";

TEST(Printing, KnowsTheDefaultPrinter) {
  EXPECT_EQ(DefaultPrinter(), "Vaxel Test");
  const auto facts = FactsOf({.Name = DefaultPrinter()});
  ASSERT_TRUE(facts);
  EXPECT_NEAR(facts->WidthMm, PageSize(false).X, Exact);
  EXPECT_NEAR(facts->HeightMm, PageSize(false).Y, Exact);
  EXPECT_NEAR(facts->LeftMm, MarginLeft, Exact);
  EXPECT_NEAR(facts->TopMm, MarginTop, Exact);
  EXPECT_NEAR(facts->PaperWidthMm, 210, Exact);
  EXPECT_NEAR(facts->PaperHeightMm, 297, Exact);
  EXPECT_NEAR(facts->PixelMm, PixelMm, 1e-9);
}

TEST(Printing, RefusesWhatIsNotThere) {
  DisplayList list;
  list.BeginPage(100, 100);
  for (const char* name : {"No such printer", ""}) {
    EXPECT_FALSE(FactsOf({.Name = name})) << name;
    EXPECT_FALSE(Print(list, {.Printer = {.Name = name}, .DocumentName = "x"})) << name;
  }
}

TEST(Printing, PrintsTheSheet) {
  DisplayList list;
  for (const bool turned : Turned) {
    const Point size = PageSize(turned);
    list.BeginPage(size.X, size.Y);
    for (const Mark& mark : MarksOf(size.X, size.Y)) mark.What.Draw(list, mark.At);
    list.AddText(Message, {"Times New Roman"}, {{size.X / 2 - 25, size.Y / 2 + 22}, 0, 5, 40, 0, 0},
                 {0, Black, 1, {}});
  }
  ASSERT_TRUE(Print(list, {.Printer = {.Name = DefaultPrinter()}, .DocumentName = "Test sheet 1"}));
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

PrintedPage ReadPage(std::size_t number) {
  const char* folder = std::getenv("VAXEL_PRINTED_FOLDER");
  std::ifstream file(std::string(folder ? folder : ".") + "/page" + std::to_string(number) + ".pgm",
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
Edges OnSheet(const Edges& page, bool turned) {
  if (!turned) {
    return {page.Left + MarginLeft, page.Top + MarginTop, page.Right + MarginLeft, page.Bottom + MarginTop};
  }
  // The page's right is the sheet's top.
  return {page.Top + MarginLeft, SheetHeight - MarginBottom - page.Right, page.Bottom + MarginLeft,
          SheetHeight - MarginBottom - page.Left};
}

TEST(PrintedSheet, HasEveryMarkAtItsPlace) {
  double farthest = 0;
  for (std::size_t number = 0; number < Turned.size(); ++number) {
    const PrintedPage page = ReadPage(number + 1);
    ASSERT_NEAR(page.Width * PixelMm, SheetWidth, 0.1) << number;
    ASSERT_NEAR(page.Height * PixelMm, SheetHeight, 0.1) << number;
    const Point size = PageSize(Turned[number]);
    for (const Mark& mark : MarksOf(size.X, size.Y)) {
      const Edges expected = OnSheet(mark.Ink(), Turned[number]);
      const Edges ink = InkNear(page, expected);
      const double off =
          std::max({std::abs(ink.Left - expected.Left), std::abs(ink.Top - expected.Top),
                    std::abs(ink.Right - expected.Right), std::abs(ink.Bottom - expected.Bottom)});
      EXPECT_LE(off, Exact) << "page " << number + 1 << ", " << mark.What.Name << " at " << mark.At.X << ", "
                            << mark.At.Y << ": " << ink.Left - expected.Left << " " << ink.Top - expected.Top
                            << " " << ink.Right - expected.Right << " " << ink.Bottom - expected.Bottom;
      farthest = std::max(farthest, off);
    }
  }
  std::printf("No edge is farther than %.3f mm from its place.\n", farthest);
}

}  // namespace
}  // namespace vaxel
