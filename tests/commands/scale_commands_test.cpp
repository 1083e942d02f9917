#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

std::ptrdiff_t CountMarks(const std::string& script) {
  const ScriptRun run = RunText(script);
  EXPECT_TRUE(run.Errors.empty()) << script << ": " << run.Reason();
  const std::string list = ListText(run.List);
  return std::count(list.begin(), list.end(), '\n');
}

TEST(ScaleCommands, DrawTheSupport) {
  const std::pair<const char*, const char*> cases[] = {
      // Scale angles run clockwise from the left: 45° is the upper left, and both directions are one arc.
      {"Arc = 45, 135, 50", "arc 1  #000000 0.265  100.000,100.000 50.000 50.000 45.000 135.000\n"},
      {"Arc = 135°, 45°, 50, Rouge", "arc 1  #ff0000 0.265  100.000,100.000 50.000 50.000 45.000 135.000\n"},
      {"Arc = -45, 225, 50", "arc 1  #000000 0.265  100.000,100.000 50.000 50.000 -45.000 225.000\n"},
      {"Arc = 0, 360, 50", "circle 1  #000000 0.265  100.000,100.000 50.000 50.000\n"},
      {"Arc = 45, 135, 50, n", ""},
      {"Arc = 90, 90, 50", ""},
      // The other side of the pivot, where the marks of a negative radius are.
      {"Arc = 45, 135, -50", "arc 1  #000000 0.265  100.000,100.000 50.000 50.000 -135.000 -45.000\n"},
      // √(20² + 50² + 2·20·50·sin 45°) = 65.683; the ends are seen at 90° ± asin(50·sin 45° / 65.683)
      // = 32.566°.
      {"Decal = 20, N\nArc = 45, 135, 50",
       "arc 2  #000000 0.265  100.000,120.000 65.683 65.683 57.434 122.566\n"},
      // Ends below the arc's centre: √(10² + 50² − 2·10·50·sin 45°) = 43.507 at −35.646° … 215.646°.
      {"Decal = 10, N\nArc = -45, 225, 50",
       "arc 2  #000000 0.265  100.000,110.000 43.507 43.507 -35.646 215.646\n"},
      {"Decal = 10000, N\nArc = 45, 135, 50", "line 2  #000000 0.265  64.645,64.645 135.355,64.645\n"},
      {"Droite = -40, 40", "line 1  #000000 0.265  60.000,100.000 140.000,100.000\n"},
      {"Droite = -40, 40, 5, Bleu", "line 1  #0000ff 0.265  60.000,95.000 140.000,95.000\n"},
      {"DroiteV = -10, 30, 5", "line 1  #000000 0.265  105.000,110.000 105.000,70.000\n"},
      {"Droite = -40, 60, 5, N\nTrait = ,,0R,1R", "line 2  #000000 0.265  110.000,95.000 110.000,94.000\n"},
      {"Decal = 20, N\nTrait = ,,0,0", "line 2  #000000 0.265  100.000,120.000 100.000,100.000\n"}};
  for (const auto& [script, list] : cases) EXPECT_EQ(Drawn(script), list) << script;
  EXPECT_EQ(CountMarks("Decal = 20"), 2);
}

