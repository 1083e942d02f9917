#include "render/halo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vaxel {
namespace {

int StrengthAt(const Halo& halo, int width, int x, int y) {
  return halo.Strengths()[static_cast<std::size_t>(y * width + x)];
}

TEST(Halo, GlowsAroundStrokesAndFadesAtItsReach) {
  // A stroke of 4 pixels along y = 50, in a page whose corner is at 10, 20.
  const Halo halo({{{{-1000, 15}, {1000, 15}}, false, 2}}, {100, 100, 2, {10, 20}, 8});
  EXPECT_EQ(StrengthAt(halo, 100, 0, 50), 255);
  EXPECT_EQ(StrengthAt(halo, 100, 99, 46), 255);
  const int weaker = StrengthAt(halo, 100, 50, 43), weakest = StrengthAt(halo, 100, 50, 41);
  EXPECT_GT(weaker, weakest);
  EXPECT_GT(weakest, 0);
  EXPECT_EQ(StrengthAt(halo, 100, 50, 39), 0);
  EXPECT_EQ(StrengthAt(halo, 100, 50, 40), StrengthAt(halo, 100, 50, 59));
}

TEST(Halo, ClosesFiguresAndMarksPoints) {
  const std::vector<Point> corners = {{20, 20}, {80, 20}, {80, 80}};
  const HaloFrame frame{100, 100, 1, {0, 0}, 4};
  EXPECT_EQ(StrengthAt(Halo({{corners, true, 0}}, frame), 100, 50, 50), 255);
  EXPECT_EQ(StrengthAt(Halo({{corners, false, 0}}, frame), 100, 50, 50), 0);
  EXPECT_EQ(StrengthAt(Halo({{{{40, 40}}, false, 0}}, frame), 100, 40, 40), 255);
  EXPECT_EQ(StrengthAt(Halo({{{{1e9, 1e9}, {-1e9, -1e9}}, false, 0}}, frame), 100, 30, 30), 255);
}

TEST(Halo, BlendsSoThatTheDrawingIsStillSeen) {
  const Halo halo({{{{0, 1.5}, {9, 1.5}}, false, 1}}, {9, 20, 1, {0, 0}, 3});
  std::vector<std::uint32_t> pixels(180, 0xFFFFFFFF);
  pixels[9] = 0xFF000000;
  halo.BlendInto(pixels.data(), MakeColour(255, 140, 0));
  const std::uint32_t white = pixels[10], black = pixels[9];
  EXPECT_EQ(white >> 16, 0xFFFFU);
  EXPECT_EQ(white & 0xFF, 255U - 150);
  EXPECT_EQ(black >> 16 & 0xFF, 150U);
  EXPECT_EQ(pixels.back(), 0xFFFFFFFF);
}

// Drawings of any size must not hold up the window.
TEST(Halo, LeavesOutWhatWouldTakeLong) {
  std::vector<OperationOutline> outlines(3000, {{{0, 0}, {1000, 1000}}, false, 100});
  outlines.insert(outlines.begin(), {{{500, 10}, {900, 10}}, false, 1});
  const Halo halo(outlines, {1000, 1000, 1, {0, 0}, 6});
  EXPECT_EQ(StrengthAt(halo, 1000, 700, 10), 255);
}

}  // namespace
}  // namespace vaxel
