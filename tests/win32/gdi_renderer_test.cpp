// What GDI draws, measured in bitmaps of 10 pixels a millimetre.
#include "render/gdi/renderer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>

#include "drawing/standard_faces.h"
#include "render/system_decoder.h"
#include "tests/win32/drawn_bitmap.h"

namespace vaxel {
namespace {

using test::Difference;
using test::Drawn;
using test::InkEdges;
using test::ListOf;
using test::PixelEdges;

// And a little for the tips of round ends, where no pixel's middle may lie.
constexpr double HalfPixel = 0.55;
constexpr Colour Red = MakeColour(255, 0, 0);

struct Figure {
  const char* Name;
  double Width;                     // of the stroke, mm
  Shape What;                       // where the place is 0, 0
  double Left, Top, Right, Bottom;  // of the ink, mm
};

// Moves the figure of an operation.
Operation Placed(const Figure& figure, Point by) {
  Operation operation{figure.Width, Black, 1, figure.What};
  if (auto* line = std::get_if<LineShape>(&operation.Figure)) {
    *line = {line->From + by, line->To + by};
  } else if (auto* box = std::get_if<RectangleShape>(&operation.Figure)) {
    *box = {box->Corner + by, box->Opposite + by, box->Inside};
  } else if (auto* circle = std::get_if<CircleShape>(&operation.Figure)) {
    circle->Centre = circle->Centre + by;
  }
  return operation;
}

constexpr double Pi2 = std::numbers::pi / 2;

const Figure Figures[] = {
    {"level line", 0.53, LineShape{{0, 0}, {20, 0}}, -0.265, -0.265, 20.265, 0.265},
    {"upright line", 2, LineShape{{0, 15}, {0, 0}}, -1, -1, 1, 16},
    {"slanted line", 1.3, LineShape{{0, 0}, {20, 7}}, -0.65, -0.65, 20.65, 7.65},
    {"thin line", 0.08, LineShape{{0, 0}, {20, 0}}, -0.04, -0.04, 20.04, 0.04},
    {"line without length", 1.7, LineShape{{0, 0}, {0, 0}}, -0.85, -0.85, 0.85, 0.85},
    {"box", 0.7, RectangleShape{{12, 0}, {0, 9}, {}}, -0.35, -0.35, 12.35, 9.35},
    {"box without outline", 0, RectangleShape{{0, 0}, {12, 9}, {true, Black}}, 0, 0, 12, 9},
    {"circle", 0.4, CircleShape{{0, 0}, 8, 8}, -8.2, -8.2, 8.2, 8.2},
    {"disc", 0, CircleShape{{0, 0}, 8, 8, 0, 0, {true, Black}}, -8, -8, 8, 8},
    {"circle smaller than its stroke", 2, CircleShape{{0, 0}, 0.5, 0.5}, -1.5, -1.5, 1.5, 1.5},
    {"ellipse", 0.5, CircleShape{{0, 0}, 9, 4}, -9.25, -4.25, 9.25, 4.25},
    {"ellipse without height", 0.5, CircleShape{{0, 0}, 9, 0}, -9.25, -0.25, 9.25, 0.25},
    {"upper right quarter", 0.6, CircleShape{{0, 0}, 9, 9, 0, Pi2, {}, CircleForm::Arc}, -0.3, -9.3, 9.3,
     0.3},
    {"pie", 0.6, CircleShape{{0, 0}, 9, 9, Pi2, 2 * Pi2, {true, Black}, CircleForm::Pie}, -9.3, -9.3, 0.3,
     0.3},
};

TEST(GdiRenderer, PutsEveryEdgeWithinHalfAPixel) {
  for (const Figure& figure : Figures) {
    for (int step = 0; step < 7; ++step) {
      const Point place = {40 + step * 0.0143, 40 + step * 0.0271};
      const DisplayList list = ListOf([&](DisplayList& made) { made.Add(Placed(figure, place)); });
      Result<> outcome;
      const GdiBitmap bitmap = Drawn(list, {}, &outcome);
      EXPECT_TRUE(outcome);
      // The thinnest pen is a whole pixel.
      const double more = figure.Width > 0 && figure.Width < 0.1 ? (0.1 - figure.Width) / 2 : 0;
      const PixelEdges expected = {(place.X + figure.Left - more) * 10, (place.Y + figure.Top - more) * 10,
                                   (place.X + figure.Right + more) * 10,
                                   (place.Y + figure.Bottom + more) * 10};
      EXPECT_EQ(Difference(InkEdges(bitmap), expected, HalfPixel), "") << figure.Name << " at " << place.X;
    }
  }
}

TEST(GdiRenderer, KeepsPensWithinAPixel) {
  for (const Figure& figure : Figures) {
    const Point place = {40.043, 40.027};
    const DisplayList list = ListOf([&](DisplayList& made) { made.Add(Placed(figure, place)); });
    const GdiBitmap bitmap = Drawn(list, {.UsesPens = true});
    const PixelEdges expected = {(place.X + figure.Left) * 10, (place.Y + figure.Top) * 10,
                                 (place.X + figure.Right) * 10, (place.Y + figure.Bottom) * 10};
    EXPECT_EQ(Difference(InkEdges(bitmap), expected, 1.05), "") << figure.Name;
  }
}

TEST(GdiRenderer, DrawsPolygonsAndContours) {
  const std::vector<Point> corners = {{20.03, 20.04}, {40.01, 20.04}, {40.01, 35.06}};
  // A box with round ends at the left and the right.
  const std::vector<ContourArc> pieces = {{{60, 60}, 5, -Pi2, 2 * Pi2}, {{40, 60}, 5, Pi2, 2 * Pi2}};
  // The same as a ring's part: its inner side runs clockwise.
  const std::vector<ContourArc> ring = {{{50, 50}, 30, 0, Pi2}, {{50, 50}, 20, Pi2, -Pi2}};
  const auto contour = [](const std::vector<ContourArc>& of) {
    return Drawn(ListOf([&](DisplayList& list) { list.AddContour(of, {true, Red}, {0.4, Black, 1, {}}); }));
  };
  const GdiBitmap polygon = Drawn(ListOf([&](DisplayList& list) {
    list.AddPolygon(corners, {true, Red}, {0.4, Black, 1, {}});
  }));
  EXPECT_EQ(Difference(InkEdges(polygon), {198.3, 198.4, 402.1, 352.6}, HalfPixel), "");
  EXPECT_EQ(test::PixelAt(polygon, 350, 250), 0xFF0000U);
  EXPECT_EQ(test::PixelAt(polygon, 250, 300), 0xFFFFFFU);
  const GdiBitmap box = contour(pieces);
  EXPECT_EQ(Difference(InkEdges(box), {348, 548, 652, 652}, HalfPixel), "");
  EXPECT_EQ(test::PixelAt(box, 500, 600), 0xFF0000U);
  EXPECT_EQ(test::PixelAt(box, 500, 549), 0U);
  const GdiBitmap sector = contour(ring);
  EXPECT_EQ(Difference(InkEdges(sector), {498, 198, 802, 502}, HalfPixel), "");
  EXPECT_EQ(test::PixelAt(sector, 677, 323), 0xFF0000U);
  EXPECT_EQ(test::PixelAt(sector, 600, 400), 0xFFFFFFU);
}

TEST(GdiRenderer, StrokesNothingWithoutWidth) {
  const DisplayList list = ListOf([](DisplayList& made) {
    made.Add({0, Black, 1, CircleShape{{50, 50}, 9, 9}});
  });
  for (const bool usesPens : {false, true}) {
    EXPECT_EQ(test::InkArea(Drawn(list, {.UsesPens = usesPens})), 0);
  }
}

struct ButtArc {
  const char* Name;
  double RadiusX, RadiusY, Sweep, Width;  // from 0°
  double Left, Top, Right, Bottom;        // of the ink, mm from the centre
  double Area;                            // mm²
};

const ButtArc ButtArcs[] = {
    // π/4·(12² − 8²)
    {"quarter", 10, 10, Pi2, 4, 0, -12, 12, 0, 62.832},
    // 14.533 long.
    {"ellipse", 12, 6, Pi2, 2, 0, -7, 13, 0, 29.065},
    // Shorter than it is wide: 10° between the radii 7 and 13.
    {"short", 10, 10, Pi2 / 9, 6, 6.8937, -2.2574, 13, 0, 10.472},
    // As wide as its circle is: half a disc of the radius 4.
    {"tight", 2, 2, 2 * Pi2, 4, -4, -4, 4, 0, 25.133},
    {"thin", 10, 10, Pi2, 0.2, 0, -10.1, 10.1, 0, 3.142},
};

TEST(GdiRenderer, EndsArcsOnTheRaysOfTheirEnds) {
  for (const ButtArc& arc : ButtArcs) {
    const Point place = {40.043, 40.027};
    const DisplayList list = ListOf([&](DisplayList& made) {
      made.Add({arc.Width, Black, 1,
                CircleShape{place, arc.RadiusX, arc.RadiusY, 0, arc.Sweep, {}, CircleForm::Arc, true}});
      // The next pen is round again.
      made.Add({2, Black, 1, LineShape{{80, 80}, {90, 80}}});
    });
    const PixelEdges expected = {(place.X + arc.Left) * 10, (place.Y + arc.Top) * 10, 910, 810};
    for (const bool usesPens : {false, true}) {
      const GdiBitmap bitmap = Drawn(list, {.UsesPens = usesPens});
      EXPECT_EQ(Difference(InkEdges(bitmap), expected, usesPens ? 1.4 : HalfPixel), "")
          << arc.Name << usesPens;
      const double area = (arc.Area + 20 + Pi2 * 2) * 100;
      EXPECT_NEAR(test::InkArea(bitmap), area, usesPens ? 0.05 * area : 0.01 * area) << arc.Name << usesPens;
      // Nothing reaches over the ends.
      const int below = static_cast<int>((place.Y + arc.Bottom) * 10 + 1.6);
      const int x = static_cast<int>((place.X + arc.RadiusX) * 10);
      EXPECT_EQ(test::PixelAt(bitmap, x, below), 0xFFFFFFU) << arc.Name << usesPens;
      EXPECT_EQ(test::PixelAt(bitmap, x, below - 4), 0U) << arc.Name << usesPens;
    }
  }
}

// The box of a stroke of 0.2 mm, and around it a pixel of the device, which is 0.4 mm.
TEST(GdiRenderer, OutlinesStrokesButInFiles) {
  const DisplayList list = ListOf([](DisplayList& made) {
    const std::vector<Point> corners = {{20, 30.1}, {20, 29.9}, {40, 29.9}, {40, 30.1}};
    made.AddPolygon(corners, {true, Black}, {0.4, Black, 1, {}}, PolygonUse::Stroke);
  });
  const PixelEdges outlined = {198, 297, 402, 303};
  EXPECT_EQ(Difference(InkEdges(Drawn(list)), outlined, HalfPixel), "");
  EXPECT_EQ(Difference(InkEdges(Drawn(list, {.UsesPens = true})), outlined, 1.05), "");
  EXPECT_EQ(Difference(InkEdges(Drawn(list, {.LeastWidth = 0.1})), {200, 299, 400, 301}, HalfPixel), "");
  EXPECT_EQ(Difference(InkEdges(Drawn(list, {.LeastWidth = 0.6})), {200, 297, 400, 303}, HalfPixel), "");
}

// As the window shows a drawing that is enlarged a thousand times.
TEST(GdiRenderer, CutsWhatLiesFarOutside) {
  const DisplayList list = ListOf([](DisplayList& made) {
    const std::vector<Point> corners = {{-90'000, -90'000}, {50, 50}, {-90'000, 90'000}};
    made.AddPolygon(corners, {true, Black}, {0, Black, 1, {}});
    made.Add({0.01, Red, 1, LineShape{{-90'000, 50}, {90'000, 50}}});
    made.Add({0.01, Red, 1, CircleShape{{50, 90'049.99}, 90'000, 90'000}});
  });
  // 50, 50 lies in the middle.
  const GdiBitmap bitmap = Drawn(list, {.Transform = {10'000, 10'000, -499'500, -499'500}});
  EXPECT_EQ(test::PixelAt(bitmap, 100, 300), 0U);
  EXPECT_EQ(test::PixelAt(bitmap, 300, 100), 0xFFFFFFU);
  for (const int x : {1, 998}) {
    EXPECT_EQ(test::PixelAt(bitmap, x, 360), 0xFF0000U);
    EXPECT_EQ(test::PixelAt(bitmap, x, 540), 0xFF0000U);
    EXPECT_EQ(test::PixelAt(bitmap, x, 340), x == 1 ? 0U : 0xFFFFFFU);
  }
}

TEST(GdiRenderer, LeavesTheContextAsItWas) {
  GdiBitmap bitmap(100, 100);
  const BitmapDc context(bitmap);
  const HGDIOBJ pen = GetCurrentObject(context.Handle(), OBJ_PEN);
  const HGDIOBJ font = GetCurrentObject(context.Handle(), OBJ_FONT);
  SetTextAlign(context.Handle(), TA_RIGHT);
  const DisplayList list = ListOf([](DisplayList& made) {
    made.Add({1, Red, 1, LineShape{{0, 0}, {9, 9}}});
    made.AddText("A", {"Arial"}, {{5, 5}, 0.5, 4, 3, 0, 0}, {0, Red, 1, {}});
  });
  GdiStock stock(nullptr, false);
  GdiRenderer renderer(context, {10, 10, 0, 0}, stock);
  PlayPage(list, 0, renderer);
  EXPECT_EQ(GetCurrentObject(context.Handle(), OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(context.Handle(), OBJ_FONT), font);
  EXPECT_EQ(GetTextAlign(context.Handle()), static_cast<UINT>(TA_RIGHT));
}

constexpr double Size = 5;
const FontFace Sans{"Liberation Sans", false, false};

GdiBitmap DrawnText(const std::string& text, const TextShape& shape,
                    const test::DrawnSettings& settings = {}) {
  Result<> outcome;
  GdiBitmap bitmap = Drawn(ListOf([&](DisplayList& list) {
                             list.AddText(text, Sans, shape, {0, Black, 1, {}});
                           }),
                           settings, &outcome);
  EXPECT_TRUE(outcome);
  return bitmap;
}

double NaturalLength(const char* text) {
  return *StandardFace({"Arial", false, false})->Width(text) * Size;
}

// "H" is as high as it is because of its two bars, and its sides are the same.
TEST(GdiRenderer, SetsTextAlongItsBaselineAtItsLength) {
  const char* const text = "HHHHHHHH";
  constexpr double capital = 0.688;
  for (const double stretch : {1.0, 1.4, 0.7}) {
    for (const double degrees : {0.0, 33.333, 90.0, 180.0, 241.77, 359.96}) {
      const double angle = degrees * std::numbers::pi / 180;
      const double length = NaturalLength(text) * stretch;
      const Point along = {std::cos(angle), -std::sin(angle)}, up = {-std::sin(angle), -std::cos(angle)};
      const Point start = {50.03, 50.06};
      const GdiBitmap bitmap = DrawnText(text, {start, angle, Size, length, 0, 0});
      const Point middle = (start + along * (length / 2) + up * (capital * Size / 2)) * 10;
      const Point seen = test::InkMiddle(bitmap);
      const Point off = seen - middle;
      EXPECT_NEAR(off.X * along.X + off.Y * along.Y, 0, 0.8) << degrees << " x " << stretch;
      EXPECT_NEAR(off.X * up.X + off.Y * up.Y, 0, 0.8) << degrees << " x " << stretch;
      if (degrees == 0) {
        const PixelEdges edges = InkEdges(bitmap);
        const double bearing = 0.08 * Size * stretch * 10;
        EXPECT_NEAR(edges.Right - edges.Left, length * 10 - 2 * bearing, 2) << stretch;
        EXPECT_NEAR(edges.Bottom, start.Y * 10, 1);
      }
    }
  }
}

TEST(GdiRenderer, NudgesRightAnglesOnDevicesThatNeedIt) {
  const char* const text = "HHHHHHHHHHHHHHHHHHHHHH";
  const TextShape shape = {{50, 95}, Pi2, Size, NaturalLength(text), 0, 0};
  const PixelEdges plain = InkEdges(DrawnText(text, shape));
  const PixelEdges nudged = InkEdges(DrawnText(text, shape, {.NudgesRightAngles = true}));
  // 0.2 degrees of 79 mm.
  EXPECT_NEAR(plain.Left - nudged.Left, 2.8, 1.5);
}

TEST(GdiRenderer, ShowsPicturesThroughTheirAlpha) {
  std::ifstream file(std::string(VAXEL_SOURCE_DIR) + "/tests/pictures/clear.png", std::ios::binary);
  auto picture = std::make_shared<Picture>();
  ASSERT_EQ(ReadPicture({std::istreambuf_iterator<char>(file), {}}, *picture), PictureFault::None);
  const DisplayList list = ListOf([&](DisplayList& made) {
    made.Add({0, Black, 1, RectangleShape{{0, 0}, {100, 100}, {true, MakeColour(0, 0, 255)}}});
    made.AddPicture(picture, {{20.04, 20.04}, 40, 30, 0}, {0, Black, 1, {}});
  });
  SystemDecoder decoder;
  // Red, green, blue and yellow in the corners, a half transparent red in the middle, nothing between them.
  const GdiBitmap shown = Drawn(list, {.Decoder = &decoder});
  EXPECT_EQ(test::PixelAt(shown, 199, 250), 0x0000FFU);
  EXPECT_EQ(test::PixelAt(shown, 200, 200), 0xFF0000U);
  EXPECT_EQ(test::PixelAt(shown, 599, 200), 0x00FF00U);
  EXPECT_EQ(test::PixelAt(shown, 599, 499), 0xFFFF00U);
  EXPECT_EQ(test::PixelAt(shown, 600, 499), 0x0000FFU);
  EXPECT_EQ(test::PixelAt(shown, 400, 200), 0x0000FFU);
  EXPECT_EQ(test::PixelAt(shown, 400, 350), 0x80007FU);
  // Printers know no transparency: what lies below, but not what comes later, must be in the picture.
  const GdiBitmap printed = Drawn(list, {.UsesPens = true, .Decoder = &decoder});
  EXPECT_EQ(test::PixelAt(printed, 201, 201), 0xFF0000U);
  EXPECT_EQ(test::PixelAt(printed, 598, 498), 0xFFFF00U);
  EXPECT_EQ(test::PixelAt(printed, 400, 201), 0x0000FFU);
  EXPECT_EQ(test::PixelAt(printed, 400, 350), 0x80007FU);
  Result<> outcome;
  Drawn(list, {}, &outcome);
  EXPECT_FALSE(outcome);
}

}  // namespace
}  // namespace vaxel
