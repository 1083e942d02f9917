// Start, runs, views, settings and the end, as their order is seen by the window, the dialogs and the disk.
#include "app/application.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"
#include "tests/support/language_line.h"

namespace vaxel::test {
namespace {

using std::chrono::milliseconds;

const char* const Dial = "CentreE = 10, 5, N\nTrait = 0, 0, 10, 0\nTrait = 0, 0, 0, 10\n";
const Log RunOfDial = {"hourglass", "disable", "events", "events", "show 2", "arrow", "enable", "events"};

Log operator+(Log first, const Log& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

void ChooseEnglish(const LanguageDialog& dialog) {
  dialog.OnMessages(2);
  dialog.OnHelp(2);
  dialog.OnButton();
}

TEST(Application, AsksAtTheFirstStartForLanguagesAndAScript) {
  FakeShell shell;
  shell.Write("first.dat", Dial);
  shell.Write("Vaxel_en.DaN", "' template\r\n");
  shell.Boxes.Files = {shell.Path("first.dat")};
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    EXPECT_EQ(dialog.Languages, (std::vector<std::string>{"Français", "English", "Castellano"}));
    EXPECT_EQ(dialog.Button, "&Valider - OK");
    ChooseEnglish(dialog);
  };
  EXPECT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take(), (Log{"language dialog", "open dialog", "disable", "events", "enable", "text 59",
                               "colour all", "title " + shell.Window.Title} +
                           RunOfDial));
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel  V0.3b  (")) << shell.Window.Title;
  EXPECT_TRUE(shell.Window.Title.ends_with(")   File: " + shell.Path("first.dat"))) << shell.Window.Title;
  EXPECT_EQ(shell.Read("Vaxel.cfg"),
            "'Fichier de configuration du Programme Vaxel V0.3b\r\n'Ne pas modifier / Do not change\r\n"
            "Langue = English\r\nLangueAide = English\r\nFichierDat = Vaxel.dat\r\nDoubleClic = Non\r\n"
            "Zmm = 1\r\nPatchs = 3\r\n");
  EXPECT_EQ(shell.Read("Vaxel.DaN"), "' template\r\n");
  EXPECT_EQ(shell.App->Options().HelpFile(), shell.Path("Vaxel_en.hlp"));
  EXPECT_FALSE(shell.Script().TextModified);
  // The next time it begins where the last one ended.
  EXPECT_TRUE(shell.App->Quit());
  shell.Take();
  shell.Restart();
  EXPECT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take(), (Log{"text 59", "colour all", "title " + shell.Window.Title} + RunOfDial));
  EXPECT_EQ(shell.Window.Text1, "L 1/4");
}

TEST(Application, ANamedScriptComesFirst) {
  FakeShell shell(Dial);
  shell.Write("other.dat", "X = 0,0,1\n");
  shell.Restart();
  EXPECT_TRUE(shell.Start("other.dat"));
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("other.dat"));
  // One that is not there is told; the editor stays empty.
  shell.Restart();
  shell.Take();
  EXPECT_TRUE(shell.Start("missing.dat"));
  const Log happened = shell.Take({"critical"});
  ASSERT_EQ(happened.size(), 1U);
  EXPECT_TRUE(happened[0].starts_with("critical The file " + shell.Path("missing.dat"))) << happened[0];
}

TEST(Application, NamesMenusInTheLanguageOfHelp) {
  FakeShell shell;
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangueAide = Castellano\r\nLangue = English\r\n");
  ASSERT_TRUE(shell.Start());
  ASSERT_EQ(shell.Window.Captions.size(), 32U);
  EXPECT_EQ(shell.Window.Captions[1].second, "&Abrir\tCtrl+O");
  EXPECT_EQ(shell.Window.Captions[13].second, "&Visualizar (F4)");
  EXPECT_EQ(shell.Window.ToolTips[1], "Coordenadas X e Y del ratón en el gráfico");
  EXPECT_NE(shell.Window.Title.find(")   File: "), std::string::npos);
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) { dialog.OnHelp(1); };  // and Escape
  shell.App->Command(MenuId::Mnu_Langue);
  EXPECT_EQ(shell.Window.Captions.back().second, "A propos de &Vaxel");
  EXPECT_EQ(shell.Window.Captions[32 + 14].second, "&Zoom (F7)");
}

