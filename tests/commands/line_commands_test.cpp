#include <gtest/gtest.h>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

struct Case {
  const char* Script;
  const char* List;
};

TEST(LineCommands, ReadPointsInEveryNotation) {
  // All draw the same segment from the middle, 10 mm to the right and 5 mm up, or end there.
  const std::string expected = "#000000 0.265  100.000,100.000 110.000,95.000\n";
  for (const char* script : {"Trait = 0, 0, 10, 5", "Trait = , , 10, 5", "Trait = , , 10R, 5r",
                             "trait=,,2*5,10/2", "+ = 0,0,0\nTrait = , , 10R, 5R"}) {
    const std::string list = Drawn(script);
    EXPECT_EQ(list.substr(list.rfind("  #") + 2), expected) << script;
  }
  EXPECT_EQ(Drawn("Trait = 0, 0, 90°, 10"), "line 1  #000000 0.265  100.000,100.000 100.000,90.000\n");
  EXPECT_EQ(Drawn("Trait = 10, 0, 180 °, 5*2"), "line 1  #000000 0.265  110.000,100.000 100.000,100.000\n");
}

TEST(LineCommands, ContinuePolylines) {
  EXPECT_EQ(Drawn("Trait = 0,0, 10,0, 3, Rouge, 0R,10R, 270°,5\nTrait = ,,0,0"),
            "line 1  #ff0000 0.794  100.000,100.000 110.000,100.000\n"
            "line 1  #ff0000 0.794  110.000,100.000 110.000,90.000\n"
            "line 1  #ff0000 0.794  110.000,90.000 110.000,95.000\n"
            "line 2  #000000 0.265  110.000,95.000 100.000,100.000\n");
}

TEST(LineCommands, RefuseBadPoints) {
  for (const char* points : {"0,0,0,10°", "0,0,0°,10R", "0,0,5R°,10", "0,0,0°,10°"}) {
    EXPECT_NE(RunText("Trait = " + std::string(points)).Reason().find("point incorrect"), std::string::npos)
        << points;
  }
  for (const char* points : {"0,0", "0,0,1", "0,0,,1", "0,0,90°", "0,0,1,1,,,2"}) {
    EXPECT_EQ(RunText("Trait = " + std::string(points)).Reason(), "Division par zéro (une coordonnée manque)")
        << points;
  }
  EXPECT_EQ(RunText("Trait = 0,0,4°5,1").Reason(), "Expression incorrecte : 4°5");
}

TEST(LineCommands, DrawSigns) {
  EXPECT_EQ(Drawn("Plus = 1, 2, 3, Bleu, 2"),
            "line 1  #0000ff 0.529  98.000,98.000 104.000,98.000\n"
            "line 1  #0000ff 0.529  101.000,101.000 101.000,95.000\n");
  EXPECT_EQ(Drawn("X = 1, 2, 3"),
            "line 1  #000000 0.265  98.000,101.000 104.000,95.000\n"
            "line 1  #000000 0.265  98.000,95.000 104.000,101.000\n");
  EXPECT_EQ(RunText("X = 1, 2").Reason(), "Le paramètre 3 manque");
}

TEST(LineCommands, DrawPolygons) {
  const Case cases[] = {
      {"Poly = 0,0, 10,0, 0,10",
       "polygon 1  #000000 0.265  100.000,100.000 110.000,100.000 100.000,90.000\n"},
      {"PolyP = Rouge, 0,0, 10R,0, 0R,10R",
       "polygon 1  #ff0000 0.265 fill #ff0000  100.000,100.000 110.000,100.000 110.000,90.000\n"},
      // An empty first point is the current one, and the colour may be left empty with it.
      {"CT = 5,0,N\nPoly = , , 10,0, 0,10",
       "polygon 2  #000000 0.265  105.000,100.000 115.000,100.000 105.000,90.000\n"},
      // The outline is solid and as wide as the level's pen, whatever its dashes and ends.
      {"EpaisT = 4§C§1\nPoly = -1.5,0, 10,0", "polygon 2  #000000 1.058  98.500,100.000 110.000,100.000\n"}};
  for (const Case& c : cases) EXPECT_EQ(Drawn(c.Script), c.List);
  EXPECT_EQ(RunText("Poly = 0,0").Reason(), "Division par zéro (une coordonnée manque)");
  EXPECT_EQ(RunText("Poly = 0,0,1,1,2").Reason(), "Division par zéro (une coordonnée manque)");
}

