// Runs and views of the drawing, as their order is seen by the window, the dialogs and the printer.
#include "app/run_cycle.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "app/application.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

using std::chrono::milliseconds;

TEST(RunCycle, RunsOntoTheScreenInOrder) {
  FakeShell shell(Dial);
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take(), RunOfDial);
  shell.Editor.Type("Trait = 0, 0, 5, 5");
  EXPECT_TRUE(shell.Script().TextModified);
  shell.App->Command(MenuId::Mnu_Visualiser);
  EXPECT_EQ(shell.Take({"colour", "show"}), (Log{"colour line 4", "show 3"}));
  shell.App->SetItemEnabled(MenuId::Mnu_Visualiser, false);
  shell.App->KeyDown(Key::F4);
  shell.App->KeyDown(Key::F6);
  EXPECT_EQ(shell.Take(), Log{});
  shell.App->SetItemEnabled(MenuId::Mnu_Visualiser, true);
  // An empty text leaves the drawing as it was.
  shell.Editor.Content.clear();
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"show"}), Log{});
}

// A window that fails meanwhile goes back to the drawing that it is told of, and keeps it.
TEST(RunCycle, ShowsTheDrawingThatItKeeps) {
  FakeShell shell(Dial);
  int shown = 0;
  shell.Window.OnShow = [&](const DisplayList& drawing) {
    ++shown;
    EXPECT_EQ(&drawing, shell.App->Runs().Drawing());
  };
  shell.App->KeyDown(Key::F4);
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shown, 2);
}

TEST(RunCycle, ColoursLinesThatTheCursorLeaves) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 1,1,1");
  shell.App->CursorMoved();
  EXPECT_EQ(shell.Take({"colour"}), Log{});
  shell.Editor.Line = 2;
  shell.App->CursorMoved();
  EXPECT_EQ(shell.Take(), Log{"colour line 4"});
  shell.Editor.Line = 4;
  shell.App->CursorMoved();
  EXPECT_EQ(shell.Take(), Log{});
  shell.Editor.Type("\nX = 2,2,2\nX = 3,3,3");  // pasted
  EXPECT_EQ(shell.Take(), (Log{"colour line 4", "colour line 5"}));
  EXPECT_EQ(shell.Window.Text1, "L 6/6");
  // Deleted lines are no more; one of very many lines costs as much as all.
  shell.Editor.Content = "X = 1,1,1\n";
  shell.Editor.Line = 1;
  shell.App->EditorChanged();
  EXPECT_EQ(shell.Take(), Log{"colour line 2"});
  for (int i = 0; i < 1000; ++i) shell.Editor.Content += "X = 1,1,1\n";
  shell.Editor.Line = 1001;
  shell.App->EditorChanged();
  EXPECT_EQ(shell.Take(), Log{"colour all"});
}

TEST(RunCycle, TellsWhereARunFails) {
  FakeShell shell("X = 0,0,1\n\nTrait = 1/0\n");
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"critical", "show"}),
            (Log{"show 2",
                 "critical Error in the line: Trait = 1/0 of the file: " + shell.Path("dial.dat") +
                     "\n\nDivision by zero\n\nLine 3 of dial.dat",
                 "show 2"}));
  EXPECT_EQ(shell.Editor.Line, 3U);
  EXPECT_FALSE(shell.App->Runs().IsRunning());
  shell.Write("part.dat", "\nTrait = 1/0\n");
  shell.Editor.Content = "Fichier = part.dat\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical Error in the line: Trait = 1/0 of the file: " + shell.Path("part.dat") +
                "\n\nDivision by zero\nincluded at " + shell.Path("dial.dat") +
                ":1: Fichier = part.dat\n\nLine 2 of part.dat"});
}

