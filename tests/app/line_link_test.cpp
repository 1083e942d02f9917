// The drawing and the lines of its script: clicks, what is said of the element at the pointer, the halo.
#include "app/line_link.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

// A place in millimetres from the middle of the area, y upward, as a pixel of it.
Point At(double x, double y) {
  return {320 + 4 * x, 240 - 4 * y};
}

void Click(FakeShell& shell, double x, double y, bool withCtrl = false) {
  shell.App->DrawingClicked(At(x, y), withCtrl);
}

std::string TipAt(FakeShell& shell, double x, double y) {
  shell.App->DrawingRested(At(x, y));
  return shell.Window.Tip;
}

void GoTo(FakeShell& shell, std::size_t line) {
  shell.Editor.GoToLine(line);
  shell.App->CursorMoved();
}

// Where the strokes of the halo begin, in millimetres from the middle of the page.
std::vector<Point> HaloStarts(const FakeShell& shell) {
  std::vector<Point> starts;
  for (const OperationOutline& outline : shell.Window.Halo)
    starts.push_back({outline.Points.front().X - 80, 60 - outline.Points.front().Y});
  return starts;
}

void ExpectHaloAt(const FakeShell& shell, const std::vector<double>& heights) {
  const std::vector<Point> starts = HaloStarts(shell);
  ASSERT_EQ(starts.size(), heights.size());
  for (std::size_t i = 0; i < starts.size(); ++i) EXPECT_NEAR(starts[i].Y, heights[i], 1e-6);
}

constexpr const char* Strokes =
    "' three strokes\n"
    "Trait = -10,10, 10,10\n"
    "Trait = -10,20, _\n"
    "  10,20\n"
    "Trait = -10,30, 10,30";

TEST(LineMap, FindsLinesAgainInAChangedText) {
  const auto lines = [](const char* drawn, const char* now) {
    const LineMap map(LineMarks(drawn), LineMarks(now));
    std::string found;
    for (std::size_t line = 1; line <= LineMarks(drawn).size(); ++line) {
      const auto place = map.InText(line);
      found += place ? std::to_string(*place) : "-";
      EXPECT_TRUE(!place || map.InDrawing(*place) == line) << drawn << " / " << now;
    }
    return found;
  };
  EXPECT_EQ(lines("a\nb\nc", "a\nb\nc"), "123");
  EXPECT_EQ(lines("a\nb\nc", "a\nX\nc"), "123");     // changed in its place
  EXPECT_EQ(lines("a\nb\nc", "a\nX\nb\nc"), "134");  // one more
  EXPECT_EQ(lines("a\nb\nc", "a\nc"), "1-2");        // one less
  EXPECT_EQ(lines("a\nb\nc\nd", "X\na\nb\nc\nY\nd"), "2346");
  EXPECT_EQ(lines("a\nb\nc\nd", "X\na\nB\nc\nY\nd"), "2346");  // and one changed between them
  EXPECT_EQ(lines("r\nr\nr\ns", "X\nr\nr\nr\ns"), "2345");     // lines that repeat
  EXPECT_EQ(lines("a\nb\nc\nd", "X\na\nc\nd"), "2-34");        // one more and one less
  EXPECT_EQ(lines("a\nb", ""), "--");
  EXPECT_EQ(LineMap(LineMarks("a\nc"), LineMarks("a\nb\nc")).InDrawing(2), std::nullopt);
  EXPECT_EQ(LineMap().InText(7), 7U);
}

TEST(LineLink, ClickPutsTheCursorIntoTheLineThatDrew) {
  FakeShell shell(Strokes);
  Click(shell, 0, 20);
  EXPECT_EQ(shell.Editor.Line, 3U);
  EXPECT_EQ(shell.Editor.KeysTaken, 1);
  Click(shell, 0, 10.9);  // near enough
  EXPECT_EQ(shell.Editor.Line, 2U);
  Click(shell, 0, 25);
  EXPECT_EQ(shell.Editor.Line, 2U);
  EXPECT_EQ(TipAt(shell, 5, 30), "Line 5: Trait = -10,30, 10,30");
  EXPECT_EQ(TipAt(shell, 5, 26), "");
  // In an enlarged and moved view what is seen there counts.
  shell.App->Runs().WheelTurned(320, 240, 5);
  shell.App->Runs().Dragged(100, 40);
  const double scale = shell.Window.View.Scale;
  shell.App->DrawingClicked({420, 280 - 30 * 4 * scale}, false);
  EXPECT_EQ(shell.Editor.Line, 5U);
  shell.App->Command(MenuId::Mnu_Code);
  shell.App->DrawingClicked({420, 280 - 10 * 4 * scale}, false);
  EXPECT_EQ(shell.Editor.KeysTaken, 3);  // none is given to an editor that is hidden
}

TEST(LineLink, HaloShowsWhatTheCursorsLineDraws) {
  FakeShell shell(Strokes);
  EXPECT_TRUE(shell.Window.Halo.empty());
  GoTo(shell, 2);
  ExpectHaloAt(shell, {10});
  GoTo(shell, 4);  // the second half of a command
  ExpectHaloAt(shell, {20});
  const int before = shell.Window.Halos;
  shell.App->CursorMoved();
  EXPECT_EQ(shell.Window.Halos, before);
  GoTo(shell, 1);
  EXPECT_TRUE(shell.Window.Halo.empty());
  GoTo(shell, 5);
  shell.App->Command(MenuId::Mnu_Code);
  EXPECT_TRUE(shell.Window.Halo.empty());
  shell.App->Command(MenuId::Mnu_Code);
  ExpectHaloAt(shell, {30});
}