// The widths of the strokes that a line draws behind these settings.
std::string WidthOf(const std::string& script, const RunSettings& settings = {}) {
  const std::string list = Drawn(script + "\nTrait = 0,0,10,0", settings);
  return list.substr(list.find('#') + 8, 5);
}

TEST(LineCommands, PensTakePixelsAndMillimetres) {
  EXPECT_EQ(WidthOf("EpaisT = 3"), "0.794");
  EXPECT_EQ(WidthOf("EpaisT = 0.5mm"), "0.500");
  EXPECT_EQ(WidthOf("EpaisT = (1+1)*0.25 MM"), "0.500");
  EXPECT_EQ(WidthOf("EpaisT = 0.01mm"), "0.265");
  EXPECT_EQ(WidthOf("EpaisT = -3"), "0.265");
  EXPECT_EQ(WidthOf("EpaisT = 4\nEpaisT = §R"), "1.058");
  EXPECT_EQ(WidthOf("EpaisT = 0.5mm", ForPrinter()), "0.500");
  EXPECT_EQ(WidthOf("EpaisT = 3", ForPrinter()), "0.127");
  RunSettings zoomed;
  zoomed.Target.Zoom = 3;
  EXPECT_EQ(WidthOf("EpaisT = 0.5mm", zoomed), "1.500");
  EXPECT_EQ(WidthOf("EpaisT = 3", zoomed), "0.794");
  EXPECT_EQ(RunText("EpaisT = 2x").Reason(), "Expression incorrecte : 2x");
}

TEST(LineCommands, PensKeepWhatIsNotGiven) {
  const std::string dashed =
      "line 2  #000000 0.529  100.000,100.000 102.000,100.000\n"
      "line 2  #000000 0.529  103.000,100.000 105.000,100.000\n";
  EXPECT_EQ(Drawn("EpaisT = 2§R§2§1\nTrait = 0,0,5.5,0"), dashed);
  EXPECT_EQ(Drawn("EpaisT = 1§R§2§1\nTrait = 0,0,5.5,0,2"), dashed);
  EXPECT_EQ(Drawn("EpaisT = 1§R§2§5\nTrait = 0,0,5.5,0,2§§-1§1"), dashed);
  EXPECT_EQ(Drawn("EpaisT = 2§R§2§1\nTrait = 0,0,5.5,0,2§§0"),
            "line 2  #000000 0.529  100.000,100.000 105.500,100.000\n");
  // Square ends: the stroke is a box of its width, outlined with the thinnest pen.
  EXPECT_EQ(Drawn("EpaisT = 4§C\nTrait = 0,0,10,0,§X,Rouge"),
            "polygon 2  #ff0000 0.265 fill #ff0000  100.000,100.529 100.000,99.471 110.000,99.471 "
            "110.000,100.529\n");
  EXPECT_EQ(RunText("Trait = 1,1,1,1,1§R§2").Reason(),
            "Division par zéro (trait interrompu de longueur nulle)");
}

TEST(LineCommands, TellWhatIsInForceInAComment) {
  EXPECT_EQ(RunText("EpaisT = 0.5mm\nEpaisT\nEpaisT =  ' ?").Comments,
            (std::vector<std::string>{"2:  '  2 pixels, 0.5mm", "3:  '  2 pixels, 0.5mm"}));
  const ScriptRun run = RunText("Trait = 0,0,1/3,-10\n?\n? = %X, %Y");
  EXPECT_EQ(run.Comments, std::vector<std::string>{"2:  ' 0.333333333, -10"});
  ASSERT_EQ(run.Variables.size(), 2U);
  EXPECT_EQ(run.Variables[1], (std::pair<std::string, std::string>{"%Y", "-10"}));
}

TEST(LineCommands, CouleurAppliesToWhatFollows) {
  EXPECT_EQ(Drawn("Couleur = RVB 255,128,0\nTrait = 0,0,1,0").substr(0, 16), "line 2  #ff8000 ");
  EXPECT_EQ(Drawn("Couleur = Rouge\nCouleur = Rouj\nTrait = 0,0,1,0").substr(0, 16), "line 3  #000000 ");
  EXPECT_EQ(Drawn("Couleur = Rouge\nTrait = 0,0,1,0,,Rouj").substr(0, 16), "line 2  #ff0000 ");
}

}  // namespace
}  // namespace vaxel::test
