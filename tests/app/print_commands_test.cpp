// Printers, sheets and calibration, as the commands of the menus deal with them. The printer prints on 200 ×
// 287 mm of a sheet of 210 × 297 mm.
#include "app/print_commands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/code_pages.h"
#include "app/preview_view.h"
#include "app/script_tokens.h"
#include "base/number_text.h"
#include "drawing/sheet_overflow.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

using enum MenuId;

// A stroke of 100 mm from (50, 60) of the area that can be printed on.
const char* const StrokeScript = "CentreI = 50, 60, N\nTrait = 0, 0, 100, 0\n";

const LineShape& PrintedLine(const FakeShell& shell, std::size_t number = 0) {
  return std::get<LineShape>(shell.Printer.Printed.At(number).Figure);
}

void Calibrate(FakeShell& shell, const std::string& x, const std::string& y) {
  shell.CommandWithAnswers(Mnu_Calibrage, {"ok", x, y, "no"});
}

TEST(PrintCommands, AsksBeforeItPrintsWhatLiesBeyondThePaper) {
  FakeShell shell("CentreI = 190, 10, N\nTrait = 0, 0, 30, 0\n");
  shell.CommandWithAnswers(Mnu_Imprimer, {"safe"});
  const Log refused = shell.Take({"question", "print", "show"});
  ASSERT_EQ(refused.size(), 2U);
  EXPECT_NE(refused[0].find("20 mm"), std::string::npos) << refused[0];
  EXPECT_EQ(refused[1], "show 1");
  shell.CommandWithAnswers(Mnu_Imprimer, {"yes"});
  EXPECT_EQ(shell.Take({"print"}), Log{"print dial on Plotter, 1 pages, 1 operations"});
}

TEST(PrintCommands, KeepsThePrinterForTheNextSession) {
  FakeShell shell(StrokeScript);
  shell.Printer.Others = {"Laser = 2|b"};
  shell.Boxes.PrinterChosen = PrinterEntry{{"Laser = 2|b", 256, 100, 150.5, true}};
  shell.App->Command(Mnu_Imprimante);
  EXPECT_EQ(shell.Take({"choose", "print"}), Log{"choose printer Plotter"});
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  const PrinterChoice& kept = shell.App->Runs().Printer();
  EXPECT_EQ(kept.Name, "Laser = 2|b");
  EXPECT_EQ(kept.Paper, 256);
  EXPECT_EQ(kept.PaperWidthMm, 100);
  EXPECT_EQ(kept.PaperHeightMm, 150.5);
  EXPECT_TRUE(kept.IsLandscape);
  // One that is gone leaves the system's, and is taken again when it is back.
  shell.Printer.Others.clear();
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.App->Runs().PrinterName(), "Plotter");
  EXPECT_NE(shell.Read("Vaxel.cfg").find("Imprimante = Laser"), std::string::npos);
}

TEST(PrintCommands, PrintsAtOnceBehindTheDialogWithPatch2) {
  FakeShell shell(StrokeScript);
  shell.Boxes.PrinterChosen = PrinterEntry{{"Plotter"}, 2, true, 1, 1};
  shell.App->Command(Mnu_Imprimante);
  EXPECT_EQ(shell.Take({"print"}), Log{});
  shell.CommandWithAnswers(Mnu_Patchs, {"2"});
  shell.App->Command(Mnu_Imprimante);
  EXPECT_EQ(shell.Take({"print"}), Log{"print dial on Plotter, 2 pages, 1 operations"});
  shell.Boxes.PrinterChosen.reset();
  shell.App->Command(Mnu_Imprimante);
  EXPECT_EQ(shell.Take({"print"}), Log{});
}

