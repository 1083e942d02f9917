#include "drawing/pen.h"

#include <gtest/gtest.h>

#include <vector>

namespace vaxel {
namespace {

struct Piece {
  double From, To;
  friend bool operator==(const Piece&, const Piece&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Piece& piece) {
    return out << piece.From << "…" << piece.To;
  }
};

std::vector<Piece> PiecesAlongX(const Pen& pen, double from, double to) {
  std::vector<Piece> pieces;
  DashStepper stepper(pen, {from, 7}, {to, 7});
  while (const auto piece = stepper.Next()) {
    EXPECT_EQ(piece->From.Y, 7);
    EXPECT_EQ(piece->To.Y, 7);
    pieces.push_back({piece->From.X, piece->To.X});
  }
  return pieces;
}

using Pieces = std::vector<Piece>;

TEST(DashStepper, RepeatsItsPattern) {
  EXPECT_EQ(PiecesAlongX({}, 0, 10), (Pieces{{0, 10}}));
  // A gap or a second dash that is not given is as long as the first dash.
  EXPECT_EQ(PiecesAlongX({.L1 = 2}, 0, 7), (Pieces{{0, 2}, {4, 6}}));
  EXPECT_EQ(PiecesAlongX({.L1 = 2, .L2 = 1, .L3 = 4}, 0, 15), (Pieces{{0, 2}, {3, 7}, {8, 10}, {11, 15}}));
  EXPECT_EQ(PiecesAlongX({.L1 = 2, .L2 = 1, .L3 = 4}, 0, -9), (Pieces{{0, -2}, {-3, -7}, {-8, -9}}));
}

TEST(DashStepper, CutsTheLastDashAtTheEnd) {
  EXPECT_EQ(PiecesAlongX({.L1 = 4, .L2 = 2}, 0, 9), (Pieces{{0, 4}, {6, 9}}));
  EXPECT_EQ(PiecesAlongX({.L1 = 4, .L2 = 2}, 0, 3), (Pieces{{0, 3}}));
  // The end in a gap ends the stroke with the dash before it.
  EXPECT_EQ(PiecesAlongX({.L1 = 4, .L2 = 2}, 0, 5), (Pieces{{0, 4}}));
}

TEST(DashStepper, FollowsSlantingStrokes) {
  // 3-4-5: a stroke of 10 in dashes of 5 and gaps of 2.5.
  DashStepper stepper({.L1 = 5, .L2 = 2.5}, {1, 1}, {7, -7});
  const auto first = stepper.Next();
  ASSERT_TRUE(first);
  EXPECT_NEAR(first->To.X, 4, 1e-12);
  EXPECT_NEAR(first->To.Y, -3, 1e-12);
  const auto second = stepper.Next();
  ASSERT_TRUE(second);
  EXPECT_NEAR(second->From.X, 5.5, 1e-12);
  EXPECT_EQ(second->To, (Point{7, -7}));
  EXPECT_FALSE(stepper.Next());
}

}  // namespace
}  // namespace vaxel
