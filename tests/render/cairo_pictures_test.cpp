// Pictures as the outputs show them: where, which way up, in which colours, and what a document keeps of
// them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "render/system_decoder.h"

#include "tests/render/cairo_outputs.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr double Dpi = 1016;  // 40 pixels a millimetre
constexpr double Beside = 0.15;

constexpr Colour Red = 0x0000FF, Green = 0x00FF00, Blue = 0xFF0000, Yellow = 0x00FFFF;
constexpr Colour Magenta = 0xFF00FF, Paper = 0xFFFF00;

// One picture on a sheet of 40 by 30 whose origin is its middle.
struct Placed {
  std::string File;
  const char* Place;
  Picture::Box Box;  // worked out by hand
  // Red, green, blue and yellow stand in the corners; these in the middle and between.
  Colour Middle, Filling;
  const char* Kept;  // in a PDF: pixels across, up, encoding
};

// What a red that is half transparent leaves of the paper: 255 · 128 / 255 red, 255 · 127 / 255 green and
// blue.
constexpr Colour HalfRed = 0x7F7F80;

const Placed Pictures[] = {
    // 24 pixels by 12, at 2400 and 1200 a metre 10 mm by 10; where it is transparent the paper shows.
    {"clear.png", "-15,-10", {5, 15, 15, 25}, HalfRed, Paper, "24 12 image"},
    // At 96 an inch 6.35 by 3.175, here twice that.
    {"palette.png", "0,0,2,C", {13.65, 11.825, 26.35, 18.175}, Black, Magenta, "24 12 image"},
    // At 2400 a metre 10 by 5, its upper right corner at the place.
    {"upward.bmp", "15,10,,DH", {25, 5, 35, 10}, Black, Magenta, "24 12 image"},
    {"downward.bmp", "0,0,Z§8§12", {20, 3, 28, 15}, Black, Magenta, "24 12 image"},
    // The first frame alone; the second one is black. It begins 10 pixels right of and 5 below the corner of
    // its
    // screen of 40 by 20, of which one is 0.1 here: small, for its edges are smoothed.
    {"frames.gif", "0,0,X§4,X", {19, 13.5, 21.4, 14.7}, Black, Paper, "40 20 image"},
    // 48 pixels by 24.
    {"photo.jpg", "-5,-5,Y§10,Y", {15, 15, 35, 25}, Black, Magenta, "48 24 jpeg"},
    // How a camera was held is left to whoever makes the picture.
    {"turned.jpg", "0,0,A§10§10", {20, 10, 30, 15}, Black, Magenta, "48 24 jpeg"},
    // Of four inks, which readers understand in different ways; at 96 an inch 12.7 by 6.35.
    {"inks.jpg", "0,0", {20, 8.65, 32.7, 15}, Black, Magenta, "48 24 image"}};

void ExpectColour(const Picture& picture, const Picture::Place& place, Colour expected,
                  const std::string& what) {
  constexpr int rounding = 3;  // of a JPEG's colours, and of a transparent one's
  const Colour seen = picture.ColourAt(place);
  const auto differs = [&](std::uint32_t (*part)(Colour)) {
    return std::abs(static_cast<int>(part(seen)) - static_cast<int>(part(expected))) > rounding;
  };
  EXPECT_FALSE(differs(RedOf) || differs(GreenOf) || differs(BlueOf))
      << what << ": " << std::hex << seen << " instead of " << expected << std::dec << " at " << place.X
      << ", " << place.Y;
}

void ExpectPlaced(const Picture& picture, const Placed& placed, const std::string& what) {
  const auto& [left, top, right, bottom] = placed.Box;
  struct Corner {
    double X, Y, InwardX, InwardY;
    Colour Seen;
  };
  for (const auto& [x, y, inwardX, inwardY, colour] : {Corner{left, top, Beside, Beside, Red},
                                                       {right, top, -Beside, Beside, Green},
                                                       {left, bottom, Beside, -Beside, Blue},
                                                       {right, bottom, -Beside, -Beside, Yellow}}) {
    ExpectColour(picture, {x + inwardX, y + inwardY}, colour, what);
    ExpectColour(picture, {x - inwardX, y + inwardY}, Paper, what);
    ExpectColour(picture, {x + inwardX, y - inwardY}, Paper, what);
  }
  const double middleX = (left + right) / 2, middleY = (top + bottom) / 2;
  ExpectColour(picture, {middleX, middleY}, placed.Middle, what);
  for (const Picture::Place& between : {Picture::Place{middleX, top + Beside},
                                        {middleX, bottom - Beside},
                                        {left + Beside, middleY},
                                        {right - Beside, middleY}}) {
    ExpectColour(picture, between, placed.Filling, what);
  }
}

