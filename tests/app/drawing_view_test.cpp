// The drawing in its window: the area's size, views, pages, the sheet, and what the status line says of them.
#include "app/drawing_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/status_layout.h"
#include "drawing/page_bounds.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

using std::chrono::milliseconds;

std::string StatusOf(const FakeShell& shell, StatusField field) {
  return shell.Window.Status[static_cast<std::size_t>(field)];
}

void PressWithCtrl(FakeShell& shell, Key key) {
  shell.System.Ctrl = true;
  shell.App->KeyDown(key);
  shell.System.Ctrl = false;
}

Key Digit(char digit) {
  return static_cast<Key>(digit);
}

PagePlace PlaceIn(FakeShell& shell) {
  const DisplayList& drawing = *shell.App->Runs().Drawing();
  return PlaceOf(shell.Window.View, drawing.Pages()[shell.Window.Page], shell.Window.Area);
}

// Where the ends of lines are seen, in pixels of the window.
std::vector<Point> SeenLines(FakeShell& shell) {
  const PagePlace place = PlaceIn(shell);
  const DisplayList& drawing = *shell.App->Runs().Drawing();
  std::vector<Point> seen;
  for (std::size_t i = 0; i < drawing.Size(); ++i) {
    if (const auto* line = std::get_if<LineShape>(&drawing.At(i).Figure)) {
      seen.push_back(place.ToPixels(line->From));
      seen.push_back(place.ToPixels(line->To));
    }
  }
  return seen;
}

TEST(DrawingView, FollowsTheAreaAsANewRunWould) {
  FakeShell shell;
  shell.Write("part.dat", "CentreE = 3, 4, N\nTrait = 0, 0, 1, 2\nCT = 5, 5, N\nX = 0,0,1\n");
  shell.StartWith("CentreE = 10, 5, N\nTrait = 0, 0, 10, 0\nFichier = part.dat, 20, 0\nFichier = part.dat\n");
  shell.App->Runs().PointerMoved(400, 80);
  shell.App->KeyDown(Key::F6);
  const auto expectNothingNew = [&] {
    shell.App->Runs().PointerMoved(33, 44);
    const std::string place = shell.Window.Text2;
    const std::vector<Point> before = SeenLines(shell);
    const Point centre = shell.View().GraphicCentre;
    shell.App->KeyDown(Key::F4);
    const std::vector<Point> after = SeenLines(shell);
    ASSERT_EQ(before.size(), after.size());
    ASSERT_EQ(before.size(), 14U);
    for (std::size_t i = 0; i < before.size(); ++i) {
      EXPECT_NEAR(before[i].X, after[i].X, 1e-9);
      EXPECT_NEAR(before[i].Y, after[i].Y, 1e-9);
    }
    EXPECT_NEAR(centre.X, shell.View().GraphicCentre.X, 1e-9);
    EXPECT_NEAR(centre.Y, shell.View().GraphicCentre.Y, 1e-9);
    shell.App->Runs().PointerMoved(33, 44);
    EXPECT_EQ(shell.Window.Text2, place);
  };
  const std::vector<Point> before = SeenLines(shell);
  shell.Window.Resize(*shell.App, 1001, 380);
  EXPECT_NEAR(SeenLines(shell)[0].X - before[0].X, 180.5, 1e-9);
  EXPECT_NEAR(SeenLines(shell)[0].Y - before[0].Y, -50, 1e-9);
  expectNothingNew();
  // A view that is enlarged keeps in its middle what is there.
  shell.App->Runs().WheelTurned(300, 100, 4);
  shell.App->Runs().Dragged(50, -20);
  const std::vector<Point> enlarged = SeenLines(shell);
  shell.Window.Resize(*shell.App, 801, 280);
  EXPECT_NEAR(SeenLines(shell)[0].X - enlarged[0].X, -100, 1e-9);
  expectNothingNew();
  // The window gets another size while the script is run.
  int calls = 0;
  shell.Window.OnEvents = [&] {
    if (++calls == 2) shell.Window.Resize(*shell.App, 640, 480);
  };
  shell.App->KeyDown(Key::F4);
  shell.Window.OnEvents = nullptr;
  expectNothingNew();
}

