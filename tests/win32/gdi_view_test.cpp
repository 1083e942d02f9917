#include "render/gdi/view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/win32/drawn_bitmap.h"

namespace vaxel {
namespace {

using test::ListOf;

constexpr ViewFrame Frame = {300, 300, {10, 10, 0, 0}};

// Where the pixels of a slanted stroke are covered in part, so is their ink: its area is right to a
// hundredth.
TEST(GdiView, DrawsSmoothly) {
  for (const double degrees : {0.0, 3.0, 27.0, 45.0, 81.5}) {
    const double angle = degrees * std::numbers::pi / 180;
    constexpr double length = 20, width = 0.31;
    const Point from = {4.013, 25.027}, to = from + Point{std::cos(angle), -std::sin(angle)} * length;
    const DisplayList list = ListOf([&](DisplayList& made) {
      made.Add({width, Black, 1, LineShape{from, to}});
    });
    GdiView view(list, nullptr);
    const GdiBitmap bitmap = view.Draw(0, Frame);
    ASSERT_TRUE(bitmap);
    const double area = (length * width + std::numbers::pi / 4 * width * width) * 100;
    EXPECT_NEAR(test::InkArea(bitmap), area, 0.08 * area) << degrees;
    const Point middle = test::InkMiddle(bitmap), expected = (from + to) * 5;
    EXPECT_NEAR(middle.X, expected.X, 0.15) << degrees;
    EXPECT_NEAR(middle.Y, expected.Y, 0.15) << degrees;
  }
}

// What a band shows must go on in the next one: a column of many bands is the same all over.
TEST(GdiView, HasNoSeams) {
  const DisplayList list = ListOf([](DisplayList& made) {
    made.Add({0, Black, 1, RectangleShape{{10.025, -5}, {20.05, 305}, {true, MakeColour(200, 100, 50)}}});
  });
  GdiView view(list, nullptr);
  const ViewFrame frame = {300, 3000, {10, 10, 0, 0}, MakeColour(1, 2, 3)};
  const GdiBitmap bitmap = view.Draw(0, frame);
  ASSERT_TRUE(bitmap);
  for (int y = 0; y < frame.Height; ++y) {
    ASSERT_EQ(bitmap.Pixels()[y * 300 + 99], 0xFF010203U) << y;
    ASSERT_EQ(bitmap.Pixels()[y * 300 + 150], 0xFFC86432U) << y;
    // Three quarters of it, and half of it.
    ASSERT_EQ(bitmap.Pixels()[y * 300 + 100], 0xFF964C26U) << y;
    ASSERT_EQ(bitmap.Pixels()[y * 300 + 200], 0xFF65331BU) << y;
  }
}

TEST(GdiView, FollowsItsFrame) {
  const DisplayList list = ListOf([](DisplayList& made) {
    made.Add({0, Black, 1, CircleShape{{50, 50}, 2, 2, 0, 0, {true, Black}}});
  });
  GdiView view(list, nullptr);
  for (const DeviceTransform place :
       {DeviceTransform{10, 10, -400, -370}, DeviceTransform{30, 30, -1380, -1400.5}}) {
    const test::PixelEdges edges = test::InkEdges(view.Draw(0, {300, 300, place}));
    const Point from = place.At({48, 48}), to = place.At({52, 52});
    EXPECT_EQ(test::Difference(edges, {from.X, from.Y, to.X, to.Y}, 0.76), "");
  }
}

// A drawing that is broken off shows the same operations in all of its bands.
TEST(GdiView, LeavesOutWhatItIsTold) {
  const DisplayList list = ListOf([](DisplayList& made) {
    for (int i = 0; i < 1000; ++i) {
      made.Add({0, Black, 1, RectangleShape{{i * 0.3, -5}, {i * 0.3 + 0.3, 305}, {true, Black}}});
    }
  });
  GdiView view(list, nullptr);
  const ViewFrame frame = {3000, 3000, {10, 10, 0, 0}};
  const GdiBitmap bitmap = view.Draw(0, frame, [](std::size_t operation) { return operation < 128; });
  ASSERT_TRUE(bitmap);
  for (int y = 0; y < frame.Height; y += 7) {
    ASSERT_EQ(bitmap.Pixels()[y * frame.Width + 128 * 3 - 1], 0xFF000000U) << y;
    ASSERT_EQ(bitmap.Pixels()[y * frame.Width + 128 * 3], 0xFFFFFFFFU) << y;
  }
}

}  // namespace
}  // namespace vaxel