TEST(Application, NamesKeysBehindTheCaptions) {
  FakeShell shell(Dial);
  std::map<MenuId, std::string> captions(shell.Window.Captions.begin(), shell.Window.Captions.end());
  const std::pair<MenuId, const char*> cases[] = {
      {MenuId::Mnu_Syntaxe, "&Syntax (F2)"},       {MenuId::Mnu_RefCurseur, "&RefCur (F8)"},
      {MenuId::Mnu_EnregistrerS, "&Save\tCtrl+S"}, {MenuId::Mnu_Imprimer, "&Print\tCtrl+P"},
      {MenuId::Mnu_AideMot, "Help on &Word\tF1"},  {MenuId::Mnu_Enregistrer, "Save &as"}};
  for (const auto& [item, caption] : cases) EXPECT_EQ(captions[item], caption);
}

TEST(Application, TakesKeysWithWhatIsHeldDown) {
  FakeShell shell(Dial);
  const auto press = [&](Key key, bool withCtrl, bool withShift) {
    shell.System.Ctrl = withCtrl;
    return shell.App->KeyDown(key, withShift);
  };
  // Alone a letter is text, with Shift too it is another command's; Shift and F1 are the editor's.
  EXPECT_FALSE(press(Key{'N'}, false, false));
  EXPECT_FALSE(press(Key{'N'}, true, true));
  EXPECT_FALSE(press(Key::F1, false, true));
  EXPECT_FALSE(press(Key::F3, false, false));
  EXPECT_EQ(shell.Take(), Log{});
  EXPECT_TRUE(press(Key::F1, true, false));
  EXPECT_EQ(shell.Take({"help"}).size(), 1U);
  EXPECT_TRUE(press(Key::F4, true, true));
  EXPECT_EQ(shell.Take(), RunOfDial);
  EXPECT_TRUE(press(Key{'N'}, true, false));
  EXPECT_EQ(shell.Editor.Content, "");
}

