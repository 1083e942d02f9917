// Scripts that place the drawing, and where their points come to lie. The screen of these tests measures
// 200 × 200 mm and the paper 210 × 297 mm; list coordinates run downward from the upper-left corner.
#include <gtest/gtest.h>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

// A mark that shows where the origin is: one line of the list.
constexpr const char* Mark = "Trait = 0, 0, 10, 0";

TEST(SurfaceCommands, PlaceTheOrigin) {
  struct Case {
    const char* Name;
    const char* Script;
    RunSettings Settings;
    const char* Points;
  };
  RunSettings zoomed, corrected, shifted, enlarged = ForPrinter();
  zoomed.Target.Zoom = 2;
  corrected.Target.Zmm = 1.25;
  shifted.Target.OffX = 30;
  shifted.Target.OffY = -20;
  enlarged.Target.Zoom = 2;
  const Case cases[] = {
      {"middle of the screen", "", {}, "100.000,100.000 110.000,100.000"},
      {"zoom about the middle", "", zoomed, "100.000,100.000 120.000,100.000"},
      {"true millimetres", "", corrected, "100.000,100.000 112.500,100.000"},
      {"screen offset", "", shifted, "130.000,120.000 140.000,120.000"},
      {"CentreE", "CentreE = 50, 40, N\n", {}, "150.000,60.000 160.000,60.000"},
      {"CentreE with zoom", "CentreE = 20, 10, N\n", zoomed, "140.000,80.000 160.000,80.000"},
      {"CentreI on the screen", "CentreI = 20, 10, N\n", {}, "100.000,100.000 110.000,100.000"},
      {"middle of the page", "", ForPrinter(), "105.000,148.500 115.000,148.500"},
      {"CentreI", "CentreI = 100, 100, N\n", ForPrinter(), "100.000,197.000 110.000,197.000"},
      {"CentreI with zoom", "CentreI = 50, 50, N\n", enlarged, "100.000,197.000 120.000,197.000"},
      {"landscape", "FormatI = Paysage\n", ForPrinter(), "148.500,105.000 158.500,105.000"},
      {"landscape with CentreI", "FormatI = paysage\nCentreI = 100, 100, N\n", ForPrinter(),
       "100.000,110.000 110.000,110.000"},
      {"CT", "CT = 5, 7, N\nCT = 1R, 90°, N\n", {}, "error"},
      {"CT twice", "CT = 5, 7, N\nCT = 10, -2, N\n", {}, "115.000,95.000 125.000,95.000"},
      {"CT polar", "CT = 90°, 10, N\n", {}, "100.000,90.000 110.000,90.000"},
      {"CT at the current point",
       "Trait = 0,0,30,0\nNPage\nCT = , , N\n",
       {},
       "130.000,100.000 140.000,100.000"}};
  for (const Case& c : cases) {
    const std::string list = Drawn(c.Script + std::string(Mark), c.Settings);
    EXPECT_NE(list.find(c.Points), std::string::npos) << c.Name << ": " << list;
  }
}

TEST(SurfaceCommands, MarkTheCentreUnlessToldNotTo) {
  EXPECT_EQ(Drawn("CentreE = 0, 0"),
            "line 1  #000000 0.265  99.000,100.000 101.000,100.000\n"
            "line 1  #000000 0.265  100.000,101.000 100.000,99.000\n");
  EXPECT_EQ(Drawn("CentreE = 0, 0, n"), "");
  EXPECT_EQ(Drawn("Couleur = Bleu\nCT = 1, 0\nTrait = , , 1R, 0R"),
            "line 2  #0000ff 0.265  100.000,100.000 102.000,100.000\n"
            "line 2  #0000ff 0.265  101.000,101.000 101.000,99.000\n"
            "line 3  #0000ff 0.265  101.000,100.000 102.000,100.000\n");
  EXPECT_EQ(Drawn("CentreE = 0, 0, RVB 255,0,0").substr(0, 15), "line 1  #ff0000");
}

TEST(SurfaceCommands, PagesFollowOneAnother) {
  const char* script = "FormatI = Paysage\nX = 0,0,1\nNPage\nFormatI = Portrait\nX = 0,0,1\nNPage";
  const ScriptRun printed = RunText(script, ForPrinter());
  ASSERT_EQ(printed.List.Pages().size(), 3U);
  EXPECT_EQ(printed.List.Pages()[0].Width, 297);
  EXPECT_EQ(printed.List.Pages()[1].Width, 210);
  EXPECT_EQ(printed.List.Pages()[1].Count, 2U);
  EXPECT_EQ(printed.OrderState, 0);
  // The screen shows the last page alone.
  const ScriptRun shown = RunText("X = 0,0,1\nNPage\nTrait = 0,0,1,1");
  EXPECT_EQ(shown.List.Pages().size(), 1U);
  EXPECT_EQ(ListText(shown.List), "line 3  #000000 0.265  100.000,100.000 101.000,99.000\n");
  // A centre that the script has set outlives the page, also on paper that is turned.
  EXPECT_EQ(Drawn("CentreI = 10, 10, N\nNPage\nFormatI = Paysage\nTrait = 0,0,1,0", ForPrinter()),
            "line 4  #000000 0.042  10.000,200.000 11.000,200.000\n");
}

TEST(SurfaceCommands, FailWithTheirReason) {
  EXPECT_EQ(RunText("Facteur = 2").Reason(), "Division par zéro (dans un fichier inclus seulement)");
  EXPECT_EQ(RunText("FormatI = A4", ForPrinter()).Reason(),
            "Division par zéro (Portrait ou Paysage attendu : A4)");
  EXPECT_TRUE(RunText("FormatI = A4").Errors.empty());
  EXPECT_EQ(RunText("CentreE = 1").Reason(), "Le paramètre 2 manque");
}

}  // namespace
}  // namespace vaxel::test
