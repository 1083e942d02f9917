// The sheets of vaxel-render, measured on the PDF.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "base/units.h"
#include "tests/render/cairo_outputs.h"
#include "tests/render/cairo_picture.h"
#include "tests/support/vaxel_render.h"

namespace vaxel::test {
namespace {

constexpr double Dpi = 508, PixelsPerMm = Dpi / MillimetresPerInch;
// A ruler shows no less.
constexpr double Tolerance = 0.1;

// Two squares without a stroke, 10 and 20 mm a side, 100 by 60 mm apart, on a small sheet.
const char* const Squares =
    "CentreI = 5, 5, N\nEpaisT = 0.01mm\nCadreP = 0, 0, 10, 10\nCadreP = 100, 60, 120, 80\n";
const char* const Sheet = " --page 150x100 ";

class VaxelRenderSheets : public VaxelRender {
 protected:
  // The pages of the PDF that these options make of a script.
  std::vector<Picture> Pages(const std::string& options, const std::string& script = Squares) {
    Write("dial.dat", script);
    const Outcome outcome = Run("-o dial.pdf " + options + " dial.dat", "SOURCE_DATE_EPOCH=1700000000");
    EXPECT_EQ(outcome.Status, 0) << outcome.Printed;
    printed_ = outcome.Printed;
    const std::string folder = folder_.string();
    const std::string info = OutputOf("pdfinfo '" + folder + "/dial.pdf' | grep ^Pages:");
    const int count = std::stoi(info.substr(6));
    Execute("cd '" + folder + "' && pdftoppm -png -r " + std::to_string(Dpi) + " dial.pdf page");
    std::vector<Picture> pages;
    for (int page = 1; page <= count; ++page) {
      const std::string name = "/page-" + std::to_string(page) + ".png";
      pages.emplace_back(folder + name, PixelsPerMm);
    }
    return pages;
  }

