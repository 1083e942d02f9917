// The drawing as files and on the clipboard. The pictures of the fake platform are display lists.
#include "app/export_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

enum Format : int { Svg, Png, Emf, Pdf };
enum Page : int { Drawing, Paper };

// 29 mm to the right, a millimetre wide.
const char* const Stroke = "EpaisT = 1mm\nTrait = 0, 0, 29, 0\n";
const std::string StrokeInBounds =
    "page 1  32.000 x 3.000\nline 2  #000000 1.000  1.500,1.500 30.500,1.500\n";

void ExportTo(FakeShell& shell, int format, int page, const std::string& name) {
  shell.Boxes.OnExport = [=](const ExportDialog& dialog) { dialog.OnButton(format, page, dialog.DpiText); };
  shell.CommandWithFiles(MenuId::Mnu_Exporter, {shell.Path(name)});
}

void EnlargeAndMove(FakeShell& shell) {
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("2", "254/250"); };
  shell.App->KeyDown(Key::F7);
  shell.App->Runs().PointerMoved(440, 320);
  shell.App->KeyDown(Key::F6);
  shell.Take();
}

TEST(ExportCommands, WritesTrueSizeWhateverTheWindowShows) {
  FakeShell shell(std::string(Stroke) + "?\n");
  EnlargeAndMove(shell);
  const std::string text = shell.Editor.Content;
  ExportTo(shell, Png, Drawing, "a.png");
  EXPECT_EQ(shell.Read("a.png"), "png 300\n" + StrokeInBounds);
  ExportTo(shell, Emf, Drawing, "a.emf");
  EXPECT_EQ(shell.Read("a.emf"), "emf\n" + StrokeInBounds);
  ExportTo(shell, Svg, Drawing, "a.svg");
  const std::string svg = shell.Read("a.svg");
  EXPECT_NE(svg.find("width=\"32mm\" height=\"3mm\""), std::string::npos) << svg;
  // The window, its view and the text are as they were.
  EXPECT_EQ(shell.Take({"show", "critical", "message", "question"}), Log{});
  EXPECT_EQ(shell.View().ScreenZoom, 2);
  EXPECT_NEAR(shell.View().GraphicScale, 2.032, 1e-12);
  EXPECT_EQ(shell.Editor.Content, text);
}

// Both orientations have their own margins, and CentreI counts from the lower-left corner of what can be
// printed on.
TEST(ExportCommands, WritesSheetsAsThePrinterHasThem) {
  FakeShell shell(
      "EpaisT = 1mm\nCentreI = 100, 100, N\nTrait = 0, 0, 29, 0\nNPage\nFormatI = Paysage\n"
      "CentreI = 10, 10, N\nTrait = 0, 0, 5, 0\n");
  EnlargeAndMove(shell);
  ExportTo(shell, Png, Paper, "a.png");
  EXPECT_EQ(shell.Read("a.png"),
            "png 300\npage 1  210.000 x 297.000\nline 3  #000000 1.000  106.000,190.000 135.000,190.000\n");
  EXPECT_EQ(shell.Read("a-2.png"),
            "png 300\npage 2  297.000 x 210.000\nline 7  #000000 1.000  17.000,194.000 22.000,194.000\n");
  EXPECT_EQ(shell.Take({"critical", "message"}), Log{});
  shell.Editor.Content = "Trait = 0, 0, 900, 0\n";
  ExportTo(shell, Png, Paper, "b.png");
  EXPECT_EQ(shell.Take({"message"}), Log{});
  ASSERT_EQ(shell.Aid.Problems.size(), 1U);
  EXPECT_NE(shell.Aid.Problems[0].find("beyond the sheet"), std::string::npos) << shell.Aid.Problems[0];
  shell.Printer.TargetFailure = "switched off";
  ExportTo(shell, Png, Paper, "c.png");
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical The file " + shell.Path("c.png") + " cannot be written: switched off"});
}

TEST(ExportCommands, WritesEveryPageAndAsksAboutFilesBefore) {
  FakeShell shell;
  shell.Boxes.Answers = {"1"};
  shell.StartWith("Input = Length, %L\nTrait = 0, 0, %L, 0\nNPage\nTrait = 0, 0, 8, 0\n");
  shell.Write("a.png", "old");
  shell.Write("a-2.png", "old");
  shell.Boxes.Answers = {"7", "no"};
  ExportTo(shell, Png, Drawing, "a.png");
  EXPECT_EQ(shell.Take({"input", "question"}),
            (Log{"input Length []",
                 "question These files exist already:\n\n" + shell.Path("a-2.png") + "\n\nReplace them?"}));
  EXPECT_EQ(shell.Read("a.png"), "old");
  shell.Boxes.Answers = {"7", "yes"};
  ExportTo(shell, Png, Drawing, "a.png");
  EXPECT_TRUE(shell.Read("a.png").starts_with("png 300\npage 1")) << shell.Read("a.png");
  EXPECT_TRUE(shell.Read("a-2.png").starts_with("png 300\npage 2"));
  // One file holds them all.
  shell.Boxes.Answers = {"7"};
  ExportTo(shell, Pdf, Drawing, "a.pdf");
  EXPECT_EQ(shell.Take({"print"}), Log{"print dial on Paperless into a file, 2 pages"});
  EXPECT_FALSE(shell.Exists("a-2.pdf"));
}