// No box: the list below the editor comes up, and not again for a view of the same script.
TEST(RunCycle, ListsNotices) {
  FakeShell shell(Dial);
  shell.Editor.Content = "Couleur = Rot\n%I = 0\nI:\n%I == %I + 1\nX = 0,0,%I,Blau\nIF %I < 3 GOTO I\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Aid.Problems, (Log{"1: unknown colour: Rot", "5: unknown colour: Blau"}));
  EXPECT_EQ(shell.Aid.Page, AidPage::Problems);
  shell.App->Aid().ShowPage(AidPage::None);
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.Aid.Problems.size(), 2U);
  EXPECT_EQ(shell.Aid.Page, AidPage::None);
  shell.Editor.Content = "Couleur = Rot\nCouleur = Blau\nTrait = 0,0,500,0\n";
  shell.App->Command(MenuId::Mnu_Visualiser);
  EXPECT_EQ(shell.Aid.Page, AidPage::Problems);
  EXPECT_EQ(shell.Take({"message"}), Log{});
}

TEST(RunCycle, EscapeEndsALoop) {
  FakeShell shell("X = 0,0,1\nA:\nX = 0,0,1\nGoto A");
  shell.System.Step = milliseconds(1);
  int calls = 0;
  shell.Window.OnEvents = [&] {
    if (++calls < 40) return;
    shell.App->KeyDown(Key::Escape);
    shell.App->KeyDown(Key::F4);  // no second run while there is one
  };
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"critical", "enable"}), Log{"enable"});
  shell.Window.OnEvents = nullptr;
  shell.App->KeyUp(Key::Escape);
  EXPECT_FALSE(shell.App->Runs().IsAbortRequested());
}

TEST(RunCycle, ShowsWhatIsDrawnSoFarInALongRun) {
  FakeShell shell("%I = 0\nA:\nX = 0,0,1\n%I == %I + 1\nIF %I < 1000 GOTO A");
  shell.System.Step = milliseconds(1);
  shell.App->KeyDown(Key::F4);
  // Several pictures before the last, each fuller than the one before.
  const Log shown = shell.Take({"show"});
  ASSERT_GE(shown.size(), 3U);
  EXPECT_EQ(shown.back(), "show 2000");
  EXPECT_LT(std::stoi(shown[0].substr(5)), std::stoi(shown[1].substr(5)));
}

TEST(RunCycle, PrintsWithTheScriptsOwnPlaceAndShowsTheScreenAgain) {
  FakeShell shell("NPage\nCentreI = 100, 100, N\nX = 0,0,1\n");
  shell.App->Runs().PointerMoved(440, 320);
  shell.App->KeyDown(Key::F6);
  EXPECT_EQ(shell.View().OffX, 30);
  EXPECT_EQ(shell.View().OffY, -20);
  shell.Take();
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take(),
            (Log{"hourglass", "disable", "events", "events", "print dial on Plotter, 2 pages, 2 operations",
                 "events", "show 2", "arrow", "enable", "events"}));
  EXPECT_EQ(shell.View().OffX, 30);
  EXPECT_EQ(shell.View().OffY, -20);
  // 640 × 480 pixels of 0.25 mm: the middle and the offsets.
  EXPECT_EQ(shell.View().GraphicCentre, (Point{110, 40}));
  shell.Printer.PrintFailure = "out of paper";
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"message", "critical", "show"}),
            (Log{"critical Printing on Plotter has failed: out of paper", "show 2"}));
}

TEST(RunCycle, PrintsNothingOfARunThatDoesNotReachItsEnd) {
  FakeShell shell("X = 0,0,1\nTrait = 1/0\n");
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"print"}), Log{});
  shell.Editor.Content = "A:\nX = 0,0,1\nGoto A";
  shell.Window.OnEvents = [&] { shell.App->KeyDown(Key::Escape); };
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"print"}), Log{});
  shell.Window.OnEvents = nullptr;
  shell.App->KeyUp(Key::Escape);
  shell.Printer.TargetFailure = "switched off";
  shell.Editor.Content = Dial;
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"print", "critical", "show"}),
            (Log{"critical Printing on Plotter has failed: switched off", "show 2"}));
}