TEST(DrawingView, FitsThePageIntoTheArea) {
  FakeShell shell("ZoomIni = 2\nTrait = 20, 30, 120, 50, , 1mm\nNPage\nX = 0,0,1\n");
  shell.System.Ctrl = true;
  shell.App->KeyDown(Key::F7);
  shell.System.Ctrl = false;
  const auto expectFitted = [&](double left, double margin) {
    shell.App->KeyDown(Key::F4);  // changes nothing
    const Box box = *BoundsOf(*shell.App->Runs().Drawing(), shell.Window.Page);
    const PagePlace place = PlaceIn(shell);
    const Point corner = place.ToPixels({box.Left, box.Top}), end = place.ToPixels({box.Right, box.Bottom});
    const double right = shell.Window.Area.WidthPx - end.X, below = shell.Window.Area.HeightPx - end.Y;
    EXPECT_NEAR(corner.X - left, right, 1e-6);
    EXPECT_NEAR(corner.Y - left, below, 1e-6);
    EXPECT_NEAR(std::min(right, below), margin, 1e-6);
  };
  // A pixel of the fake window is 0.25 mm: 12 units of 1/96 inch are 12.7 of them.
  shell.Take();
  PressWithCtrl(shell, Digit('0'));
  EXPECT_EQ(shell.Take({"show", "hourglass"}), Log{});
  expectFitted(0, 12.7);
  shell.App->Command(MenuId::Mnu_PagePrecedente);
  shell.App->Command(MenuId::Mnu_Regles);
  shell.App->Command(MenuId::Mnu_Ajuster);
  expectFitted(18 * 12.7 / 12, 12.7);
  // 2 times as large by F7, and the rest by the wheel.
  EXPECT_EQ(StatusOf(shell, StatusField::Zoom), PercentText(2 * shell.Window.View.Scale) + "%");
  const double scale = shell.Window.View.Scale;
  shell.Editor.Content = "' nothing\n";
  shell.App->KeyDown(Key::F4);
  shell.App->Command(MenuId::Mnu_Ajuster);
  EXPECT_EQ(shell.Window.View.Scale, scale);
}

TEST(DrawingView, GoesBackToTrueSize) {
  FakeShell shell("ZoomIni = 3\nX = 0,0,1\n");
  EXPECT_EQ(StatusOf(shell, StatusField::Zoom), "100%");
  PressWithCtrl(shell, Key::F7);
  EXPECT_EQ(StatusOf(shell, StatusField::Zoom), "300%");
  shell.App->Runs().WheelTurned(100, 100, -2);
  EXPECT_EQ(StatusOf(shell, StatusField::Zoom), "208%");
  shell.Take();
  PressWithCtrl(shell, Digit('1'));
  EXPECT_EQ(shell.Take({"show"}), Log{"show 2"});
  EXPECT_EQ(shell.View().ScreenZoom, 1);
  EXPECT_EQ(shell.View().GraphicScale, 1);
  EXPECT_TRUE(shell.Window.View.IsDefault());
  EXPECT_EQ(StatusOf(shell, StatusField::Zoom), "100%");
  EXPECT_EQ(PercentText(0.0523), "5.2");
  EXPECT_EQ(PercentText(12.345), "1235");
}