TEST(PrintCommands, TakesCopiesAndRangeForTheNextDocument) {
  using Order = std::vector<std::size_t>;
  EXPECT_EQ(PagesToPrint(3, {{}, 2, true, 2, 9}), (Order{1, 2, 1, 2}));
  EXPECT_EQ(PagesToPrint(3, {{}, 2, false, 0, 0}), (Order{0, 0, 1, 1, 2, 2}));
  EXPECT_EQ(PagesToPrint(1, {{}, 1, false, 2, 3}), Order{});
  FakeShell shell(std::string(StrokeScript) + "NPage\nTrait = 0, 0, 10, 0\n");
  shell.Boxes.PrinterChosen = PrinterEntry{{"Plotter"}, 3, false, 2, 2};
  shell.App->Command(Mnu_Imprimante);
  shell.App->Command(Mnu_Imprimer);
  ASSERT_TRUE(shell.Printer.Order);
  EXPECT_EQ(shell.Printer.Order->Pages, (Order{1, 1, 1}));
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Printer.Order->Pages, (Order{0, 1}));
  shell.Boxes.PrinterChosen->First = shell.Boxes.PrinterChosen->Last = 5;
  shell.App->Command(Mnu_Imprimante);
  shell.Take();
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"message", "print"}),
            Log{"message None of the pages that were asked for exists: the document has 2."});
}

TEST(PrintCommands, PrintsAtTheZoomThatIsEntered) {
  EXPECT_EQ(PrinterZoomOf("0"), 1);
  EXPECT_EQ(PrinterZoomOf("1-1"), 1);
  EXPECT_EQ(PrinterZoomOf("3/2"), 1.5);
  for (const char* wrong : {"", "x", "-1", "1/0", "1e9"}) EXPECT_FALSE(PrinterZoomOf(wrong)) << wrong;
  FakeShell shell("CentreI = 10, 10, N\nTrait = 0, 0, 30, 0\n");
  shell.CommandWithAnswers(Mnu_ImprimerZoom, {"zwei", "254/127"});
  EXPECT_EQ(shell.Take({"message", "print"}),
            (Log{"message Not a usable number: zwei", "print dial on Plotter, 1 pages, 1 operations"}));
  EXPECT_NEAR(PrintedLine(shell).To.X - PrintedLine(shell).From.X, 60, 1e-9);
  // The next one is proposed the same zoom; what is printed without one is printed at true size.
  shell.CommandWithAnswers(Mnu_ImprimerZoom, {"cancel"});
  EXPECT_EQ(shell.Take({"input", "print"}), Log{"input Zoom factor of the printout [2]"});
  shell.App->Command(Mnu_Imprimer);
  EXPECT_NEAR(PrintedLine(shell).To.X - PrintedLine(shell).From.X, 30, 1e-9);
}

TEST(PrintCommands, TurnsThePageAsTheScriptOrElseTheDialogHasIt) {
  FakeShell shell(StrokeScript);
  shell.Boxes.PrinterChosen = PrinterEntry{{.Name = "Plotter", .IsLandscape = true}};
  shell.App->Command(Mnu_Imprimante);
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Printer.Printed.Pages().front().Width, 287);
  // From the lower-left corner of the page as it lies.
  EXPECT_EQ(PrintedLine(shell).From, (Point{50, 140}));
  shell.Editor.Content = std::string("FormatI = Portrait\n") + StrokeScript;
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Printer.Printed.Pages().front().Width, 200);
  EXPECT_EQ(PrintedLine(shell).From, (Point{50, 227}));
}

TEST(PrintCommands, RefusesAPaperThatMakesNoSense) {
  FakeShell shell(StrokeScript);
  for (const double width : {0.0, -3.0, 1e9, std::nan("")}) {
    shell.Printer.WidthMm = width;
    for (const MenuId command : {Mnu_Imprimer, Mnu_ImprimerCode, Mnu_Apercu, Mnu_Calibrage}) {
      shell.App->Command(command);
      const Log told = shell.Take({"critical", "print", "preview"});
      ASSERT_EQ(told.size(), 1U) << width;
      EXPECT_NE(told[0].find("impossible paper"), std::string::npos) << told[0];
    }
  }
  // A label and a roll are papers.
  shell.Printer.WidthMm = 10;
  shell.CommandWithAnswers(Mnu_Imprimer, {"yes"});
  EXPECT_EQ(shell.Take({"print"}).size(), 1U);
  shell.Printer.WidthMm = shell.Printer.HeightMm = 10'000;
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Take({"print", "critical"}).size(), 1U);
}

// The rulers of the sheet for this paper, and how long they come out when the printer is wrong by a factor.
struct Measured {
  explicit Measured(double x, double y) {
    const CalibrationSheet sheet = MakeCalibrationSheet(200, 287, {});
    X = NumberText(sheet.NominalX) + "*" + NumberText(x);
    Y = NumberText(sheet.NominalY) + "*" + NumberText(y);
  }
  std::string X, Y;
};