TEST(ScaleCommands, PlaceMarksOnEverySupport) {
  const std::pair<const char*, const char*> cases[] = {
      // 50 mm and 55 mm from the pivot: 50·sin 45° = 35.355, 55·sin 45° = 38.891.
      {"Arc = 45, 135, 50, N\nGrad = 0, 5", "64.645,64.645 61.109,61.109"},
      {"Arc = 45, 135, 50, N\nGrad1 = 50, 5", "100.000,50.000 100.000,45.000"},
      {"Arc = 45, 135, 50, N\nGrad1 = 50, -5", "100.000,50.000 100.000,55.000"},
      {"Inversion\nArc = 45, 135, 50, N\nGrad1 = 50, 5", "100.000,50.000 100.000,55.000"},
      {"Inversion\nInversion\nArc = 45, 135, 50, N\nGrad1 = 50, 5", "100.000,50.000 100.000,45.000"},
      {"Arc = 45, 135, 50, N\nExposant = 3\nGrad1 = 90°, 5", "100.000,50.000 100.000,45.000"},
      // Square root: 25 % lies at half of the scale.
      {"Exposant = 2\nArc = 45, 135, 50, N\nGrad1 = 25, 5", "100.000,50.000 100.000,45.000"},
      {"Exposant = 0.5\nDroite = 0, 80, 0, N\nGrad1 = 50, 5", "120.000,100.000 120.000,95.000"},
      {"Droite = -40, 40, 10, N\nGrad1 = 75, 5", "120.000,90.000 120.000,85.000"},
      {"Droite = -40, 40, 10, N\nGrad1 = 12°, 5", "112.000,90.000 112.000,85.000"},
      {"DroiteV = 0, 50, 10, N\nGrad1 = 20, 5", "110.000,90.000 115.000,90.000"},
      // A one-decade scale of 80 mm: log 2 = 0.30103.
      {"Exposant = L\nDroite = 0, 80, 0, N\nGrad1 = 2, 5", "124.082,100.000 124.082,95.000"},
      // Offset arc, straight up: the arc's centre lies 20 mm below the pivot, radii 65.683 and
      // √(20² + 55² + 2·20·55·sin 45°) = 70.574.
      {"Decal = 20, N\nArc = 45, 135, 50, N\nGrad1 = 50, 5", "100.000,54.317 100.000,49.426"},
      // Support without end: heights 50·sin 45° and 55·sin 45° on the ray of 60°, x = −h / tan 60°.
      {"Decal = 10000, N\nArc = 45, 135, 50, N\nGrad1 = 60°, 5", "79.588,64.645 77.546,61.109"}};
  for (const auto& [script, mark] : cases) {
    const std::string list = Drawn(script);
    EXPECT_EQ(list.substr(std::min(list.size(), list.find("0.265  ") + 7)), std::string(mark) + "\n")
        << script;
  }
}

TEST(ScaleCommands, CountMarksFromFirstToLast) {
  const std::string arc = "Arc = 45, 135, 50, N\n";
  EXPECT_EQ(CountMarks(arc + "Grad = 10, 5"), 11);
  EXPECT_EQ(CountMarks(arc + "Grad = 10, 5, 2, 8"), 7);
  EXPECT_EQ(CountMarks(arc + "Grad = 10, 5, 0, 0"), 11);
  EXPECT_EQ(CountMarks(arc + "Grad = 10, 5, 8, 2"), 0);
  EXPECT_EQ(CountMarks(arc + "Grad = 10, 5, -2, 12.9"), 15);
  EXPECT_EQ(CountMarks(arc + "Grad = 2.5, 5"), 3);
  EXPECT_EQ(CountMarks("Exposant = L, 2\n" + arc + "Grad = 1, 5, 3, 40"), 11);
  EXPECT_EQ(CountMarks("Exposant = L, 2\n" + arc + "Grad = 1E300, 5"), 3);
  // From 20 to 200.
  EXPECT_EQ(CountMarks("Exposant = L, 2, 20, 2\n" + arc + "Grad = 1, 5"), 10);
}

TEST(ScaleCommands, MarksTakePenAndColour) {
  const std::string droite = "EpaisT = 2\nDroite = 0, 10, 0, N\n";
  EXPECT_EQ(Drawn(droite + "Grad = 0, 5, , , 4, Rouge"),
            "line 3  #ff0000 1.058  100.000,100.000 100.000,95.000\n");
  EXPECT_EQ(Drawn(droite + "Grad = 0, 5, , , 0"), "line 3  #000000 0.529  100.000,100.000 100.000,95.000\n");
  EXPECT_EQ(Drawn(droite + "Grad = 0, 5, , , 4\nTrait = 0,0,1,0").substr(54),
            "line 4  #000000 0.529  100.000,100.000 101.000,100.000\n");
}