TEST(DrawingView, TurnsPages) {
  const std::string threePages = "X = 0,0,1\nNPage\nX = 0,0,2\nX = 1,0,1\nNPage\nX = 0,0,3\n";
  FakeShell shell(threePages);
  const auto shown = [&] { return StatusOf(shell, StatusField::Page); };
  EXPECT_EQ(shown(), "page 3 of 3");
  EXPECT_TRUE(shell.Window.Greyed.contains(MenuId::Mnu_PageSuivante));
  PressWithCtrl(shell, Key::PageDown);
  EXPECT_EQ(shown(), "page 3 of 3");
  shell.Take();
  PressWithCtrl(shell, Key::PageUp);
  EXPECT_EQ(shown(), "page 2 of 3");
  EXPECT_EQ(shell.Window.Page, 1U);
  EXPECT_EQ(shell.App->Runs().ShownPage(), 1U);
  EXPECT_FALSE(shell.Window.Greyed.contains(MenuId::Mnu_PageSuivante));
  EXPECT_EQ(shell.Take(), Log{"show 8"});  // no run
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Window.Page, 1U);
  PressWithCtrl(shell, Key::PageUp);
  PressWithCtrl(shell, Key::PageUp);
  EXPECT_EQ(shown(), "page 1 of 3");
  EXPECT_TRUE(shell.Window.Greyed.contains(MenuId::Mnu_PagePrecedente));
  // There is no such page any more; then there is again.
  PressWithCtrl(shell, Key::PageDown);
  shell.Editor.Content = "X = 0,0,1\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(shell.Window.Page, 0U);
  shell.Editor.Content = threePages;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shown(), "page 2 of 3");
  // Who is at the end stays at the end; another script shows its own.
  PressWithCtrl(shell, Key::PageDown);
  shell.Editor.Content += "NPage\nX = 0,0,1\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shown(), "page 4 of 4");
  PressWithCtrl(shell, Key::PageUp);
  shell.App->OpenRecent(0);
  shell.App->OpenRecent(0);
  shell.Boxes.Answers = {"no"};
  EXPECT_EQ(shell.Window.Page, shell.App->Runs().Drawing()->Pages().size() - 1);
}

// Such a script shows one picture after the other until its user has seen enough.
TEST(DrawingView, KeepsNoPagesOfAFilm) {
  FakeShell shell("%I = 0\nA:\nNPage\nX = 0,0,1\n%I == %I + 1\nIF %I < 500 GOTO A");
  EXPECT_EQ(shell.App->Runs().Drawing()->Pages().size(), 1U);
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), 2U);
  EXPECT_EQ(StatusOf(shell, StatusField::Page), "");
}

TEST(DrawingView, SaysWhatCameOfARun) {
  FakeShell shell("X = 0,0,1\n");
  EXPECT_EQ(StatusOf(shell, StatusField::Message), "ran in 0 ms, 2 elements");
  shell.Editor.Content = "' one\nTrait = 0,0,1,1\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(StatusOf(shell, StatusField::Message), "ran in 0 ms, 1 element");
  shell.Write("part.dat", "\n\n\nTrait = 1/0\n");
  shell.Editor.Content = "X = 0,0,1\nFichier = part.dat\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(StatusOf(shell, StatusField::Message), "stopped at line 2");
  shell.Window.Messages.clear();
  shell.Editor.Content = "%I = 0\nA:\nX = 0,0,1\n%I == %I + 1\nIF %I < 2000 GOTO A";
  shell.System.Step = milliseconds(1);
  shell.App->KeyDown(Key::F4);
  ASSERT_EQ(shell.Window.Messages.size(), 2U);
  EXPECT_EQ(shell.Window.Messages[0], "Drawing… (Esc to stop)");
  EXPECT_TRUE(shell.Window.Messages[1].ends_with("ms, 4000 elements")) << shell.Window.Messages[1];
  EXPECT_EQ(shell.Window.Messages[1].find("ran in 0 ms"), std::string::npos);
  shell.System.Step = milliseconds(20'000);
  shell.App->KeyDown(Key::F4);
  EXPECT_TRUE(shell.Window.Messages.back().ends_with("0 s, 4000 elements")) << shell.Window.Messages.back();
  // The user's own time is not the script's.
  shell.System.Step = milliseconds(0);
  shell.Editor.Content = "Input = Length, %L\nX = 0,0,%L\n";
  shell.Boxes.OnAsk = [&] { shell.System.Time += std::chrono::minutes(1); };
  shell.Boxes.Answers = {"5"};
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(StatusOf(shell, StatusField::Message), "ran in 0 ms, 2 elements");
}

void ExpectBox(const PaperBox& box, Point corner, Point opposite) {
  EXPECT_NEAR(box.Corner.X, corner.X, 1e-9);
  EXPECT_NEAR(box.Corner.Y, corner.Y, 1e-9);
  EXPECT_NEAR(box.Opposite.X, opposite.X, 1e-9);
  EXPECT_NEAR(box.Opposite.Y, opposite.Y, 1e-9);
}

TEST(DrawingView, ShowsTheSheetWherePrintingPutsTheDrawing) {
  // The printer's area is 200 × 287 mm, the window's 160 × 120.
  FakeShell shell("X = 0,0,1\n");
  EXPECT_FALSE(shell.Window.Sheet);
  shell.App->Command(MenuId::Mnu_Feuille);
  ASSERT_TRUE(shell.Window.Sheet);
  ExpectBox(shell.Window.Sheet->Printable, {-20, -83.5}, {180, 203.5});
  ExpectBox(shell.Window.Sheet->Paper, {-26, -86.5}, {184, 210.5});
  EXPECT_TRUE(shell.Read("Vaxel.cfg").find("\r\nFeuille = 1\r\n") != std::string::npos);
  shell.Editor.Content = "FormatI = Paysage\nCentreE = 5, 0, N\nCentreI = 10, 20, N\nX = 0,0,1\n";
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("2", "1"); };
  shell.App->KeyDown(Key::F7);
  // The centre lies at 90, 60 on the screen and, counted downward, at 10, 180 on the paper.
  ExpectBox(shell.Window.Sheet->Printable, {90 - 20, 60 - 360}, {90 + 2 * 277, 60 + 40});
  ExpectBox(shell.Window.Sheet->Paper, {70 - 14, -300 - 8}, {56 + 594, -308 + 420});
  shell.App->Command(MenuId::Mnu_Feuille);
  EXPECT_FALSE(shell.Window.Sheet);
}