TEST(Application, RunsOntoTheScreenInOrder) {
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
TEST(Application, ShowsTheDrawingThatItKeeps) {
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

TEST(Application, ColoursLinesThatTheCursorLeaves) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 1,1,1");
  shell.App->CursorMoved();
  EXPECT_EQ(shell.Take(), Log{});
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

TEST(Application, TellsWhereARunFails) {
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

// The box comes when there is a drawing to look at, and not again for a view of the same script.
TEST(Application, TellsNoticesBehindTheDrawing) {
  FakeShell shell(Dial);
  const std::string place = shell.Path("dial.dat");
  shell.Editor.Content = "Couleur = Rot\n%I = 0\nI:\n%I == %I + 1\nX = 0,0,%I,Blau\nIF %I < 3 GOTO I\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Take({"show", "message"}),
            (Log{"show 6", "message " + place + ":1: notice: unknown colour: Rot\n" + place +
                               ":5: notice: unknown colour: Blau"}));
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.Take({"message"}), Log{});
  shell.Editor.Content = "Couleur = Rot\nCouleur = Blau\nTrait = 0,0,500,0\n";
  shell.App->Command(MenuId::Mnu_Visualiser);
  EXPECT_EQ(shell.Take({"message"}), Log{"message " + place + ":2: notice: unknown colour: Blau"});
  // The paper is a sheet, and so is a file; the window's area is none.
  shell.App->Command(MenuId::Mnu_Imprimer);
  const Log printed = shell.Take({"message"});
  ASSERT_EQ(printed.size(), 1U);
  EXPECT_TRUE(printed[0].starts_with("message " + place + ":3: notice: the drawing reaches beyond the sheet"))
      << printed[0];
}

TEST(Application, EscapeEndsALoop) {
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

TEST(Application, ShowsWhatIsDrawnSoFarInALongRun) {
  FakeShell shell("%I = 0\nA:\nX = 0,0,1\n%I == %I + 1\nIF %I < 1000 GOTO A");
  shell.System.Step = milliseconds(1);
  shell.App->KeyDown(Key::F4);
  // Several pictures before the last, each fuller than the one before.
  const Log shown = shell.Take({"show"});
  ASSERT_GE(shown.size(), 3U);
  EXPECT_EQ(shown.back(), "show 2000");
  EXPECT_LT(std::stoi(shown[0].substr(5)), std::stoi(shown[1].substr(5)));
}

TEST(Application, PrintsWithTheScriptsOwnPlaceAndShowsTheScreenAgain) {
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

TEST(Application, PrintsNothingOfARunThatDoesNotReachItsEnd) {
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

TEST(Application, AsksOnceForThePaperAndTheScreen) {
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

TEST(Application, ZoomsByTheDialogAndByZoomIni) {
  FakeShell shell("ZoomIni = 2.5\nX = 0,0,1\n");
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("3", " 254/250 "); };
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.View().ScreenZoom, 3);
  EXPECT_EQ(shell.App->Options().Values().Zmm, 1.016);
  EXPECT_NEAR(shell.View().GraphicScale, 3.048, 1e-12);
  EXPECT_EQ(shell.Take({"show"}), Log{"show 2"});
  // What is no number above 0 leaves the values in force.
  for (const char* entry : {"0", "", "abc", "1/0", "-2", "1+", "1E308*10", "1E300", "1E-9"}) {
    shell.Boxes.OnZoom = [&](const ZoomDialog& dialog) { dialog.OnButton(entry, entry); };
    shell.App->KeyDown(Key::F7);
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

TEST(Application, CountsThePointerFromTheReferencePoint) {
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

TEST(Application, WritesPointerCoordinatesWithAPoint) {
  const std::pair<double, const char*> cases[] = {{12.5, "12.5"}, {12.04, "12"},     {0.05, "0.1"},
                                                  {-0.04, "0"},   {-12.55, "-12.6"}, {1234.96, "1235"},
                                                  {0, "0"}};
  for (const auto& [value, text] : cases)
    EXPECT_EQ(PointerText(value, 1), std::string(text) + "  1") << value;
}

TEST(Application, PutsTheDrawingUnderThePointer) {
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

TEST(Application, EnlargesAroundThePointer) {
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

TEST(Application, QuitsWithTheSaveQuestion) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 0,0,1");
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"cancel"});
  EXPECT_EQ(shell.Take({"question", "close", "folder"}), Log{"question Save the changes?"});
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"yes"});
  EXPECT_EQ(shell.Take({"question", "close", "folder"}),
            (Log{"question Save the changes?", "folder " + shell.Folder(), "close"}));
  EXPECT_TRUE(shell.Read("dial.dat").ends_with("\r\nX = 0,0,1"));
}

TEST(Application, DoesNotQuitWhenTheTextCouldNotBeSaved) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 0,0,1");
  std::filesystem::remove(PathOf(shell.Path("dial.dat")));
  std::filesystem::create_directory(PathOf(shell.Path("dial.dat")));
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"yes"});
  const Log happened = shell.Take({"critical", "close"});
  ASSERT_EQ(happened.size(), 1U);
  EXPECT_TRUE(happened[0].starts_with("critical The file ")) << happened[0];
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"no"});
  EXPECT_EQ(shell.Take({"close"}), Log{"close"});
}

TEST(Application, NeverRemembersAnImportedFile) {
  FakeShell shell(Dial);
  shell.Write("dial.MTR", "");
  shell.App->OpenDropped(shell.Path("dial.MTR"));
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.MTR"));
  EXPECT_TRUE(shell.App->Quit());
  EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nFichierDat = dial.dat\r\n"), std::string::npos);
}

TEST(Application, SetsPatchesByTheirNumbers) {
  FakeShell shell;
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = English\r\nPatchs = 1\r\n");
  ASSERT_TRUE(shell.Start());
  EXPECT_TRUE(shell.App->Options().Values().PatchFlags[PatchTurnedFonts]);
  shell.Take();
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"16", "0.5", "-1"});
  const Log asked = shell.Take({"input"});
  ASSERT_EQ(asked.size(), 3U);
  EXPECT_TRUE(asked[0].starts_with("input Active patches:  1\n\nEnter a number")) << asked[0];
  EXPECT_FALSE(shell.App->Options().Values().PatchFlags[PatchTurnedFonts]);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"15"});
  EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nPatchs = 16384\r\n"), std::string::npos);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"cancel"});
  EXPECT_TRUE(shell.App->Options().Values().PatchFlags[14]);
}

TEST(Application, GoesOnWithoutAFolderToWriteIn) {
  FakeShell shell;
  // Folders stand where the files should be.
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.cfg")));
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.DaN")));
  shell.Write("Vaxel_en.DaN", "' template");
  shell.Boxes.OnLanguages = ChooseEnglish;
  ASSERT_TRUE(shell.Start());
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("1", "1.1"); };
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.App->Options().Values().Zmm, 1.1);
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
}

