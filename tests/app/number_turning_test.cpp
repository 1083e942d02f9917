#include "app/number_turning.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

TEST(NumberTurning, KeepsTheNumbersWayOfWriting) {
  const struct {
    const char* Number;
    long long Tenths;
    const char* Expected;
  } cases[] = {
      {"5", 10, "6"},           {"9", 10, "10"},
      {"0", -10, "-1"},         {"-1", 10, "0"},
      {"2.50", 10, "3.50"},     {"2.50", 1, "2.60"},
      {"2", 1, "2.1"},          {"2", -1, "1.9"},
      {"2.9", 1, "3.0"},        {"0.05", -1, "-0.05"},
      {"-0.1", 1, "0.0"},       {".5", 1, ".6"},
      {".5", 10, "1.5"},        {"1.", 10, "2."},
      {"007", 10, "008"},       {"099", 10, "100"},
      {"+5", -10, "+4"},        {"+0", -10, "-1"},
      {"1.5E3", 10, "1.501E3"}, {"5e-3", 10, "1005e-3"},
      {"2E+2", 1, "2.001E+2"},  {"123456789.25", 10, "123456790.25"},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(NumberTurned(expected.Number, expected.Tenths), expected.Expected)
        << expected.Number << " by " << expected.Tenths;
  }
  // More digits than a number has are not made up.
  for (const char* number : {"1234567890123456", "1E99", "1e-16"})
    EXPECT_FALSE(NumberTurned(number, 10)) << number;
}

// The number in a line that is under a place, marked by "|".
std::string Under(std::string line) {
  const std::size_t place = line.find('|');
  line.erase(place, 1);
  const auto found = NumberAt(line, place);
  return found ? line.substr(found->Begin, found->End - found->Begin) : "none";
}

TEST(NumberTurning, TakesTheLiteralUnderTheCursorAlone) {
  const struct {
    const char* Line;
    const char* Expected;
  } cases[] = {
      {"Cercle = 10,|20,3", "20"},  {"Cercle = 10|,20", "10"},     {"Cercle = 1|0", "10"},
      {"Cercle = |-10", "-10"},     {"Cercle = -1|0", "-10"},      {"Cercle = 3-1|0", "10"},
      {"Cercle = 3|-10", "3"},      {"Cercle = 3 -1|0", "10"},     {"Cercle = 3*-1|0", "-10"},
      {"Cercle = (-1|0)", "-10"},   {"Cercle = %A-1|0", "10"},     {"Arc = 45°-1|0", "10"},
      {"Cercle = 10 |, 3", "none"}, {"Grad1| = 5", "none"},        {"%A2|5 = 3", "none"},
      {"Couleur = #12|34", "none"}, {"%{A 1|2} = 3", "none"},      {"Trait = 5|R, 2", "5"},
      {"Arc = 1§2|5§3", "25"},      {"Police = é1|2", "none"},     {"Cercle = 1E|-3", "1E-3"},
      {"Cercle = 1.2|5", "1.25"},   {"Cercle = |.5", ".5"},        {"|", "none"},
      {"x = 2,|", "none"},          {"Texte = 0, 0,,, +5|", "+5"},
  };
  for (const auto& expected : cases) EXPECT_EQ(Under(expected.Line), expected.Expected) << expected.Line;
}

class TurnedNumber : public testing::Test {
 protected:
  TurnedNumber() { Put(10); }
  void Put(std::size_t place) { shell_.Editor.Select({place, place}); }
  void Turn(Key key, bool withShift = false) { EXPECT_TRUE(shell_.App->KeyDown(key, withShift, true)); }
  const std::string& Text() const { return shell_.Editor.Content; }

  FakeShell shell_{"Cercle = 9,-2,3"};
};