TEST(LineLink, FollowsTheTextThatIsNotDrawnYet) {
  FakeShell shell(Strokes);
  shell.App->Command(MenuId::Mnu_DessinDirect);
  shell.Editor.Replace({0, 0}, "' one more\n");
  GoTo(shell, 6);
  EXPECT_TRUE(shell.Window.Halo.empty());
  shell.App->TypingPaused();
  ExpectHaloAt(shell, {30});
  EXPECT_EQ(TipAt(shell, 5, 10), "Line 3: Trait = -10,10, 10,10");
  Click(shell, 0, 10);
  EXPECT_EQ(shell.Editor.Line, 3U);
  // A line that is gone is told of.
  const EditorRange lines = shell.Editor.RangeOfLines(3, 3);
  shell.Editor.Replace({lines.Begin, lines.End + 1}, "");
  GoTo(shell, 1);
  Click(shell, 0, 10);
  EXPECT_EQ(shell.Editor.Line, 1U);
  EXPECT_EQ(shell.Window.Messages.back(),
            "the line of this element is not in the text any more: F4 draws anew");
  EXPECT_EQ(TipAt(shell, 5, 10), "");
  shell.App->KeyDown(Key::F4);
  Click(shell, 0, 20);
  EXPECT_EQ(shell.Editor.Line, 3U);
}

TEST(LineLink, LinesOfAnOlderDrawingStayWhereTheRunFails) {
  FakeShell shell(Strokes);
  shell.Editor.Replace({0, 0}, "Cercle = ,,\n");
  shell.App->TypingPaused();
  EXPECT_TRUE(shell.Window.IsDrawingOld);
  Click(shell, 0, 30);
  EXPECT_EQ(shell.Editor.Line, 6U);
  // A script without a drawing has nothing to do with the one that is still shown.
  shell.CommandWithAnswers(MenuId::Mnu_Nouveau, {"no"});
  shell.Editor.Replace({0, shell.Editor.Size()}, "' nothing\n' at all\n");
  Click(shell, 0, 30);
  EXPECT_EQ(shell.Editor.Line, 3U);
  EXPECT_TRUE(shell.Window.Halo.empty());
}

TEST(LineLink, EachPageHasItsOwnElements) {
  FakeShell shell("Trait = -10,10, 10,10\nNPage\nTrait = -10,20, 10,20");
  GoTo(shell, 1);
  EXPECT_TRUE(shell.Window.Halo.empty());  // the second page is shown
  Click(shell, 0, 10);
  EXPECT_EQ(shell.Editor.Line, 1U);
  Click(shell, 0, 20);
  EXPECT_EQ(shell.Editor.Line, 3U);
  shell.App->Command(MenuId::Mnu_PagePrecedente);
  EXPECT_TRUE(shell.Window.Halo.empty());
  GoTo(shell, 1);
  ExpectHaloAt(shell, {10});
}

class LinkOfIncluded : public testing::Test {
 protected:
  LinkOfIncluded() {
    shell_.Write("inner.dat", "' inner\nCercle = 0,0,2");
    shell_.Write("part.dat", "' a part\nTrait = -10,10, 10,10\nFichier = inner.dat\nTrait = -10,20, 10,20");
    shell_.StartWith("' the whole\nFichier = part.dat\nTrait = -10,30, 10,30");
  }
  FakeShell shell_;
};

TEST_F(LinkOfIncluded, ClickGoesToTheLineThatIncludes) {
  Click(shell_, 5, 20);
  EXPECT_EQ(shell_.Editor.Line, 2U);
  shell_.App->CursorMoved();
  ExpectHaloAt(shell_, {10, 0, 20});
  EXPECT_EQ(TipAt(shell_, 5, 20), "Line 2: Fichier = part.dat\npart.dat, line 4: Ctrl+click opens it");
  EXPECT_EQ(TipAt(shell_, 2, 0), "Line 2: Fichier = part.dat\ninner.dat, line 2: Ctrl+click opens it");
  EXPECT_EQ(TipAt(shell_, 5, 30), "Line 3: Trait = -10,30, 10,30");
  Click(shell_, 5, 30, true);  // of the script itself
  EXPECT_EQ(shell_.Editor.Line, 3U);
}

TEST_F(LinkOfIncluded, CtrlClickOpensTheIncludedFileAtItsLine) {
  shell_.Editor.Replace({0, 5}, "' A");
  shell_.Boxes.Answers = {"cancel"};
  Click(shell_, 5, 20, true);
  EXPECT_TRUE(shell_.Editor.Content.starts_with("' A whole"));
  shell_.Boxes.Answers = {"no"};
  Click(shell_, 5, 20, true);
  EXPECT_TRUE(shell_.Editor.Content.starts_with("' a part"));
  EXPECT_EQ(shell_.Editor.Line, 4U);
  // Its own drawing is shown, and belongs to it.
  Click(shell_, 5, 10);
  EXPECT_EQ(shell_.Editor.Line, 2U);
}

TEST(LineLink, HaloGoesWithItsScript) {
  FakeShell shell("Trait = -10,10, 10,10");
  ExpectHaloAt(shell, {10});
  shell.App->Command(MenuId::Mnu_Nouveau);  // the cursor is in the first line as before
  EXPECT_TRUE(shell.Window.Halo.empty());
}

// Nothing is asked of a script while it runs.
TEST(LineLink, KeepsStillDuringARun) {
  FakeShell shell(Strokes);
  shell.Window.OnEvents = [&] {
    Click(shell, 0, 20);
    EXPECT_EQ(TipAt(shell, 0, 20), "");
  };
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Line, 1U);
}

}  // namespace
}  // namespace vaxel::test