TEST(PrintCommands, CalibratesThePrinterWithItsPaper) {
  FakeShell shell(StrokeScript);
  const Measured small(0.99, 0.98);
  Calibrate(shell, small.X, small.Y);
  EXPECT_EQ(shell.Take({"print"}).size(), 1U);
  shell.App->Command(Mnu_Imprimer);
  // Ever larger from the lower-left corner, where the stroke is 50 and 60 mm away.
  EXPECT_NEAR(PrintedLine(shell).From.X, 50 / 0.99, 1e-6);
  EXPECT_NEAR(PrintedLine(shell).From.Y, 287 - 60 / 0.98, 1e-6);
  EXPECT_NEAR(PrintedLine(shell).To.X, 150 / 0.99, 1e-6);
  EXPECT_EQ(shell.Window.Status.back(),
            "printed on Plotter, calibrated: x 1.0101, y 1.0204, measured on 2026-11-22");
  // The printer is as wrong when a page lies, which it prints turned.
  shell.Editor.Content = std::string("FormatI = Paysage\n") + StrokeScript;
  shell.App->Command(Mnu_Imprimer);
  EXPECT_NEAR(PrintedLine(shell).From.X, 50 / 0.98, 1e-6);
  EXPECT_NEAR(PrintedLine(shell).From.Y, 200 - 60 / 0.99, 1e-6);
  // It holds for the next session, and neither for another printer nor for another paper.
  shell.Editor.Content = StrokeScript;
  shell.Printer.Others = {"Laser"};
  shell.Boxes.PrinterChosen = PrinterEntry{{"Laser"}};
  shell.App->Command(Mnu_Imprimante);
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(PrintedLine(shell).From.X, 50);
  shell.Boxes.PrinterChosen = PrinterEntry{{"Plotter"}};
  shell.App->Command(Mnu_Imprimante);
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  shell.Editor.Content = StrokeScript;
  shell.App->Command(Mnu_Imprimer);
  EXPECT_NEAR(PrintedLine(shell).From.X, 50 / 0.99, 1e-6);
  shell.Printer.SheetMm = {148, 210};
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(PrintedLine(shell).From.X, 50);
}

// The sheet is printed as the printer is calibrated already, and what is measured then corrects that.
TEST(PrintCommands, CalibratesACalibratedPrinterFurther) {
  FakeShell shell(StrokeScript);
  const Measured first(0.99, 1.02), second(1.001, 1);
  Calibrate(shell, first.X, first.Y);
  shell.CommandWithAnswers(Mnu_Calibrage, {"ok", second.X, second.Y, "yes"});
  EXPECT_EQ(shell.Take({"print"}).size(), 3U);
  shell.App->Command(Mnu_Imprimer);
  EXPECT_NEAR(PrintedLine(shell).From.X, 50 / 0.99 / 1.001, 1e-6);
  EXPECT_NEAR(PrintedLine(shell).From.Y, 287 - 60 / 1.02, 1e-6);
  EXPECT_EQ(shell.Read("Vaxel.cfg").find("Calibrage2"), std::string::npos);
}

TEST(PrintCommands, AsksAgainForALengthThatIsNotPlausible) {
  FakeShell shell(StrokeScript);
  const Measured good(0.99, 1), worse(0.89, 1.2);
  shell.CommandWithAnswers(Mnu_Calibrage, {"ok", "0", "x", worse.X, good.X, worse.Y, "", "cancel"});
  EXPECT_EQ(shell.Take({"message"}).size(), 5U);
  EXPECT_EQ(shell.Read("Vaxel.cfg").find("Calibrage1"), std::string::npos);
  // Each of two factors is plausible, but not what they come to.
  const Measured low(0.92, 0.92);
  Calibrate(shell, low.X, low.Y);
  shell.Take();
  shell.CommandWithAnswers(Mnu_Calibrage, {"ok", low.X, "cancel"});
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
}

TEST(PrintCommands, RefusesToCalibrateOnAPaperWithoutRoom) {
  FakeShell shell(StrokeScript);
  shell.Printer.WidthMm = shell.Printer.HeightMm = 15;
  shell.App->Command(Mnu_Calibrage);
  EXPECT_EQ(shell.Take({"critical", "print", "box"}).size(), 1U);
}