TEST(Application, TellsOfWrongLanguageFilesInTheChosenLanguage) {
  FakeShell shell;
  shell.Write("Vaxel_de.lng",
              LineOf(TextId::LanguageName, "Deutsch") + LineOf(TextId::FileWord, "Datei") + "x\n");
  shell.Write("Vaxel_it.lng", std::string(3 << 20, '\''));
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel_nl.lng")));
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = Deutsch\r\n");
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take({"message"}),
            (Log{"message Wrong lines of the language file Vaxel_de.lng, which the English text replaces:\n"
                 "line 3: not \"number = text\": x\n",
                 "message The language file Vaxel_it.lng is not used: the file is larger than 1 MB",
                 "message The file Vaxel_nl.lng cannot be read: it is a folder"}));
  EXPECT_EQ(shell.App->Options().HelpFile(), shell.Path("Vaxel_de.hlp"));
}

TEST(Application, RemembersItsWindow) {
  FakeShell shell(Dial);
  EXPECT_FALSE(shell.Window.PlaceSet);
  EXPECT_EQ(shell.Window.EditorWidth, 460);
  shell.App->Command(MenuId::Mnu_AgrandirCode);
  EXPECT_EQ(shell.Window.EditorWidth, 690);
  shell.App->Command(MenuId::Mnu_Code);
  EXPECT_EQ(shell.Window.EditorWidth, 0);
  shell.CommandWithAnswers(MenuId::Mnu_TaillCar, {"3", "12"});
  EXPECT_EQ(shell.Editor.FontSize, 0);
  shell.App->Command(MenuId::Mnu_TaillCar);
  EXPECT_TRUE(shell.App->Quit());
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  ASSERT_TRUE(shell.Window.PlaceSet);
  EXPECT_EQ(shell.Window.PlaceSet->Frame.Right, 810);
  EXPECT_EQ(shell.Window.EditorWidth, 0);
  EXPECT_EQ(shell.Editor.FontSize, 12);
  shell.App->Command(MenuId::Mnu_Code);
  EXPECT_EQ(shell.Window.EditorWidth, 690);
  EXPECT_EQ(shell.Window.Recent, Log{shell.Path("dial.dat")});
  shell.Take();
  shell.App->Command(MenuId::Mnu_CentreCurseur);
  EXPECT_EQ(shell.Take(), Log{"pointer at 200,250"});
}

TEST(Application, RemembersItWhenTheSessionEnds) {
  FakeShell shell;
  shell.Write("dial.dat", Dial);
  shell.Boxes.Files = {shell.Path("dial.dat")};
  shell.Boxes.OnLanguages = [&](const LanguageDialog& dialog) {
    // Nothing is chosen: the next start asks again.
    const std::string settings = shell.Read("Vaxel.cfg");
    shell.App->SessionHasEnded();
    EXPECT_EQ(shell.Read("Vaxel.cfg"), settings);
    ChooseEnglish(dialog);
  };
  ASSERT_TRUE(shell.Start());
  shell.App->SessionHasEnded();
  const std::string settings = shell.Read("Vaxel.cfg");
  EXPECT_NE(settings.find("FichierDat =" + shell.Path("dial.dat") + "\r\n"), std::string::npos) << settings;
}

TEST(Application, GreysWhatHasNoCommandYet) {
  FakeShell shell(Dial);
  EXPECT_EQ(shell.Window.Greyed,
            (std::set<MenuId>{MenuId::Mnu_OuvrirMeter, MenuId::Mnu_Imprimante, MenuId::Mnu_ImprimerZoom,
                              MenuId::Mnu_ImprimerCode, MenuId::Mnu_Syntaxe, MenuId::Mnu_Polices}));
  shell.App->Command(MenuId::Mnu_ImprimerZoom);
  EXPECT_FALSE(shell.App->KeyDown(Key::F2));
  EXPECT_EQ(shell.Take(), Log{});
  shell.Boxes.Chosen = 255;
  shell.App->Command(MenuId::Mnu_Couleur);
  shell.Boxes.Chosen = MakeColour(1, 2, 3);
  shell.App->Command(MenuId::Mnu_Couleur);
  EXPECT_TRUE(shell.Editor.Content.ends_with("RougeRVB 1 2 3")) << shell.Editor.Content;
  shell.App->KeyDown(Key::F1);
  EXPECT_EQ(shell.Take({"help"}), Log{"help " + shell.Folder() + "Vaxel_en.hlp Arc"});
}

}  // namespace
}  // namespace vaxel::test