TEST_F(TurnedNumber, SeriesIsOneStepAndTheDrawingFollowsAtOnce) {
  shell_.Happened.clear();
  Turn(Key::Up);
  EXPECT_EQ(Text(), "Cercle = 10,-2,3");
  EXPECT_EQ(shell_.Take({"show"}), (Log{"show 1"}));
  Turn(Key::Up, true);
  Turn(Key::Down);
  Turn(Key::Down);
  EXPECT_EQ(Text(), "Cercle = 8.1,-2,3");
  EXPECT_EQ(shell_.Editor.Selected, (EditorRange{12, 12}));
  shell_.Editor.Undo();
  EXPECT_EQ(Text(), "Cercle = 9,-2,3");
  EXPECT_FALSE(shell_.Window.IsDrawingOld);
}

TEST_F(TurnedNumber, SeriesEndsWhereSomethingElseIsDone) {
  Turn(Key::Up);
  Put(13);
  Turn(Key::Up);
  EXPECT_EQ(Text(), "Cercle = 10,-1,3");
  Put(11);
  shell_.Editor.Replace({0, 6}, "Cerclf");  // elsewhere in the text, the cursor goes along
  Put(11);
  Turn(Key::Down);
  EXPECT_EQ(Text(), "Cerclf = 9,-1,3");
  for (const char* before : {"Cerclf = 10,-1,3", "Cercle = 10,-1,3", "Cercle = 10,-2,3", "Cercle = 9,-2,3"}) {
    shell_.Editor.Undo();
    EXPECT_EQ(Text(), before);
  }
}

TEST_F(TurnedNumber, GoesBackToWhatItWasAndOn) {
  Turn(Key::Up);
  Turn(Key::Down);
  EXPECT_EQ(Text(), "Cercle = 9,-2,3");
  Turn(Key::Down);
  EXPECT_EQ(Text(), "Cercle = 8,-2,3");
  shell_.Editor.Undo();
  EXPECT_EQ(Text(), "Cercle = 9,-2,3");
}

TEST_F(TurnedNumber, LeavesEverythingAloneWhereThereIsNoNumberOrNoEditor) {
  Put(3);
  shell_.Happened.clear();
  Turn(Key::Up);
  EXPECT_EQ(Text(), "Cercle = 9,-2,3");
  EXPECT_TRUE(shell_.Take({"show"}).empty());
  Put(10);
  shell_.App->Command(MenuId::Mnu_Code);
  Turn(Key::Up);
  EXPECT_EQ(Text(), "Cercle = 9,-2,3");
  // With Alt there are no other commands.
  EXPECT_FALSE(shell_.App->KeyDown(Key::F4, false, true));
}

// The control forgets its oldest steps: what undoing cannot bring back stays as it is.
TEST_F(TurnedNumber, EndsWhereItsStepIsForgotten) {
  Turn(Key::Up);
  shell_.Editor.ForgetSteps();
  shell_.Happened.clear();
  Turn(Key::Up);
  EXPECT_EQ(Text(), "Cercle = 10,-2,3");
  EXPECT_EQ(shell_.Take({"undo", "redo"}), (Log{"undo", "redo"}));
}

// Of more digits than can be counted on nothing is turned.
TEST_F(TurnedNumber, LeavesANumberThatIsTooLong) {
  const std::string line = "Cercle = 9" + std::string(30, '9');
  shell_.Editor.Content = line;
  shell_.App->EditorChanged();
  Put(12);
  Turn(Key::Up);
  Turn(Key::Up);
  EXPECT_EQ(Text(), line);
}

// A key that ends the run brings the drawing at the next pause, though live drawing is off.
TEST_F(TurnedNumber, DrawingComesLaterWhereKeysFollow) {
  shell_.App->Command(MenuId::Mnu_DessinDirect);
  ASSERT_FALSE(shell_.App->Options().DrawsLive());
  shell_.Window.OnInput = [] { return true; };
  shell_.Happened.clear();
  Turn(Key::Up);
  EXPECT_TRUE(shell_.Take({"show"}).empty());
  shell_.Window.OnInput = nullptr;
  shell_.App->TypingPaused();
  EXPECT_EQ(shell_.Take({"show"}), (Log{"show 1"}));
}

}  // namespace
}  // namespace vaxel::test