// What someone has written into the settings.
TEST(PrintCommands, PassesOverCalibrationsThatMakeNoSense) {
  FakeShell shell;
  shell.Write("Vaxel.cfg",
              "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = English\r\nFichierDat = dial.dat\r\n"
              "Calibrage1 = 0|0|2026-11-22|210x297|Plotter\r\nCalibrage2 = rubbish\r\n"
              "Calibrage3 = 1.01|1|2026-11-21|210x297|Plotter\r\n");
  shell.Write("dial.dat", StrokeScript);
  ASSERT_TRUE(shell.Start());
  shell.App->Command(Mnu_Imprimer);
  EXPECT_NEAR(PrintedLine(shell).From.X, 50.5, 1e-6);
}

TEST(PrintCommands, InsertsAFontOfThePrinter) {
  FakeShell shell(StrokeScript);
  std::vector<std::size_t> found;
  shell.Boxes.OnFonts = [&](const FontsDialog& dialog) {
    for (const char* typed : {"ti", "ARIAL", "old", "zz", ""}) found.push_back(dialog.OnFind(typed));
    dialog.OnChosen(1);
  };
  shell.App->Command(Mnu_Polices);
  EXPECT_EQ(found, (std::vector<std::size_t>{2, 0, 1, 0, 0}));
  EXPECT_NE(shell.Editor.Content.find("Police = Old Arial"), std::string::npos) << shell.Editor.Content;
  shell.Printer.FontNames.clear();
  shell.Take();
  shell.App->Command(Mnu_Polices);
  EXPECT_EQ(shell.Take({"fonts", "message"}), Log{"message The printer Plotter reports no fonts."});
}

TEST(PrintPreview, ShowsWhatIsPrintedFromIt) {
  FakeShell shell(StrokeScript);
  const Measured small(0.99, 1);
  Calibrate(shell, small.X, small.Y);
  shell.Take();
  PreviewPages single, several, wrong, noNumber;
  bool isClosed = false;
  shell.Boxes.OnPreview = [&](const PreviewDialog& dialog) {
    single = dialog.Pages;
    several = dialog.OnEntry({true, true, true, "0", "7/2"});
    wrong = dialog.OnEntry({false, false, false, "1.5", "5"});
    noNumber = dialog.OnEntry({false, false, false, "1", "1/0"});
    EXPECT_EQ(dialog.PageText(1, 3), "page 2 of 3");
    isClosed = dialog.OnPrint();
  };
  shell.App->KeyDown(Key::Escape);  // held down while the preview was not there yet
  shell.App->KeyUp(Key::Escape);
  shell.System.Ctrl = true;
  EXPECT_TRUE(shell.App->KeyDown(static_cast<Key>('P')));
  EXPECT_TRUE(isClosed);
  EXPECT_NE(single.Calibration.find("x 1.0101, y 1.0000"), std::string::npos) << single.Calibration;
  EXPECT_NE(single.Printer.find("210 × 297"), std::string::npos) << single.Printer;
  ASSERT_EQ(single.Sheets.size(), 1U);
  EXPECT_EQ(single.Sheets[0].Paper.Corner, (Point{-6, -3}));
  EXPECT_EQ(single.Sheets[0].Printable.Opposite, (Point{200, 287}));
  EXPECT_GT(several.Drawing->Size(), 20 * single.Drawing->Size());
  EXPECT_TRUE(several.Drawing->Pages().front().IsMirrored);
  // An entry that is wrong is told, and what is shown stays and is what is printed.
  EXPECT_NE(wrong.Problem.find("1.5"), std::string::npos);
  EXPECT_EQ(wrong.Drawing, several.Drawing);
  EXPECT_NE(noNumber.Problem.find("1/0"), std::string::npos);
  EXPECT_EQ(shell.Printer.Printed.Size(), several.Drawing->Size());
  // The command prints without what the preview adds.
  shell.App->Command(Mnu_Imprimer);
  EXPECT_EQ(shell.Printer.Printed.Size(), 1U);
}