// What is wrong on paper is wrong on the screen, which is drawn all the same.
TEST(RunCycle, TellsOnceOfAnErrorThatPaperAndScreenHave) {
  FakeShell shell("X = 0,0,1\nTrait = 1/0\n");
  for (int round = 0; round < 2; ++round) {
    shell.App->Command(MenuId::Mnu_Imprimer);
    const Log told = shell.Take({"critical", "show"});
    ASSERT_EQ(told.size(), 3U) << round;
    EXPECT_TRUE(told[0].starts_with("critical Error in the line: Trait = 1/0")) << told[0];
    EXPECT_EQ(told[2], "show 2");
  }
  EXPECT_EQ(shell.Editor.Line, 2U);
  // The same fault elsewhere is another.
  shell.Editor.Content = "IF %IMP = 1 GOTO Paper\nTrait = 1/0\nPaper:\nTrait = 2/0\n";
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"critical"}).size(), 2U);
}

TEST(RunCycle, AsksOnceForThePaperAndTheScreen) {
  FakeShell shell;
  shell.Boxes.Answers = {"5"};
  shell.StartWith("Input = Length, %L\nTrait = 0, 0, %L, 0\n");
  shell.CommandWithAnswers(MenuId::Mnu_Imprimer, {"7"});
  EXPECT_EQ(shell.Take({"input", "print", "show"}),
            (Log{"input Length []", "print dial on Plotter, 1 pages, 1 operations", "show 1"}));
  shell.Boxes.Answers = {"cancel"};
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"critical"}), Log{});
}

TEST(RunCycle, ZoomsByTheDialogAndByZoomIni) {
  FakeShell shell("ZoomIni = 2.5\nX = 0,0,1\n");
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { EXPECT_FALSE(dialog.OnButton("3", " 254/250 ")); };
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.View().ScreenZoom, 3);
  EXPECT_EQ(shell.App->Options().Values().Zmm, 1.016);
  EXPECT_NEAR(shell.View().GraphicScale, 3.048, 1e-12);
  EXPECT_EQ(shell.Take({"show"}), Log{"show 2"});
  // What is no number above 0 leaves the values in force.
  for (const char* entry : {"0", "", "abc", "1/0", "-2", "1+", "1E308*10", "1E300", "1E-9"}) {
    shell.Boxes.OnZoom = [&](const ZoomDialog& dialog) {
      EXPECT_EQ(dialog.OnButton("5", entry), ZoomField::Zmm);
      EXPECT_EQ(dialog.OnButton(entry, "1"), ZoomField::Factor);
    };
    shell.App->KeyDown(Key::F7);
    EXPECT_EQ(shell.Take({"message"}), Log(2, std::string("message Not a usable number: ") + entry));
    EXPECT_EQ(shell.View().ScreenZoom, 3) << entry;
    EXPECT_EQ(shell.App->Options().Values().Zmm, 1.016) << entry;
  }
  shell.Take();
  shell.System.Ctrl = true;
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.Take({"zoom dialog", "show"}), Log{"show 2"});
  EXPECT_EQ(shell.View().ScreenZoom, 2.5);
  for (const char* script : {"ZoomIni = 0\n", "ZoomIni = -2\n", "ZoomIni = 1E300\n"}) {
    shell.Editor.Content = script;
    shell.App->KeyDown(Key::F4);
    shell.App->KeyDown(Key::F7);
    EXPECT_EQ(shell.View().ScreenZoom, 2.5) << script;
  }
}

