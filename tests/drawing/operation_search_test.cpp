#include "drawing/operation_search.h"

#include <gtest/gtest.h>

#include <numbers>

namespace vaxel {
namespace {

Operation Of(std::uint32_t line, Shape figure, double width = 0.5) {
  return {width, Black, line, figure};
}

TEST(OperationSearch, FindsWhatIsMeantAtAPoint) {
  DisplayList list;
  list.BeginPage(100, 100);
  list.Add(Of(1, LineShape{{0, 10}, {100, 10}}));
  list.Add(Of(2, RectangleShape{{20, 5}, {40, 30}, Fill(White)}));
  list.Add(Of(3, LineShape{{30, 0}, {30, 50}}));
  list.Add(Of(4, CircleShape{{70, 70}, 20, 10, 0, 0, {}, CircleForm::Full}));
  list.Add(Of(5, CircleShape{{70, 30}, 10, 10, 0, std::numbers::pi / 2, {}, CircleForm::Arc}));
  const std::vector<Point> corners = {{10, 60}, {30, 60}, {10, 90}};
  list.AddPolygon(corners, Fill(Black), Of(6, {}, 0));
  list.AddText("abc", {}, {{10, 50}, std::numbers::pi / 2, 5, 12, 0, 0}, Of(7, {}));
  const std::vector<ContourArc> ring = {{{50, 90}, 5, 0, 2 * std::numbers::pi}};
  list.AddContour(ring, {}, Of(8, {}));
  list.AddPicture(std::make_shared<Picture>(), {{80, 5}, 15, 10}, Of(9, {}, 0));
  const auto lineAt = [&](double x, double y) {
    const auto found = OperationAt(list, 0, {x, y}, 1);
    return found ? found->SourceLine : 0;
  };
  EXPECT_EQ(lineAt(10, 10.9), 1U);
  EXPECT_EQ(lineAt(10, 12), 0U);
  EXPECT_EQ(lineAt(25, 10), 2U);    // it hides line 1
  EXPECT_EQ(lineAt(30.9, 20), 3U);  // near enough, and above the rectangle
  EXPECT_EQ(lineAt(32, 20), 2U);
  EXPECT_EQ(lineAt(30.2, 10), 3U);
  EXPECT_EQ(lineAt(70, 80), 4U);
  EXPECT_EQ(lineAt(90, 70), 4U);
  EXPECT_EQ(lineAt(70, 70), 0U);  // it is not filled
  EXPECT_EQ(lineAt(77, 23), 5U);  // up to the right: y is downward
  EXPECT_EQ(lineAt(77, 37), 0U);
  EXPECT_EQ(lineAt(15, 65), 6U);
  EXPECT_EQ(lineAt(25, 85), 0U);
  EXPECT_EQ(lineAt(16, 75), 6U);  // on both sides of its slanting side
  EXPECT_EQ(lineAt(24, 75), 0U);
  EXPECT_EQ(lineAt(8, 45), 7U);  // the text reads upward
  EXPECT_EQ(lineAt(15, 45), 0U);
  EXPECT_EQ(lineAt(50, 95), 8U);
  EXPECT_EQ(lineAt(50, 90), 0U);
  EXPECT_EQ(lineAt(94, 14), 9U);  // all of a picture is meant
  EXPECT_EQ(lineAt(94, 17), 0U);
  EXPECT_FALSE(OperationAt(list, 1, {0, 0}, 1));
}

TEST(OperationSearch, PrefersTheNearerAndTheUpperStroke) {
  DisplayList list;
  list.BeginPage(100, 100);
  list.Add(Of(1, LineShape{{0, 10}, {100, 10}}, 0.1));
  list.Add(Of(2, LineShape{{0, 11}, {100, 11}}, 0.1));
  list.Add(Of(3, LineShape{{0, 30}, {100, 30}}, 0.1));
  list.Add(Of(4, LineShape{{0, 30}, {100, 30}}, 0.1));
  const std::vector<Point> stroke = {{0, 49}, {0, 51}, {100, 51}, {100, 49}};
  list.AddPolygon(stroke, Fill(Black), Of(5, {}, 0.1), PolygonUse::Stroke);
  list.Add(Of(6, LineShape{{0, 50.5}, {100, 50.5}}, 0.1));
  EXPECT_EQ(OperationAt(list, 0, {50, 10.4}, 2)->SourceLine, 1U);
  EXPECT_EQ(OperationAt(list, 0, {50, 10.6}, 2)->SourceLine, 2U);
  EXPECT_EQ(OperationAt(list, 0, {50, 30}, 2)->SourceLine, 4U);
  EXPECT_EQ(OperationAt(list, 0, {50, 49.5}, 2)->SourceLine, 5U);
}

TEST(OperationSearch, GivesTheOutlinesOfALine) {
  DisplayList list;
  list.BeginPage(100, 100);
  list.Add(Of(3, LineShape{{0, 10}, {100, 10}}));
  list.Add(Of(4, LineShape{{0, 20}, {100, 20}}));
  list.Add(Of(3, RectangleShape{{20, 5}, {40, 30}}));
  list.AddPicture(std::make_shared<Picture>(), {{80, 5}, 15, 10}, Of(5, {}, 0));
  list.BeginPage(100, 100);
  list.Add(Of(3, LineShape{{0, 30}, {100, 30}}));
  const auto outlines = OutlinesOfLine(list, 0, 3, 100);
  ASSERT_EQ(outlines.size(), 2U);
  EXPECT_EQ(outlines[0].Points, (std::vector<Point>{{0, 10}, {100, 10}}));
  EXPECT_FALSE(outlines[0].IsClosed);
  EXPECT_EQ(outlines[0].Width, 0.5);
  EXPECT_EQ(outlines[1].Points.size(), 4U);
  EXPECT_TRUE(outlines[1].IsClosed);
  EXPECT_EQ(OutlinesOfLine(list, 0, 3, 1).size(), 1U);
  const auto picture = OutlinesOfLine(list, 0, 5, 9);
  ASSERT_EQ(picture.size(), 1U);
  EXPECT_EQ(picture[0].Points, (std::vector<Point>{{80, 5}, {95, 5}, {95, 15}, {80, 15}}));
  EXPECT_EQ(OutlinesOfLine(list, 1, 3, 9)[0].Points[0].Y, 30);
}

}  // namespace
}  // namespace vaxel