TEST(ExportCommands, WritesNothingOfARunThatDoesNotReachItsEnd) {
  FakeShell shell("X = 0,0,1\nTrait = 1/0\n");
  ExportTo(shell, Svg, Drawing, "a.svg");
  EXPECT_EQ(shell.Take({"critical"}).size(), 1U);
  shell.Editor.Content = "A:\nX = 0,0,1\nGoto A";
  shell.Window.OnEvents = [&] { shell.App->KeyDown(Key::Escape); };
  ExportTo(shell, Svg, Drawing, "a.svg");
  shell.Window.OnEvents = nullptr;
  shell.App->KeyUp(Key::Escape);
  for (const char* empty : {"", "' nothing\n", "Couleur = Rouge\n"}) {
    shell.Editor.Content = empty;
    shell.Take();
    ExportTo(shell, Svg, Drawing, "a.svg");
    EXPECT_EQ(shell.Take({"message", "critical"}),
              Log{"message The drawing is empty, there is nothing to export."})
        << empty;
  }
  // All or nothing: the second page cannot be written.
  shell.Editor.Content = "X = 0,0,1\nNPage\nX = 0,0,1\n";
  std::filesystem::create_directory(PathOf(shell.Path("a-2.svg")));
  ExportTo(shell, Svg, Drawing, "a.svg");
  EXPECT_EQ(shell.Take({"critical"}).size(), 1U);
  shell.System.EmfFailure = "no disk";
  ExportTo(shell, Emf, Drawing, "a.emf");
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical The file " + shell.Path("a.emf") + " cannot be written: no disk"});
  EXPECT_FALSE(shell.Exists("a.svg"));
  EXPECT_FALSE(shell.Exists("a.emf"));
  EXPECT_FALSE(shell.App->Runs().IsRunning());
}

TEST(ExportCommands, NeverReplacesWhatTheScriptIsMadeOf) {
  FakeShell shell(Stroke);
  // Under the name of the script itself, and then under one that the dialog did not ask about.
  ExportTo(shell, Svg, Drawing, "dial.dat");
  EXPECT_EQ(shell.Read("dial.dat"), Stroke);
  EXPECT_TRUE(shell.Read("dial.dat.svg").starts_with("<svg"));
  shell.Write("dial.dat.svg", "old");
  shell.Boxes.Answers = {"no"};
  ExportTo(shell, Svg, Drawing, "dial.dat");
  EXPECT_EQ(shell.Read("dial.dat.svg"), "old");
  shell.Write("part.svg", Stroke);
  shell.Editor.Content = "Fichier = part.svg\n";
  shell.Take();
  ExportTo(shell, Svg, Drawing, "part.svg");
  EXPECT_EQ(shell.Take({"critical"}), Log{"critical The drawing cannot replace " + shell.Path("part.svg") +
                                          ", which the script reads."});
  EXPECT_EQ(shell.Read("part.svg"), Stroke);
  shell.App->OpenDropped(shell.Path("part.svg"));
  ASSERT_EQ(shell.Script().CurrentFile, shell.Path("part.svg"));
  shell.Take();
  ExportTo(shell, Svg, Drawing, "part.svg");
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical The drawing cannot replace " + shell.Path("part.svg") + ": it is the script."});
}

TEST(ExportCommands, TakeADensityThatMakesSense) {
  EXPECT_EQ(DpiOf(" 2*150 "), 300);
  for (const char* text : {"", "x", "300 dpi", "0", "1E9", "1/0"}) EXPECT_FALSE(DpiOf(text)) << text;
}