TEST(RunCycle, CountsThePointerFromTheReferencePoint) {
  FakeShell shell(Dial);  // its centre lies at 90, 65 of 160 × 120 mm
  shell.App->Runs().PointerMoved(410, 170);
  EXPECT_EQ(shell.Window.Text2, "12.5  12.5");
  shell.App->Runs().PointerMoved(0, 480);
  EXPECT_EQ(shell.Window.Text2, "-90  -65");
  const auto enter = [&](const std::string& text) {
    bool isClosed = false;
    shell.Boxes.OnReference = [&](const ReferenceDialog& dialog) { isClosed = dialog.OnButton(text); };
    shell.App->KeyDown(Key::F8);
    return isClosed;
  };
  EXPECT_TRUE(enter("50,100z"));
  EXPECT_EQ(shell.View().RefX, 50);
  EXPECT_EQ(shell.View().RefY, 100);
  EXPECT_EQ(shell.View().RefInX, -40);
  EXPECT_EQ(shell.View().RefInY, 35);
  shell.Take();
  EXPECT_FALSE(enter("50;100"));
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
  EXPECT_EQ(shell.View().RefX, 50);
  EXPECT_TRUE(enter(" 5 mm, -2.5x"));
  EXPECT_EQ(shell.View().RefX, 95);
  EXPECT_EQ(shell.View().RefY, 62.5F);
  EXPECT_TRUE(enter(""));
  EXPECT_EQ(shell.View().RefX, 90);
  enter("1,1");
  shell.System.Ctrl = true;
  shell.App->KeyDown(Key::F8);
  EXPECT_EQ(shell.View().RefX, 90);
  EXPECT_EQ(shell.View().RefInX, 0);
}

TEST(RunCycle, WritesPointerCoordinatesWithAPoint) {
  const std::pair<double, const char*> cases[] = {{12.5, "12.5"}, {12.04, "12"},     {0.05, "0.1"},
                                                  {-0.04, "0"},   {-12.55, "-12.6"}, {1234.96, "1235"},
                                                  {0, "0"}};
  for (const auto& [value, text] : cases)
    EXPECT_EQ(PointerText(value, 1), std::string(text) + "  1") << value;
}

TEST(RunCycle, PutsTheDrawingUnderThePointer) {
  FakeShell shell("X = 0,0,1\n");
  EXPECT_EQ(shell.View().GraphicCentre, (Point{80, 60}));
  shell.App->Runs().PointerMoved(400, 80);
  // However often it is sent there, also when the pointer lies elsewhere in an enlarged view.
  for (int i = 0; i < 3; ++i) shell.App->KeyDown(Key::F6);
  EXPECT_EQ(shell.View().GraphicCentre, (Point{100, 100}));
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("2", dialog.ZmmText); };
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.View().GraphicCentre, (Point{50, 50}));
  shell.App->Runs().PointerMoved(400, 80);
  shell.App->KeyDown(Key::F12);
  EXPECT_EQ(shell.View().GraphicCentre, (Point{50, 50}));
  shell.App->Runs().WheelTurned(0, 0, 4);
  EXPECT_GT(shell.Window.View.Scale, 2);
  shell.System.Ctrl = true;
  shell.App->KeyDown(Key::F6);
  EXPECT_EQ(shell.View().GraphicCentre, (Point{40, 30}));
  EXPECT_TRUE(shell.Window.View.IsDefault());
  // The pointer was never over the drawing.
  FakeShell fresh("X = 0,0,1\n");
  fresh.App->KeyDown(Key::F6);
  EXPECT_EQ(fresh.View().GraphicCentre, (Point{0, 0}));
}

TEST(RunCycle, EnlargesAroundThePointer) {
  FakeShell shell("X = 0,0,1\n");
  shell.App->Runs().PointerMoved(400, 80);
  const std::string before = shell.Window.Text2;
  shell.App->Runs().WheelTurned(400, 80, 3);
  EXPECT_EQ(shell.Window.Text2, before);
  shell.App->Runs().Dragged(50, -20);
  shell.App->Runs().PointerMoved(450, 60);
  EXPECT_EQ(shell.Window.Text2, before);
  shell.App->Runs().WheelTurned(100, 100, 1000);
  EXPECT_EQ(shell.Window.View.Scale, GraphicView::MaxScale);
  // Of another drawing there would be nothing to see; of the same one it stays where the user looks.
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Window.View.Scale, GraphicView::MaxScale);
  shell.App->OpenRecent(0);
  EXPECT_TRUE(shell.Window.View.IsDefault());
}

}  // namespace
}  // namespace vaxel::test