// The first picture that a PDF holds: pixels across and up, and the encoding.
std::string KeptPicture(const std::string& pdf) {
  std::istringstream list(OutputOf("pdfimages -list '" + pdf + "' | sed -n 3p"));
  std::array<std::string, 9> columns;
  for (std::string& column : columns) list >> column;
  return columns[3] + " " + columns[4] + " " + columns[8];
}

TEST(MeasuredPictures, ComeOutOfEveryRendererAsTheirFilesHaveThem) {
  RunSettings settings = ForPrinter();
  settings.Target.WidthMm = 40;
  settings.Target.HeightMm = 30;
  settings.Folder = std::string(VAXEL_SOURCE_DIR) + "/tests/pictures/";
  for (const Placed& placed : Pictures) {
    const ScriptRun run =
        RunText("CadreP = -20,-15,20,15,cyan\nImage = " + placed.File + "," + placed.Place, settings);
    ASSERT_EQ(run.Reason(), "") << placed.File;
    ExpectPlaced(ThroughPng(run.List, placed.File, Dpi), placed, placed.File + " in PNG");
    ExpectPlaced(ThroughSvg(run.List, placed.File, Dpi), placed, placed.File + " in SVG");
    ExpectPlaced(ThroughPdf(run.List, placed.File, Dpi), placed, placed.File + " in PDF");
    EXPECT_EQ(KeptPicture((MeasuredFolder() / (placed.File + ".pdf")).string()), placed.Kept) << placed.File;
  }
}

std::string Contents(const std::string& name) {
  std::ifstream file(std::string(VAXEL_SOURCE_DIR) + "/tests/pictures/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

ScriptRun RunWithPicture(const std::string& bytes, PictureDecoder& decoder) {
  RunSettings settings;
  settings.LangBase = 300;
  settings.Target.Decoder = &decoder;
  settings.Files["cut.png"] = bytes;
  return RunText("Image = cut.png", settings);
}

// Rows that are missing are transparent, not what a library fills them up with.
TEST(CutPictures, AreDrawnAsFarAsTheyGo) {
  SystemDecoder decoder;
  struct Case {
    const char* File;
    std::size_t Missing;        // bytes at its end
    std::uint32_t First, Last;  // pixels
  };
  const Case cases[] = {// Upward, so that the last row comes first.
                        {"upward.bmp", 200, 0, 0xFFFFFF00},
                        {"downward.bmp", 200, 0xFFFF0000, 0},
                        {"photo.jpg", 20, 0xFFFE0000, 0},
                        {"clear.png", 26, 0xFFFF0000, 0},
                        {"palette.png", 26, 0xFFFF0000, 0}};
  for (const Case& c : cases) {
    const std::string whole = Contents(c.File);
    const ScriptRun run = RunWithPicture(whole.substr(0, whole.size() - c.Missing), decoder);
    ASSERT_EQ(run.Reason(), "") << c.File;
    EXPECT_EQ(run.Notices, std::vector<std::string>{
                               "1:the picture cut.png is cut short: what can be read of it is drawn"});
    ASSERT_EQ(run.List.Size(), 1U);
    std::vector<std::uint32_t> pixels;
    const auto& shape = std::get<PictureShape>(run.List.At(0).Figure);
    ASSERT_TRUE(decoder.Decode(run.List.PictureOf(shape), pixels)) << c.File;
    EXPECT_EQ(pixels.front(), c.First) << c.File;
    EXPECT_EQ(pixels.back(), c.Last) << c.File;
  }
}

// Nothing can be read of the first, the second is whole but for its pixels.
TEST(CutPictures, AreRefusedWhereNothingCanBeRead) {
  SystemDecoder decoder;
  const std::string whole = Contents("palette.png");
  const std::size_t data = whole.find("IDAT") + 4;
  EXPECT_EQ(RunWithPicture(whole.substr(0, data + 1), decoder).Reason(),
            "The picture is incomplete or damaged: cut.png");
  std::string garbage = whole;
  garbage.replace(data, 8, 8, 'U');
  EXPECT_EQ(RunWithPicture(garbage, decoder).Reason(), "The picture is damaged: cut.png");
}

}  // namespace
}  // namespace vaxel::test
