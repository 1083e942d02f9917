// Where texts come out, measured on the pixels and compared with the outlines of the fonts.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "render/system_measurer.h"
#include "tests/render/cairo_outputs.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr double Tolerance = 0.1;  // mm of the drawing
constexpr double Dpi = 508;        // 20 pixels a millimetre

// In 1/2048 of the size, as Debian's fonts-liberation has them; Arial and Times New Roman have the same
// widths and cells. These letters have straight sides: the corners alone tell the box of a turned one.
struct Letter {
  char Name;
  double Advance;
  std::vector<Point> Corners;
};
struct Face {
  double Ascent, Descent;
  std::vector<Letter> Letters;
};
const Face Arial = {
    1854,
    434,
    {{'L', 1139, {{168, 0}, {168, 1409}, {359, 1409}, {1071, 156}, {1071, 0}}},
     {'_', 1139, {{-31, -407}, {-31, -277}, {1162, -277}, {1162, -407}}},
     {'1', 1139, {{156, 0}, {197, 1180}, {530, 1409}, {696, 1409}, {1039, 0}}},
     {'4', 1139, {{881, 0}, {711, 0}, {47, 319}, {47, 459}, {692, 1409}, {881, 1409}, {1079, 461}}}}};
const Face ArialBold = {1854,
                        434,
                        {{'L', 1251, {{137, 0}, {137, 1409}, {432, 1409}, {1188, 228}, {1188, 0}}},
                         {'_', 1139, {{-20, -250}, {-20, -172}, {1157, -172}, {1157, -250}}}}};
const Face Times = {1825,
                    443,
                    {{'L', 1251, {{59, 0}, {59, 1341}, {631, 1341}, {1063, 385}, {1128, 385}, {1110, 0}}},
                     {'_', 1024, {{-16, -264}, {-16, -162}, {1040, -162}, {1040, -264}}}}};
constexpr double UnderlineMiddle = -142, UnderlineThickness = 150;  // of Arial

constexpr double Em = 11 * 25.4 / 72;  // mm

// How far along the baseline, in parts of the length, and at which height a text lies at its point.
enum class Across { Top, Centre, Baseline };
using enum Across;

struct Placed {
  std::string_view Text;
  Point At{};  // mm, y upward, from the centre of the case
  double Rotation = 0;
  double Along = 0;
  Across Height = Top;
  double Size = Em;
  bool Underlined = false;
};

struct Case {
  std::string Script;  // with the origin in the centre of the case
  std::vector<Placed> Texts;
  const Face* Font = &Arial;
};

Point Direction(double degrees) {
  return {std::cos(degrees * std::numbers::pi / 180), std::sin(degrees * std::numbers::pi / 180)};
}

// The box of the case's ink round its centre, in mm, y downward.
Picture::Box InkOf(const Case& c) {
  Picture::Box box{1e9, 1e9, -1e9, -1e9};
  const auto include = [&](Point point) {
    box = {std::min(box.Left, point.X), std::min(box.Top, -point.Y), std::max(box.Right, point.X),
           std::max(box.Bottom, -point.Y)};
  };
  for (const Placed& text : c.Texts) {
    std::vector<Point> corners;
    double length = 0;
    for (char name : text.Text) {
      const Letter& letter = *std::find_if(c.Font->Letters.begin(), c.Font->Letters.end(),
                                           [name](const Letter& l) { return l.Name == name; });
      for (Point corner : letter.Corners) corners.push_back(corner + Point{length, 0});
      length += letter.Advance;
    }
    const double down = text.Height == Top      ? c.Font->Ascent
                        : text.Height == Centre ? (c.Font->Ascent - c.Font->Descent) / 2
                                                : 0;
    const double unit = text.Size / 2048;
    const auto place = [&](Point p) {
      return text.At + Direction(text.Rotation) * ((p.X - length * text.Along) * unit) +
             Direction(text.Rotation + 90) * ((p.Y - down) * unit);
    };
    for (Point corner : corners) include(place(corner));
    if (!text.Underlined) continue;
    constexpr double radius = UnderlineThickness / 2;  // of its round ends
    for (double end : {radius, length - radius}) {
      for (double side : {-radius, radius}) {
        include(place({end, UnderlineMiddle}) + Point{side * unit, side * unit});
      }
    }
  }
  return box;
}