// A run that nobody has asked for must not be noticed.
TEST(DrawingView, FindsTheSheetInSilence) {
  FakeShell shell("X = 0,0,1\n");
  shell.App->Command(MenuId::Mnu_Feuille);
  const PaperOutline middle = *shell.Window.Sheet;
  shell.Take();
  shell.Editor.Content =
      "CentreI = 50, 50, N\nInput = Length, %L\nListeVar = %L\nTrait = 0, 0, %L, 500\nCouleur = Rot\n?\n";
  shell.Boxes.Answers = {"7", "ok"};
  shell.App->KeyDown(Key::F4);
  const Log told = shell.Take({"input", "box", "message", "critical"});
  EXPECT_EQ(std::ranges::count_if(told, [](const auto& line) { return line.starts_with("input"); }), 1);
  EXPECT_EQ(std::ranges::count_if(told, [](const auto& line) { return line.starts_with("box"); }), 1);
  EXPECT_EQ(std::ranges::count_if(told, [](const auto& line) { return line.starts_with("message"); }), 0);
  EXPECT_EQ(shell.Aid.Problems.size(), 1U);
  ExpectBox(shell.Window.Sheet->Printable, {30, 60 - 237}, {230, 110});
  // What fails or never ends on paper leaves the centre in the middle.
  shell.System.Step = milliseconds(1);
  for (const char* onPaper : {"GOTO A", "1/0", "Input = Length, %L"}) {
    shell.Editor.Content =
        "CentreI = 50, 50, N\nIF %IMP = 0 GOTO End\nA:\n" + std::string(onPaper) + "\nEnd:\nX = 0,0,1\n";
    shell.App->KeyDown(Key::F4);
    EXPECT_EQ(shell.Take({"critical", "message"}), Log{}) << onPaper;
    ExpectBox(shell.Window.Sheet->Printable, middle.Printable.Corner, middle.Printable.Opposite);
  }
}