TEST(PrintPreview, StaysWithItsPrinterWhereAnotherFails) {
  FakeShell shell(StrokeScript);
  shell.Boxes.PrinterChosen = PrinterEntry{{"Gone"}};
  shell.Boxes.OnPreview = [&](const PreviewDialog& dialog) {
    shell.Printer.TargetFailure = "switched off";
    const auto pages = dialog.OnPrinter(dialog.Entry);
    shell.Printer.TargetFailure.clear();
    ASSERT_TRUE(pages);
    EXPECT_NE(pages->Printer.find("Plotter"), std::string::npos);
    EXPECT_TRUE(dialog.OnPrint());
  };
  shell.App->Command(Mnu_Apercu);
  EXPECT_EQ(shell.Take({"critical", "print"}), (Log{"critical Printing on Gone has failed: switched off",
                                                    "print dial on Plotter, 1 pages, 1 operations"}));
}

TEST(PrintPreview, OpensForAWholeDrawingOnly) {
  FakeShell shell("X = 0,0,1\nTrait = 1/0\n");
  shell.App->Command(Mnu_Apercu);
  EXPECT_EQ(shell.Take({"critical", "preview"}).size(), 1U);
  shell.Editor.Content.clear();
  shell.App->Command(Mnu_Apercu);
  shell.App->Command(Mnu_ImprimerCode);
  EXPECT_EQ(shell.Take({"message", "preview", "print"}),
            (Log{"message There is nothing to print.", "message There is nothing to print."}));
}

TEST(PreviewView, KeepsWholeSheetsAndWhatLiesAtThePointer) {
  auto drawing = std::make_shared<DisplayList>();
  drawing->BeginPage(180, 270);
  drawing->BeginPage(270, 180);
  PreviewPages pages;
  pages.Drawing = drawing;
  pages.Sheets = {{{{-10, -20}, {200, 277}}, {{0, 0}, {180, 270}}}, {{{-20, -10}, {277, 200}}, {}}};
  PreviewView view;
  view.Show(pages);
  const GraphicArea area{418, 318, MillimetresPerInch / 96};
  view.Resize(area);
  for (const std::size_t page : {0, 1, 2}) {
    view.TurnTo(page);
    const PaperBox paper = view.PaperPx();
    // The sheet fills what rulers and margins leave, and lies in its middle.
    EXPECT_NEAR((paper.Corner.X + paper.Opposite.X) / 2, (18 + 418) / 2.0, 1e-9) << page;
    EXPECT_NEAR((paper.Corner.Y + paper.Opposite.Y) / 2, (18 + 318) / 2.0, 1e-9) << page;
    EXPECT_GE(paper.Corner.X, 18) << page;
    EXPECT_NEAR(paper.Opposite.Y, 310, page == 0 ? 1e-9 : 30) << page;
  }
  EXPECT_EQ(view.Page(), 1U);
  view.TurnTo(0);
  const Point at{300, 100};
  const auto pointed = [&] { return (at - view.Place().Corner) * (1 / view.Place().PixelsPerMm); };
  const Point before = pointed();
  view.Zoom(3, at);
  EXPECT_NEAR(pointed().X, before.X, 1e-9);
  EXPECT_NEAR(pointed().Y, before.Y, 1e-9);
  const double scale = view.Place().PixelsPerMm;
  view.TurnTo(1);
  EXPECT_EQ(view.Place().PixelsPerMm, scale);
}

// The rulers count as CentreI does.
TEST(PreviewView, MovesAndTellsWhetherThePaperHasMargins) {
  auto drawing = std::make_shared<DisplayList>();
  drawing->BeginPage(200, 280);
  drawing->BeginPage(200, 280);
  PreviewPages pages;
  pages.Drawing = drawing;
  const PaperBox paper{{-5, -5}, {205, 285}};
  pages.Sheets = {{paper, {{0, 0}, {200, 280}}}, {paper, paper}};
  PreviewView view;
  view.Show(pages);
  view.Resize({418, 318, MillimetresPerInch / 96});
  EXPECT_TRUE(view.HasMargins());
  const Point before = view.Place().Corner;
  view.Move({7, -3});
  EXPECT_EQ(view.Place().Corner, before + (Point{7, -3}));
  view.TurnTo(1);
  EXPECT_FALSE(view.HasMargins());
}