TEST(ExportCommands, KeepsWhatWasChosenLast) {
  FakeShell shell(Stroke);
  std::string proposed;
  shell.Boxes.OnExport = [&](const ExportDialog& dialog) {
    proposed = std::to_string(dialog.Format) + " " + std::to_string(dialog.Page) + " " + dialog.DpiText;
    for (const char* wrong : {"35", "2401", "", "fine", "100,5"})
      EXPECT_FALSE(dialog.OnButton(Png, Paper, wrong)) << wrong;
    EXPECT_TRUE(dialog.OnButton(Png, Paper, " 2*600 "));
  };
  shell.CommandWithFiles(MenuId::Mnu_Exporter, {shell.Path("a.png")});
  EXPECT_EQ(proposed, "0 0 300");
  const Log told = shell.Take({"message"});
  ASSERT_EQ(told.size(), 5U);
  EXPECT_EQ(told[3], "message Not a usable number: fine");
  EXPECT_EQ(shell.Boxes.FileDialogs.back().Filter, "PNG files (*.png)|*.png|");
  EXPECT_EQ(shell.Boxes.FileDialogs.back().DefaultExtension, "png");
  EXPECT_TRUE(shell.Read("a.png").starts_with("png 1200\npage 1  210.000")) << shell.Read("a.png");
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  shell.Boxes.OnExport = [&](const ExportDialog& dialog) {
    proposed = std::to_string(dialog.Format) + " " + std::to_string(dialog.Page) + " " + dialog.DpiText;
  };
  shell.Take();
  shell.App->Command(MenuId::Mnu_Exporter);  // and cancelled
  EXPECT_EQ(proposed, "1 1 1200");
  EXPECT_EQ(shell.Take({"export", "save", "hour"}), Log{"export dialog"});
  // What is typed into the dialog for files says more than what was chosen before.
  ExportTo(shell, Svg, Drawing, "b.EMF");
  EXPECT_TRUE(shell.Read("b.EMF").starts_with("emf"));
}

TEST(ExportCommands, ReplacesAPdfWhenANewOneIsComplete) {
  FakeShell shell(Stroke);
  shell.System.Step = std::chrono::seconds(5);
  const std::string name = shell.Path("a.pdf");
  shell.Write("a.pdf", "old");
  for (const char* half : {"", "%PDF-1.7 and no end", "%!PS-Adobe-3.0 ... %%EOF"}) {
    shell.Printer.PdfBytes = half;
    shell.Take();
    ExportTo(shell, Pdf, Drawing, "a.pdf");
    EXPECT_EQ(shell.Take({"critical"}), Log{"critical The file " + name +
                                            " cannot be written: the PDF printer has not written a whole "
                                            "PDF file"})
        << half;
    EXPECT_EQ(shell.Read("a.pdf"), "old") << half;
  }
  // Who does not want to wait for it presses Escape.
  shell.System.Step = std::chrono::milliseconds(0);
  int events = 0;
  shell.Window.OnEvents = [&] {
    if (++events > 10) shell.App->KeyDown(Key::Escape);
  };
  ExportTo(shell, Pdf, Drawing, "a.pdf");
  shell.Window.OnEvents = nullptr;
  shell.App->KeyUp(Key::Escape);
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical The file " + name + " cannot be written: the export was stopped"});
  shell.Printer.PrintFailure = "no paper";
  ExportTo(shell, Pdf, Drawing, "a.pdf");
  EXPECT_EQ(shell.Take({"critical"}), Log{"critical The file " + name + " cannot be written: no paper"});
  shell.Printer.PrintFailure.clear();
  shell.Printer.PdfName.clear();
  ExportTo(shell, Pdf, Drawing, "a.pdf");
  const Log told = shell.Take({"critical", "print"});
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].starts_with("critical Windows has no PDF printer.")) << told[0];
  EXPECT_EQ(shell.Read("a.pdf"), "old");
  shell.Printer.PdfName = "Paperless";
  shell.Printer.PdfBytes = "%PDF-1.7 ... %%EOF\n";
  ExportTo(shell, Pdf, Drawing, "a.pdf");
  EXPECT_EQ(shell.Read("a.pdf"), shell.Printer.PdfBytes);
}

TEST(ExportCommands, CopiesThePageThatIsShown) {
  FakeShell shell("X = 0,0,1\nNPage\n" + std::string(Stroke));
  EnlargeAndMove(shell);
  shell.System.Ctrl = true;
  EXPECT_TRUE(shell.App->KeyDown(static_cast<Key>('C'), true));
  const std::string page = "page 2  32.000 x 3.000\nline 4  #000000 1.000  1.500,1.500 30.500,1.500\n";
  EXPECT_EQ(shell.Take({"copy", "show", "export"}), Log{"copy emf\n" + page + "png 300\n" + page});
  EXPECT_TRUE(shell.App->KeyDown(static_cast<Key>('C')));  // copies text
  EXPECT_EQ(shell.Take({"copy"}), Log{"copy"});
  shell.System.HasClipboard = false;
  shell.App->Command(MenuId::Mnu_CopierDessin);
  EXPECT_EQ(shell.Take({"critical"}), Log{"critical The clipboard cannot be used."});
}

}  // namespace
}  // namespace vaxel::test