// Every way to turn a text, and all that its letters depend on. Where the options put it, the lists of
// tests/scripts tell.
std::vector<Case> Cases() {
  std::vector<Case> cases;
  for (const auto& [turn, degrees, standard] :
       {std::tuple("", 0, Top), std::tuple("R0", 0, Baseline), std::tuple("R30", 30, Baseline),
        std::tuple("R90", 90, Baseline), std::tuple("R180", 180, Baseline)}) {
    const std::string script = std::string("Texte = 1,-1,,") + turn;
    cases.push_back({script + ",L_", {{"L_", {1, -1}, 1.0 * degrees, 0, standard}}});
    cases.push_back({script + "C,L_", {{"L_", {1, -1}, 1.0 * degrees, 0.5, Centre}}});
  }
  const std::string times = "Police = Times New Roman\nTexte = 0,0,,";
  const std::vector<Case> others = {
      {"Texte = 0,0,,*1.5,L_", {{"L_", {}, 0, 0, Top, 1.5 * Em}}},
      {"TailleP = *1.5\nTexte = 0,0,,,L_", {{"L_", {}, 0, 0, Top, 1.5 * Em}}},
      {"Police = , 0.5\nTexte = 0,0,,*3,L_", {{"L_", {}, 0, 0, Top, 1.5 * Em}}},
      {"TailleP = G\nTexte = 0,0,,,L_", {{"L_"}}, &ArialBold},
      {"Texte = 0,0,,GC,L_", {{"L_", {}, 0, 0.5, Centre}}, &ArialBold},
      {times + ",L_", {{"L_"}}, &Times},
      {times + "C,L_", {{"L_", {}, 0, 0.5, Centre}}, &Times},
      {times + "R90D,L_", {{"L_", {}, 90, 1, Baseline}}, &Times},
      {"Texte = 0,0,,S,L", {{"L", {}, 0, 0, Top, Em, true}}},
      {"TailleP = U\nTexte = 0,0,,R90D,LL", {{"LL", {}, 90, 1, Baseline, Em, true}}},
      {"Arc = 0, 180, 4, N\nValR = , 1, 1, 4, 2",
       {{"1", {-6, 0}, 90, 0.5, Centre}, {"4", {6, 0}, -90, 0.5, Centre}}}};
  cases.insert(cases.end(), others.begin(), others.end());
  return cases;
}

void ExpectBox(const Picture::Box& shown, const Picture::Box& expected, double tolerance,
               const std::string& what) {
  EXPECT_NEAR(shown.Left, expected.Left, tolerance) << what;
  EXPECT_NEAR(shown.Top, expected.Top, tolerance) << what;
  EXPECT_NEAR(shown.Right, expected.Right, tolerance) << what;
  EXPECT_NEAR(shown.Bottom, expected.Bottom, tolerance) << what;
}

// Cells in rows on one page.
struct Grid {
  std::size_t Columns;
  double Width, Height;

  Picture::Box Cell(std::size_t index) const {
    const double left = static_cast<double>(index % Columns) * Width;
    const double top = static_cast<double>(index / Columns) * Height;
    return {left, top, left + Width, top + Height};
  }
};

