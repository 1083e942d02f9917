#include "drawing/page_bounds.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <numbers>

#include "render/list_renderer.h"

namespace vaxel {
namespace {

class Memory : public ByteSink {
 public:
  void Write(std::string_view bytes) override { Bytes += bytes; }
  std::string Bytes{};
};

std::string AsText(const DisplayList& list) {
  Memory memory;
  ListRenderer renderer(memory);
  PlayAll(list, renderer);
  return memory.Bytes;
}

void AddTriangle(DisplayList& list, Point at) {
  const std::array corners = {at, at + Point{4, 0}, at + Point{0, 3}};
  list.AddPolygon(corners, Fill(Black), {0.2, Black, 1, {}});
}

// One page with each kind of figure.
DisplayList EveryFigure(Point at) {
  DisplayList list;
  list.BeginPage(50, 40);
  list.Add({0.3, Black, 1, LineShape{at, at + Point{5, 5}}});
  list.Add({0.3, Black, 1, RectangleShape{at, at + Point{5, 5}}});
  AddTriangle(list, at);
  list.AddContour(std::array{ContourArc{at, 2, 0, 2 * std::numbers::pi}}, Fill(Black), {0.1, Black, 1, {}});
  list.Add({0.3, Black, 1, CircleShape{at, 3, 2}});
  list.AddText("Ω", {"Arial"}, {at, 0, 4, 3, 0, 0}, {0, Black, 1, {}});
  list.AddPicture(std::make_shared<Picture>(), {at, 6, 7, 0}, {0, Black, 1, {}});
  return list;
}

struct BoundsCase {
  const char* Name;
  std::function<void(DisplayList&)> Draw;
  Box Expected;
};

TEST(PageBounds, HoldsWhatIsDrawn) {
  constexpr double half = std::numbers::pi / 2;
  const BoundsCase cases[] = {
      {"a stroke, with its width",
       [](DisplayList& list) {
         list.Add({0.4, Black, 1, LineShape{{10, 20}, {30, 5}}});
       },
       {9.8, 30.2, 4.8, 20.2}},
      {"beyond the page, too",
       [](DisplayList& list) {
         list.Add({0, Black, 1, RectangleShape{{120, -30}, {-8, 7}}});
       },
       {-8, 120, -30, 7}},
      {"an arc from 45° to 135°: the top, but not the centre",
       [](DisplayList& list) {
         list.Add({0.2, Black, 1, CircleShape{{0, 0}, 10, 10, half / 2, 3 * half / 2, {}, CircleForm::Arc}});
       },
       {-7.1711, 7.1711, -10.1, -6.9711}},
      {"the same as a pie: its centre",
       [](DisplayList& list) {
         list.Add({0.2, Black, 1, CircleShape{{0, 0}, 10, 10, half / 2, 3 * half / 2, {}, CircleForm::Pie}});
       },
       {-7.1711, 7.1711, -10.1, 0.1}},
      {"a polygon",
       [](DisplayList& list) {
         AddTriangle(list, {1, 2});
       },
       {0.9, 5.1, 1.9, 5.1}},
      {"a picture",
       [](DisplayList& list) {
         list.AddPicture(std::make_shared<Picture>(), {{2, 3}, 6, 7, 0}, {0, Black, 1, {}});
       },
       {2, 8, 3, 10}},
      {"an upright text, ascents to its left, which is no more than its size",
       [](DisplayList& list) {
         list.AddText("Éj", {"Arial"}, {{50, 50}, half, 4, 9, 0, 0}, {0, Black, 1, {}});
       },
       {46, 51.2, 40.4, 50.6}},
  };
  for (const BoundsCase& c : cases) {
    DisplayList list;
    list.BeginPage(100, 100);
    c.Draw(list);
    list.AddText("  ", {"Arial"}, {{900, 900}, 0, 4, 9, 0, 0}, {0, Black, 1, {}});
    const std::optional<Box> bounds = BoundsOf(list, 0);
    ASSERT_TRUE(bounds) << c.Name;
    EXPECT_NEAR(bounds->Left, c.Expected.Left, 1e-4) << c.Name;
    EXPECT_NEAR(bounds->Right, c.Expected.Right, 1e-4) << c.Name;
    EXPECT_NEAR(bounds->Top, c.Expected.Top, 1e-4) << c.Name;
    EXPECT_NEAR(bounds->Bottom, c.Expected.Bottom, 1e-4) << c.Name;
  }
}

TEST(PageBounds, AreThoseOfOnePage) {
  DisplayList list;
  list.BeginPage(10, 10);
  list.Add({0, Black, 1, LineShape{{1, 1}, {2, 2}}});
  list.BeginPage(10, 10);
  list.AddText(" ", {"Arial"}, {{9, 9}, 0, 4, 9, 0, 0}, {0, Black, 1, {}});
  list.BeginPage(10, 10);
  list.Add({0, Black, 1, LineShape{{5, 5}, {6, 6}}});
  EXPECT_EQ(BoundsOf(list, 0)->Right, 2);
  EXPECT_FALSE(BoundsOf(list, 1));
  EXPECT_EQ(BoundsOf(list, 2)->Left, 5);
}

TEST(DisplayList, MovesEveryFigureIntoANewFrame) {
  DisplayList list = EveryFigure({20, 10});
  list.BeginPage(50, 40);
  AddTriangle(list, {1, 1});
  list.FramePage(0, {13, 4}, 30, 20);
  DisplayList expected = EveryFigure({7, 6});
  expected.ResizePage(30, 20);
  expected.BeginPage(50, 40);
  AddTriangle(expected, {1, 1});
  EXPECT_EQ(AsText(list), AsText(expected));
}

}  // namespace
}  // namespace vaxel
