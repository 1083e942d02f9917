// What the status line tells of the place under the pointer, beside its coordinates.
#include "app/measuring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

// What is read at a place in millimetres from the middle, y upward.
std::string ReadingAt(FakeShell& shell, double x, double y) {
  shell.App->Runs().PointerMoved(320 + 4 * x, 240 - 4 * y);
  return shell.Window.Status[static_cast<std::size_t>(StatusField::Reading)];
}

TEST(Measuring, ReadsTheScaleUnderThePointer) {
  FakeShell shell("Arc = 0,180,40");
  EXPECT_EQ(ReadingAt(shell, 0, 30), "value 50 %, angle 90°, radius 30");
  EXPECT_EQ(shell.Window.Text2, "0  30");
  EXPECT_EQ(ReadingAt(shell, -30, 0), "value 0 %, angle 0°, radius 30");
  EXPECT_EQ(ReadingAt(shell, 10, 10), "value 75 %, angle 135°, radius 14.1");
  EXPECT_EQ(ReadingAt(shell, 0, -10), "angle 270°, radius 10");
}

TEST(Measuring, ReadsTheNearestOfSeveralScalesOnThePageThatIsShown) {
  FakeShell shell(
      "Arc = 0,180,20\nArc = 0,90,40\nCT = 0,-40\nDroite = -50,50,0\nEchelle = 0, 200\n"
      "NPage\nCentreE = 0,0\nDroiteV = -20,20,0");
  EXPECT_EQ(ReadingAt(shell, -30, 10), "value 150");
  shell.App->Command(MenuId::Mnu_PagePrecedente);
  EXPECT_EQ(ReadingAt(shell, 0, 25), "value 50 %, angle 90°, radius 25");
  EXPECT_EQ(ReadingAt(shell, 0, 38), "value 100 %, angle 90°, radius 38");
  EXPECT_EQ(ReadingAt(shell, -25, -38), "value 50");  // of its own values
}

TEST(Measuring, FollowsViewZoomAndAreaAndTellsMoreDigitsWhenEnlarged) {
  FakeShell shell("Arc = 0,180,40");
  shell.Window.Resize(*shell.App, 840, 480);
  shell.App->Runs().PointerMoved(420, 120);
  const auto reading = [&] { return shell.Window.Status[static_cast<std::size_t>(StatusField::Reading)]; };
  EXPECT_EQ(reading(), "value 50 %, angle 90°, radius 30");
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("2", "1"); };
  shell.App->KeyDown(Key::F7);
  shell.App->Runs().PointerMoved(420, 120);
  EXPECT_EQ(reading(), "value 50 %, angle 90°, radius 15");
  for (int notch = 0; notch < 8; ++notch) shell.App->Runs().WheelTurned(420, 120, 1);
  shell.App->Runs().PointerMoved(420 + 17, 120);
  const double across = 17 * 0.25 / 2 / shell.Window.View.Scale;
  const double angle = 90 + std::atan2(across, 15) / RadiansPerDegree;
  EXPECT_NE(reading().find("angle " + std::to_string(angle).substr(0, 4)), std::string::npos) << reading();
  EXPECT_NE(reading().find("radius 15.0"), std::string::npos) << reading();
}

TEST(Measuring, DragWithShiftTellsDistanceAndDirection) {
  FakeShell shell("CentreE = 20, 20\nTrait = 0,0, 5,5");
  DrawingView& view = shell.App->Runs().Shown();
  EXPECT_EQ(ReadingAt(shell, 0, 0), "");
  view.BeginMeasuring({320, 240});
  EXPECT_EQ(ReadingAt(shell, 0, 0), "distance 0");
  EXPECT_EQ(ReadingAt(shell, 10, 10), "distance 14.1, direction 45°");
  ASSERT_TRUE(shell.Window.Measuring);
  EXPECT_EQ(shell.Window.Measuring->From, (Point{320, 240}));
  EXPECT_EQ(shell.Window.Measuring->To, (Point{360, 200}));
  EXPECT_EQ(shell.Window.Measuring->Text, "distance 14.1, direction 45°");
  EXPECT_EQ(ReadingAt(shell, 0, -10), "distance 10, direction 270°");
  // The wheel moves the picture under the pointer, and the line's beginning with it.
  shell.App->Runs().WheelTurned(320, 280, 1);
  EXPECT_NEAR(shell.Window.Measuring->From.Y, 280 - 40 * 1.2, 1e-9);
  EXPECT_EQ(shell.Window.Measuring->Text, "distance 10, direction 270°");
  view.EndMeasuring();
  EXPECT_FALSE(shell.Window.Measuring);
  EXPECT_EQ(ReadingAt(shell, 0, 0), "");
}

// Pages that come and go take their scales along.
TEST(Measuring, ForgetsTheScalesOfPagesThatAreGone) {
  FakeShell shell(
      "%N = 0\nAgain:\nArc = 0,180,%N+1\nNPage\n%N = %N+1\nIF %N < 300 GOTO Again\nTrait = 0,0,1,1");
  EXPECT_EQ(shell.App->Runs().Drawing()->Pages().size(), 1U);
  EXPECT_EQ(ReadingAt(shell, 0, 30), "");
}

}  // namespace
}  // namespace vaxel::test