TEST(MeasuredText, LiesWhereTheListPutsIt) {
  constexpr Grid grid = {5, 20, 20};
  constexpr double middle = 50;  // of the page
  const std::vector<Case> cases = Cases();
  ASSERT_LE(cases.size(), 25U);
  std::ostringstream script;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const double x = grid.Cell(i).Left + 10 - middle, y = middle - grid.Cell(i).Top - 10;
    script << "CT = " << x << "," << y << ",N\nPolice = Arial\nTailleP = 11 \n"
           << cases[i].Script << "\nCT = " << -x << "," << -y << ",N\n";
  }
  const auto expect = [&](const RunSettings& settings, double zoom, const auto& show) {
    const ScriptRun run = RunText(script.str(), settings);
    ASSERT_EQ(run.End, RunEnd::Completed) << run.Reason();
    const Picture picture = show(run.List);
    for (std::size_t i = 0; i < cases.size(); ++i) {
      const Picture::Box cell = grid.Cell(i), ink = InkOf(cases[i]);
      const double x = cell.Left + 10, y = cell.Top + 10;
      ExpectBox(
          picture.InkBox({cell.Left * zoom, cell.Top * zoom, cell.Right * zoom, cell.Bottom * zoom}),
          {(x + ink.Left) * zoom, (y + ink.Top) * zoom, (x + ink.Right) * zoom, (y + ink.Bottom) * zoom},
          Tolerance * zoom, cases[i].Script);
    }
  };
  RunSettings screen, zoomed, paper = ForPrinter();
  screen.Target.HeightMm = screen.Target.WidthMm = 2 * middle;
  paper.Target.HeightMm = paper.Target.WidthMm = 2 * middle;
  zoomed.Target.HeightMm = zoomed.Target.WidthMm = 4 * middle;
  zoomed.Target.Zoom = 1.6;
  zoomed.Target.Zmm = 1.25;
  expect(screen, 1, [](const DisplayList& list) { return ThroughPng(list, "texts", Dpi); });
  expect(paper, 1, [](const DisplayList& list) { return ThroughPdf(list, "texts-on-paper", Dpi); });
  expect(zoomed, 2, [](const DisplayList& list) { return ThroughPng(list, "texts-zoomed", Dpi / 2); });
}

// The second font is the first one's outlines as a font that is not a standard one.
TEST(MeasuredText, LongTextsEndWhereTheyShould) {
  const std::string letters(70, 'L');
  SystemMeasurer measurer;
  RunSettings settings;
  settings.Target.Measurer = &measurer;
  for (const char* font : {"Times New Roman", "Liberation Serif"}) {
    const ScriptRun run = RunText(std::string("CentreE = 0, -90, N\nPolice = ") + font +
                                      "\nTailleP = 11 \nTexte = 0, 0, , R90, " + letters,
                                  settings);
    ASSERT_EQ(run.End, RunEnd::Completed) << run.Reason();
    const Case text{"", {{letters, {100, -190}, 90, 0, Baseline}}, &Times};
    const Picture::Box expected = InkOf(text);
    ExpectBox(ThroughPdf(run.List, "long-text", Dpi / 2).InkBox(), expected, Tolerance, font);
    ExpectBox(ThroughPng(run.List, "long-text", Dpi / 2).InkBox(), expected, Tolerance, font);
  }
}

// A page as a browser shows it, so many pixels a millimetre.
Picture ThroughBrowser(const DisplayList& list, const std::string& name, int scale) {
  std::ifstream file(WriteSvgPage(list, name));
  std::string svg((std::istreambuf_iterator<char>(file)), {});
  // Without a unit the page's width and height are pixels.
  const auto pixels = [&](std::string_view attribute, double mm) {
    const std::size_t from = svg.find(attribute) + attribute.size();
    const std::string number = std::to_string(std::lround(mm * scale));
    svg.replace(from, svg.find('"', from) - from, number);
    return number;
  };
  const Page& page = list.Pages()[0];
  const std::string window = pixels("width=\"", page.Width) + "," + pixels("height=\"", page.Height);
  const std::filesystem::path folder = MeasuredFolder();
  const std::string base = (folder / (name + "-browser")).string();
  std::ofstream(base + ".svg") << svg;
  std::filesystem::remove(base + ".png");
  // As root it has no sandbox. All that it leaves behind stays in the folder.
  const std::string home = (folder / "browser-home").string();
  std::filesystem::create_directories(home);
  Execute(
      "HOME='" + home + "' XDG_CONFIG_HOME= XDG_CACHE_HOME= TMPDIR='" + home +
      "' timeout 60 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --hide-scrollbars"
      " --disable-crash-reporter --force-device-scale-factor=1 --user-data-dir='" +
      home + "/profile' --window-size=" + window + " --screenshot='" + base + ".png' 'file://" + base +
      ".svg' >'" + base + ".log' 2>&1 || { cat '" + base + ".log'; false; }");
  return {base + ".png", static_cast<double>(scale)};
}