  std::string printed_;
};

void ExpectInk(const Picture& page, const Picture::Box& within, const Picture::Box& expected) {
  const Picture::Box ink = page.InkBox(within);
  EXPECT_NEAR(ink.Left, expected.Left, Tolerance);
  EXPECT_NEAR(ink.Top, expected.Top, Tolerance);
  EXPECT_NEAR(ink.Right, expected.Right, Tolerance);
  EXPECT_NEAR(ink.Bottom, expected.Bottom, Tolerance);
}

TEST_F(VaxelRenderSheets, AreCalibratedAboutTheLowerLeftCorner) {
  const std::vector<Picture> plain = Pages(Sheet);
  ASSERT_EQ(plain.size(), 1U);
  ExpectInk(plain[0], plain[0].Whole(), {5, 15, 125, 95});
  const std::vector<Picture> sheet = Pages(std::string("--calibrate 1.01x0.99") + Sheet);
  ASSERT_EQ(sheet.size(), 1U);
  EXPECT_NEAR(sheet[0].WidthMm(), 150, 0.1);
  ExpectInk(sheet[0], sheet[0].Whole(), {5.05, 100 - 85 * 0.99, 125 * 1.01, 100 - 5 * 0.99});
  ExpectInk(sheet[0], {0, 50, 50, 100}, {5.05, 100 - 15 * 0.99, 15 * 1.01, 100 - 5 * 0.99});
}

TEST_F(VaxelRenderSheets, AreMirroredWithTheirTexts) {
  const std::string picture = std::string(VAXEL_SOURCE_DIR) + "/tests/pictures/inks.jpg";
  const std::string script = std::string(Squares) +
                             "Police = Arial\nTailleP = 40\nTexte = 30, 30, , , F\n"
                             "Image = " +
                             picture + ", 50, 10, Z§20§15\n";
  const Picture plain = Pages(Sheet, script).at(0),
                mirrored = Pages(std::string("--mirror") + Sheet, script).at(0);
  EXPECT_GT(plain.InkIn({35, 60, 50, 85}), 5);
  EXPECT_GT(plain.InkIn({55, 70, 75, 85}), 20);
  // The same ink on the other side, in strips so narrow that nothing is where it was not.
  for (double x = 0; x < 150; x += 2) {
    constexpr double pixelOfTheLargest = 20 * 1.1 / PixelsPerMm;
    EXPECT_NEAR(mirrored.InkIn({150 - x - 2, 0, 150 - x, 100}), plain.InkIn({x, 0, x + 2, 100}),
                pixelOfTheLargest)
        << x;
  }
  EXPECT_NE(OutputOf("pdftotext '" + (folder_ / "dial.pdf").string() + "' -").find('F'), std::string::npos);
}

// 120 by 80 does not go twice on 150 by 100, but twice beside each other on 300 by 100.
TEST_F(VaxelRenderSheets, HoldCopies) {
  const std::vector<Picture> two = Pages("--copies 3 --gap 4 --page 300x100");
  ASSERT_EQ(two.size(), 2U);
  // Their 244 mm stand in the middle.
  ExpectInk(two[0], {0, 0, 150, 100}, {28, 10, 148, 90});
  ExpectInk(two[0], {150, 0, 300, 100}, {152, 10, 272, 90});
  ExpectInk(two[1], two[1].Whole(), {28, 10, 148, 90});
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(Pages("--copies fit --page 300x100").size(), 1U);
  const std::vector<Picture> single = Pages(std::string("--copies fit") + Sheet);
  ASSERT_EQ(single.size(), 1U);
  ExpectInk(single[0], single[0].Whole(), {5, 15, 125, 95});
  EXPECT_EQ(printed_, "dial.dat: notice: a sheet has room for one copy of the drawing only\n");
}

TEST_F(VaxelRenderSheets, ShowWhereToCutAndHowLongTheyAre) {
  const Picture sheet = Pages("--crop-marks --ruler --page 150x120").at(0);
  // Four corners with two marks of 4 mm each, a millimetre off; those on the left reach to the edge.
  ExpectInk(sheet, {125.5, 30, 140, 50}, {126, 34.95, 130, 35.05});
  ExpectInk(sheet, {0, 20, 5.5, 50}, {0, 30, 5.05, 35.05});
  const std::string text = OutputOf("pdftotext '" + (folder_ / "dial.pdf").string() + "' -");
  for (const char* written : {"100 mm", "dial", "2023-11-14"}) {
    EXPECT_NE(text.find(written), std::string::npos) << written << ": " << text;
  }
  // The lower edge is taken. The ends of the line, at 10 and 110, stand higher than the marks between.
  ExpectInk(sheet, {8.5, 8.2, 111, 9.3}, {9.925, 8.2, 110.075, 9.3});
}

// What is printed, exported as PDF and as SVG, is one drawing.
TEST_F(VaxelRenderSheets, AgreeWithSvg) {
  const Picture pdf = Pages(std::string("-o dial.svg --target printer") + Sheet,
                            "CentreI = 75, 50, N\nEpaisT = 0.4mm\nTrait = -70, -40, -50, -30\n"
                            "Cercle = 0, 0, 20\nTrait = 50, 20, 65, 40, 1mm§C\nCadreA = -65, 15, -35, 40, 6\n"
                            "Police = Arial\nTailleP = 20\nTexte = 45, -30, , C, Vx\n")
                          .at(0);
  const std::string folder = folder_.string(), dpi = std::to_string(static_cast<int>(Dpi));
  Execute("cd '" + folder + "' && rsvg-convert -b white -d " + dpi + " -p " + dpi + " -o svg.png dial.svg");
  const Picture svg(folder + "/svg.png", PixelsPerMm);
  // Each figure has a part of the sheet for itself.
  for (const Picture::Box& part : {Picture::Box{0, 70, 30, 100},
                                   {50, 25, 100, 75},
                                   {120, 5, 150, 35},
                                   {5, 5, 45, 40},
                                   {100, 70, 150, 95}}) {
    EXPECT_GT(pdf.InkIn(part), 2);
    ExpectInk(svg, part, pdf.InkBox(part));
  }
}

TEST_F(VaxelRenderSheets, RefuseWhatMakesNoSense) {
  Write("dial.dat", Squares);
  const std::pair<const char*, const char*> cases[] = {
      {"--mirror -o a.svg", "--mirror is for PDF files alone: 'a.svg' is none"},
      {"--ruler", "--ruler is for PDF files alone: '-' is none"},
      {"--copies 2 -o a.pdf -o a.png", "--copies is for PDF files alone: 'a.png' is none"},
      {"--copies 0 -o a.pdf", "'0' is neither a whole number from 1 to 1000 nor fit"},
      {"--copies 1.5 -o a.pdf", "'1.5' is neither"},
      {"--copies 1001 -o a.pdf", "'1001' is neither"},
      {"--copies many -o a.pdf", "'many' is neither"},
      {"--gap 5 -o a.pdf", "--gap needs --copies"},
      {"--copies 2 --gap -1 -o a.pdf", "'-1' is not a number of millimetres from 0 to 1000"},
      {"--copies 2 --gap 5mm -o a.pdf", "'5mm' is not a number of millimetres"},
      {"--calibrate 1.2x1 -o a.pdf", "'1.2x1' is not two factors from 0.9 to 1.1"},
      {"--calibrate 0x1 -o a.pdf", "'0x1' is not two factors"},
      {"--calibrate 1 -o a.pdf", "'1' is not two factors"},
      {"--calibrate 1x1x1 -o a.pdf", "'1x1x1' is not two factors"},
      {"--calibrate x -o a.pdf", "'x' is not two factors"},
      {"--calibrate 1x1 --calibrate 1x1 -o a.pdf", "may be given only once"}};
  for (const auto& [arguments, message] : cases) {
    const Outcome outcome = Run(std::string(arguments) + " dial.dat");
    EXPECT_EQ(outcome.Status, 2) << arguments;
    EXPECT_NE(outcome.Printed.find(message), std::string::npos) << arguments << ": " << outcome.Printed;
  }
  EXPECT_EQ(FileCount(), 1U);
}

}  // namespace
}  // namespace vaxel::test