TEST(ScaleCommands, Grad1DrawsGroupsAndLists) {
  const std::string droite = "Droite = 0, 100, 0, N\n";
  EXPECT_EQ(Drawn(droite + "Grad1 = 10, 5, 4, Rouge, 20, 6, , , 30, 7, 2, Bleu,"),
            "line 2  #ff0000 1.058  110.000,100.000 110.000,95.000\n"
            "line 2  #000000 0.265  120.000,100.000 120.000,94.000\n"
            "line 2  #0000ff 0.529  130.000,100.000 130.000,93.000\n");
  const RunSettings settings = {.Variables = {{"%L", "20, 2*%Q, 40°"}, {"%Q", "15"}, {"%G", "10, 5"}}};
  const std::string listed =
      "line 2  #000000 0.265  110.000,100.000 110.000,95.000\n"
      "line 2  #000000 0.265  120.000,100.000 120.000,95.000\n"
      "line 2  #000000 0.265  130.000,100.000 130.000,95.000\n"
      "line 2  #000000 0.265  140.000,100.000 140.000,95.000\n";
  EXPECT_EQ(Drawn(droite + "Grad1 = 10§%L, 5", settings), listed);
  EXPECT_EQ(Drawn(droite + "Grad1 = §%Q§%L, 5", settings).size(), listed.size());
  // The variable of the first group brings its length too; the list is still the one of a value.
  EXPECT_EQ(Drawn(droite + "Grad1 = %G,,,§%L,5", settings), listed);
  EXPECT_EQ(RunText(droite + "Grad1 = 10§20, 5").Reason(), "Une liste est une variable (%Nom) : 20");
  EXPECT_EQ(RunText(droite + "Grad1 = 10").Reason(), "Le paramètre 2 manque");
}

TEST(ScaleCommands, FailWithTheirReason) {
  const std::string zero = "Division par zéro", overflow = "Dépassement de capacité",
                    domain = "Argument hors du domaine de la fonction";
  const std::pair<const char*, std::string> cases[] = {
      {"Grad = 10, 5", zero},
      {"Grad1 = 10, 5", zero},
      {"Exposant = 0", zero},
      {"Exposant = L, 40000", overflow},
      {"Exposant = L, 1, -1", domain},
      {"Arc = 45,135,50\nGrad = 1E9, 5", overflow},
      {"Arc = 45,135,50\nGrad = 10, 5, 40000", overflow},
      {"Exposant = L\nArc = 45,135,50\nGrad1 = 0, 5", domain},
      {"Exposant = L\nArc = 45,135,50\nGrad = 1, 5, -3", domain},
      {"Exposant = L\nDroite = 0,50\nGrad1 = 0, 5", domain},
      {"Exposant = a", "Expression incorrecte : a"},
      {"Exposant = L, 400\nArc = 45,135,50\nGrad = 1, 5", overflow},
      {"Exposant = L\nArc = 45,135,50\nGrad = 0, 5", "L'intervalle doit être au moins 0.0001 : 0"},
      {"Exposant = L\nArc = 45,135,50\nGrad = 1E-9, 5", "L'intervalle doit être au moins 0.0001 : 1E-9"},
      {"Arc = 45,135,50\nExposant = 2\nGrad1 = -1, 5", domain},
      {"Decal = 10000\nArc = 0, 90, 50", domain},
      {"Arc = 1, 2", "Le paramètre 3 manque"},
      {"Arc = 1, 2, 3x4", "Expression incorrecte : 3x4"}};
  for (const auto& [script, reason] : cases) EXPECT_EQ(RunText(script).Reason(), reason) << script;
}

}  // namespace
}  // namespace vaxel::test