TEST(MeasuredText, IsTheSameInABrowserAndOnPaper) {
  struct Text {
    const char *Font, *Options, *Content;
  };
  // Letters that a font would kern or join, what the standard fonts lack, blanks that count, XML's own signs.
  constexpr std::array<Text, 20> texts = {{{"Times New Roman", "", "AVATAR fi ffl"},
                                           {"Times New Roman", "I", "AVATAR fi ffl"},
                                           {"Times New Roman", "G", "10⁻³ m"},
                                           {"Times New Roman", "GIR30C", "50 µA"},
                                           {"Times New Roman", "C", "x² + y³ = √∞"},
                                           {"Times New Roman", "R90C", "α β γ Ω"},
                                           {"Arial", "", "To AV. 20 °C"},
                                           {"Arial", "G", "Δf ≤ 1 µΩ"},
                                           {"Arial", "I", "=≈ ±5 %"},
                                           {"Arial", "C", "×10⁻¹² F"},
                                           {"Arial", "R30C", "10⁺⁶ Ω"},
                                           {"Arial", "R180C", "m/s²"},
                                           {"Arial", "", "= abc"},
                                           {"Arial", "", "=    a     b"},
                                           {"Arial", "S", "=<&\">' ]]>"},
                                           {"Arial", "*0.5R-90", "0,1 kΩ"},
                                           {"Courier New", "", "=  Volt  V"},
                                           {"Courier New", "G", "10⁻³ dB"},
                                           {"Courier New", "I*2", "½ ¼"},
                                           {"Courier New", "GIR45C", "√2 œ"}}};
  constexpr Grid grid = {4, 32, 16};
  RunSettings settings;
  settings.Target.WidthMm = 128;
  settings.Target.HeightMm = 80;
  std::ostringstream script;
  script << "CentreE = -64, 40, N\nTailleP = 12 \n";
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const double x = grid.Cell(i).Left + (std::string_view(texts[i].Options).ends_with('C') ? 16 : 3);
    script << "Police = " << texts[i].Font << "\nTexte = " << x << "," << -grid.Cell(i).Top - 8 << ",,"
           << texts[i].Options << "," << texts[i].Content << "\n";
  }
  const ScriptRun run = RunText(script.str(), settings);
  ASSERT_EQ(run.End, RunEnd::Completed) << run.Reason();
  constexpr int scale = 30;
  const Picture picture = ThroughPng(run.List, "browsed", scale * 25.4);
  const Picture page = ThroughPdf(run.List, "browsed", scale * 25.4);
  const Picture browser = ThroughBrowser(run.List, "browsed", scale);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const Picture::Box cell = grid.Cell(i), ink = picture.InkBox(cell);
    const std::string what = std::string(texts[i].Font) + ": " + texts[i].Content;
    EXPECT_GT(ink.Right - ink.Left, 1) << what;
    // Letters that stand elsewhere between the same ends move the centre of all.
    const Picture::Place centre = picture.CentreOfInk(cell);
    for (const auto& [other, where] : {std::pair(&page, " (PDF)"), std::pair(&browser, " (browser)")}) {
      ExpectBox(other->InkBox(cell), ink, Tolerance, what + where);
      EXPECT_NEAR(other->CentreOfInk(cell).X, centre.X, Tolerance) << what << where;
      EXPECT_NEAR(other->CentreOfInk(cell).Y, centre.Y, Tolerance) << what << where;
    }
  }
}

}  // namespace
}  // namespace vaxel::test