TEST(DrawingView, RulersCountFromTheReferencePoint) {
  FakeShell shell(Dial);  // its centre lies at 90, 65 of 160 × 120 mm
  EXPECT_FALSE(shell.Window.RulersSet);
  shell.App->Command(MenuId::Mnu_Regles);
  const auto pixelOf = [](const std::vector<RulerMark>& marks, const std::string& text) {
    const auto mark = std::ranges::find(marks, text, &RulerMark::Text);
    return mark == marks.end() ? NAN : mark->Pixel;
  };
  EXPECT_NEAR(pixelOf(shell.Window.RulersSet->Across, "0"), 360, 1e-3);
  EXPECT_NEAR(pixelOf(shell.Window.RulersSet->Down, "0"), 220, 1e-3);
  shell.Boxes.OnReference = [](const ReferenceDialog& dialog) { dialog.OnButton("10,5"); };
  shell.App->KeyDown(Key::F8);
  shell.App->Runs().WheelTurned(320, 240, 3);
  // The pointer and the rulers agree wherever the view and the area go.
  shell.Window.Resize(*shell.App, 1000, 700);
  const double x = pixelOf(shell.Window.RulersSet->Across, "-20");
  const double y = pixelOf(shell.Window.RulersSet->Down, "10");
  shell.App->Runs().PointerMoved(x, y);
  EXPECT_EQ(shell.Window.Text2, "-20  10");
  // They are there at the next start.
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  EXPECT_TRUE(shell.Window.RulersSet);
}

struct RulerCase {
  RulerScale Scale;
  double Step;                 // of the marks, pixels
  std::string Texts;           // of the first long marks
  double FirstLong, LongStep;  // pixels
};

TEST(Rulers, MarkWhatTheZoomHasRoomFor) {
  const RulerCase cases[] = {
      {{-12.25, 0.25, 400, 4}, 4, "-10 0 10 20", 9, 40},
      {{-12.25, 0.26, 400, 4}, 10 / 0.26, "-100", NAN, 0},
      {{100, -0.25, 100, 4}, 4, "80 90 100", 0, 40},
      {{0, 0.002, 300, 4}, 5, "0 0.1 0.2", 0, 50},
      {{0, 3, 1000, 4}, 100 / 3.0, "0 1000 2000", 0, 1000 / 3.0},
  };
  for (const RulerCase& expected : cases) {
    const std::vector<RulerMark> marks = RulerMarks(expected.Scale);
    ASSERT_GE(marks.size(), 2U) << expected.Texts;
    EXPECT_NEAR(std::abs(marks[1].Pixel - marks[0].Pixel), expected.Step, 1e-9) << expected.Texts;
    std::string texts;
    for (const RulerMark& mark : marks) {
      EXPECT_EQ(mark.Text.empty(), mark.Length != RulerMarkLength::Long);
      EXPECT_GE(mark.Pixel, -1e-9);
      EXPECT_LE(mark.Pixel, expected.Scale.LengthPx + 1e-9);
      if (!mark.Text.empty()) texts += (texts.empty() ? "" : " ") + mark.Text;
    }
    if (std::isnan(expected.FirstLong)) continue;
    EXPECT_TRUE(texts.starts_with(expected.Texts)) << texts;
  }
  EXPECT_TRUE(RulerMarks({1e300, 0.25, 400, 4}).empty());
}

TEST(StatusLayout, FieldsNeverCoverEachOther) {
  for (const auto& [hasPages, hasReading] :
       std::vector<std::pair<bool, bool>>{{false, false}, {true, false}, {false, true}, {true, true}}) {
    for (int width = 0; width < 2000; width += 13) {
      const auto spans = StatusSpans(width, hasPages, hasReading);
      int end = 0;
      for (const FieldSpan& span : spans) {
        EXPECT_GE(span.Width, 0);
        if (span.Width == 0) continue;
        EXPECT_GE(span.Left, end);
        end = span.Left + span.Width;
      }
      EXPECT_LE(end, width);
    }
    // In the narrowest window everything has room to say the most important.
    EXPECT_GE(StatusSpans(404, hasPages, false).back().Width, hasPages ? 30 : 130);
    EXPECT_GE(StatusSpans(404, false, hasReading).back().Width, 45);
    EXPECT_EQ(StatusSpans(1180, hasPages, hasReading)[0].Width, 130);
  }
}

}  // namespace
}  // namespace vaxel::test