TEST(PreviewView, CountsFromTheLowerLeftCornerOfThePrintableArea) {
  auto drawing = std::make_shared<DisplayList>();
  drawing->BeginPage(180, 270);
  PreviewPages pages;
  pages.Drawing = drawing;
  pages.Sheets = {{{{-10, -20}, {200, 277}}, {{0, 0}, {180, 270}}}};
  PreviewView view;
  view.Show(pages);
  view.Resize({400, 600, MillimetresPerInch / 96});
  const Rulers rulers = view.Rulers();
  const auto place = [](const std::vector<RulerMark>& marks) {
    for (const RulerMark& mark : marks) {
      if (mark.Text == "0") return mark.Pixel;
    }
    return std::nan("");
  };
  EXPECT_NEAR(place(rulers.Across), view.PrintablePx().Corner.X, 1e-6);
  EXPECT_NEAR(place(rulers.Down), view.PrintablePx().Opposite.Y, 1e-6);
}

std::string TextsOf(const DisplayList& list, std::size_t page) {
  std::string texts;
  const vaxel::Page& shown = list.Pages()[page];
  for (std::size_t i = shown.First; i < shown.First + shown.Count; ++i) {
    if (const auto* text = std::get_if<TextShape>(&list.At(i).Figure)) texts += list.TextOf(*text) + "\n";
  }
  return texts;
}

CodeLayout LayoutOn(double width, double height, std::string fileName) {
  CodeLayout layout;
  layout.WidthMm = width;
  layout.HeightMm = height;
  layout.Face.Name = "Courier New";
  layout.HasColour = false;
  layout.Points = 10;
  layout.FileName = std::move(fileName);
  return layout;
}

TEST(CodePages, NumbersAndWrapsLines) {
  CodeLayout layout = LayoutOn(100, 60, "C:\\dials\\dial.dat");
  layout.Date = "21/11/2026";
  layout.Foot = [](std::size_t page, std::size_t pages) {
    return std::to_string(page) + " of " + std::to_string(pages);
  };
  // A character is 2.117 mm wide: 40 of them lie beside numbers of two figures and between margins of 3 mm.
  const std::string longLine(50, 'x');
  const DisplayList list = CodePages("Trait = 0,0\n\n\tX\n" + longLine + "\n5\n6\n7\n8\n9\n", layout);
  ASSERT_EQ(list.Pages().size(), 2U);
  const std::string first = TextsOf(list, 0), second = TextsOf(list, 1);
  EXPECT_TRUE(
      first.starts_with("C:\\dials\\dial.dat\n21/11/2026\n1 of 2\n1\nTrait = 0,0\n2\n3\n        X\n4\n"))
      << first;
  EXPECT_NE(first.find("\n" + std::string(40, 'x') + "\n\u00BB\n" + std::string(10, 'x') + "\n"),
            std::string::npos)
      << first;
  EXPECT_TRUE(second.ends_with("9\n9\n")) << second;
  EXPECT_TRUE(FindSheetOverflows(list).empty());
}

TEST(CodePages, FitsTheSmallestPaperAndColoursWords) {
  CodeLayout layout = LayoutOn(8, 8, std::string(300, 'n'));
  layout.HasColour = true;
  layout.Foot = [](std::size_t, std::size_t) { return std::string(); };
  EXPECT_EQ(CodePages("ab", layout).Pages().size(), 2U);  // a character a row, a row a page
  EXPECT_TRUE(CodePages("", layout).Pages().empty());
  layout.WidthMm = layout.HeightMm = 200;
  const DisplayList list = CodePages("Trait = 0,0 ' rem", layout);
  std::set<Colour> inks;
  for (std::size_t i = 0; i < list.Size(); ++i) inks.insert(list.At(i).Ink);
  EXPECT_TRUE(inks.contains(InkOf(TokenKind::Keyword, false)));
  EXPECT_TRUE(inks.contains(InkOf(TokenKind::Comment, false)));
}

TEST(PrintCommands, PrintsTheScriptsText) {
  FakeShell shell("Trait = 0,0,10,0 ' stroke\n");
  shell.App->Command(Mnu_ImprimerCode);
  EXPECT_EQ(shell.Take({"print", "show"}).size(), 1U);
  const std::string texts = TextsOf(shell.Printer.Printed, 0);
  // Of a long name the end stands there.
  EXPECT_TRUE(texts.find("dial.dat\n21/11/2026\nPage 1 of 1\n1\nTrait") != std::string::npos) << texts;
}

}  // namespace
}  // namespace vaxel::test
