// What a run does with a script as a whole: order of commands, reports, variables in parameters.
#include "interpreter/run.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

TEST(Run, AnEmptyTextDrawsNothingAndClearsNothing) {
  const ScriptRun run = RunText("");
  EXPECT_EQ(run.End, RunEnd::Empty);
  EXPECT_TRUE(run.List.Pages().empty());
}

TEST(Run, CommentsAndLabelsDrawNothing) {
  const ScriptRun run = RunText("' title\r\n\r\nDébut:\r\nFin : ' end\r\nFin: = 3\r\n%spare:\r\n",
                                {.Variables = {{"%spare:", "' nothing"}}});
  EXPECT_EQ(run.End, RunEnd::Completed);
  EXPECT_EQ(ListText(run.List), "");
}

TEST(Run, ReportsNameTheLineAndTheFile) {
  struct Case {
    const char* Script;
    std::uint32_t Line;
    const char* Text;
  };
  const Case cases[] = {
      {"\nX = 0, 0, 1/0 ' why", 2,
       "Erreur dans la ligne : X = 0, 0, 1/0 ' why du fichier: dial.dat\n\nDivision par zéro"},
      {"' c\n\n  Cercel = 1", 3,
       "Erreur de commande dans la ligne : Cercel = 1 du fichier : dial.dat\n\nVouliez-vous écrire Cercle ?"},
      {"Qwertz = 1", 1, "Erreur de commande dans la ligne : Qwertz = 1 du fichier : dial.dat"},
      {"CentreE = 0,0\nCentreE = 1,1", 2,
       "Erreur dans l'ordre des commandes ligne : CentreE = 1,1     Ordre des commandes : \n          "
       "FormatI =\n"
       "          CentreE =\n          CentreI =\n          Commandes de tracé"},
      {"X = 0, 0, _\n2 _\n", 1,
       "Erreur dans la ligne : X = 0, 0,2 _ du fichier: dial.dat\n\nLa suite annoncée par \" _\" manque à la "
       "fin du "
       "texte"},
      {"a:\nX = 0, 0, 1\nA: rest", 3,
       "Erreur dans la ligne : A: rest du fichier: dial.dat\n\nÉtiquette définie deux fois : A"},
      {"Cercle = 0, 0, 1", 1,
       "Erreur dans la ligne : Cercle = 0, 0, 1 du fichier: dial.dat\n\nLa commande Cercle n'est pas encore "
       "disponible"}};
  for (const Case& c : cases) {
    const ScriptRun run = RunText(c.Script);
    EXPECT_EQ(run.End, RunEnd::Failed);
    ASSERT_EQ(run.Errors.size(), 1U) << c.Script;
    EXPECT_EQ(run.Errors[0].Text, c.Text);
    EXPECT_EQ(run.Errors[0].LineNumber, c.Line) << c.Script;
    EXPECT_EQ(run.Errors[0].FileName, "dial.dat");
  }
  EXPECT_EQ(RunText("X = 1/0", {.LangBase = 300}).Errors[0].Text,
            "Error in the line: X = 1/0 of the file: dial.dat\n\nDivision by zero");
  // A line of any length is reported in a box that can be read.
  EXPECT_LT(RunText("X = 1/0 '" + std::string(100000, 'x')).Errors[0].Text.size(), 500U);
}

TEST(Run, ChecksTheOrderOfCommands) {
  const std::pair<const char*, bool> cases[] = {
      {"FormatI = Portrait\nCentreE = 1,1", true},
      {"CentreE = 1,1\nCentreI = 1,1\nX = 0,0,1", true},
      {"FormatI = Portrait\nFormatI = Portrait", false},
      {"CentreE = 1,1\nFormatI = Portrait", false},
      {"X = 0,0,1\nFormatI = Portrait", false},
      {"CT = 1,1\nCentreE = 1,1", false},
      {"Arc = 0,90,50\nCentreE = 1,1", false},
      {"EpaisT = 2\nCouleur = Rouge\nExposant = 2\nInversion\nFormatI = Paysage", true},
      {"X = 0,0,1\nNPage\nFormatI = Portrait\nCentreE = 1,1\nX = 0,0,1", true}};
  for (const auto& [script, allowed] : cases) EXPECT_EQ(RunText(script).Errors.empty(), allowed) << script;

  // The printer passes over CentreE, the screen over CentreI, with their places in the order.
  const std::string centreI = "CentreI = 1,1\nCentreI = 2,2";
  EXPECT_TRUE(RunText(centreI).Errors.empty());
  EXPECT_FALSE(RunText(centreI, ForPrinter()).Errors.empty());
  EXPECT_LT(RunText(centreI, ForPrinter()).OrderState, 0);
}

TEST(Run, VariablesCarryParametersAndLines) {
  const RunSettings settings = {.Variables = {{"%P", "1, 2"}, {"%L", "X = %P, 3"}, {"%C", "' nothing"}}};
  const std::string expected = Drawn("X = 1, 2, 3");
  EXPECT_EQ(Drawn("X = %p, 3", settings), expected);
  EXPECT_EQ(Drawn("%L", settings), expected);
  EXPECT_EQ(Drawn("%C\nX = %P,%P", settings), Drawn("\nX = 1, 2, 1"));
  // A command in a variable still reads names where it reads names.
  EXPECT_EQ(RunText("%Q", {.Variables = {{"%Q", "%Next"}, {"%Next", "? = %X, %Y"}}}).Variables.size(), 4U);
  EXPECT_EQ(RunText("%Q", {.Variables = {{"%Q", "%q"}}}).Reason().substr(0, 20), "Variables imbriquée");
  EXPECT_EQ(RunText("%None", settings).Reason(), "Variable inconnue : %None");
  EXPECT_EQ(RunText("X = 0, 0, %None", settings).Reason(), "Variable inconnue : %None");
  EXPECT_EQ(RunText("%A = 3").Reason(), "La commande %Var n'est pas encore disponible");
}

TEST(Run, SeparatorsChangeForTheRestOfTheRun) {
  EXPECT_EQ(Drawn("Separateur = ;\nTrait = 0;0;10;0;2#C;Rouge\nSeparateur = ;#\nTrait = 0;0;10;0;2#C;Rouge")
                .substr(0, 6),
            "error:");
  EXPECT_EQ(Drawn("Separateur = ,#\nTrait = 0,0,10,0,2#C,Rouge"), Drawn("\nTrait = 0,0,10,0,2§C,Rouge"));
  EXPECT_EQ(Drawn("Separateur = <>, ::\nTrait = 0<>0<>10<>0<>2::C<>RVB 255"),
            Drawn("\nTrait = 0,0,10,0,2§C,RVB 255"));
}

TEST(Run, BoundsWhatItRecords) {
  EXPECT_EQ(RunText("Trait = 0, 0, 10000, 0, §§0.0001").Reason(),
            "Plus de 5 millions d'opérations de dessin");
  EXPECT_EQ(RunText("Trait = 0, 0, 1E300, 0").Reason(), "Dépassement de capacité");
}

// Scripts that nobody would write: parts of lines that the language knows, put together by chance. They end
// in a drawing or in a report; the sanitizers watch.
TEST(Run, SurvivesScriptsMadeByChance) {
  const std::vector<std::string> parts = {
      "Trait",  "Arc",    "Grad", "Grad1", "Exposant",   "Droite",  "DroiteV", "Decal",     "Poly",
      "PolyP",  "EpaisT", "CT",   "NPage", "Separateur", "Couleur", "Plus",    "Inversion", "?",
      "IF",     "%V",     "Fin:", " = ",   "=",          ",",       ",",       ",",         ", ",
      "§",      "§C§",    "°",    "R",     "L",          "N",       "mm",      "(",         ")",
      "SIN(",   "RND2(",  "NBP(", " MOD ", "^",          "-",       "*",       "/",         "1E300",
      "1E-300", "0",      "1",    "-1",    "2.5",        "45",      "90",      "10000",     "'",
      " _\n",   "\n",     "\n",   "\t",    "Rouge",      "RVB 1",   "\xC3",    ":",         ";"};
  std::mt19937 random(7);
  int completed = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string script = random() % 2 ? "Arc = 45, 135, 50, N\n" : "Exposant = L, 2\nDroite = 0, 50\n";
    for (std::size_t length = random() % 25; length > 0; --length) script += parts[random() % parts.size()];
    const ScriptRun run = RunText(script, {.Variables = {{"%V", "1,2"}, {"%W", "%V"}}});
    EXPECT_EQ(run.Errors.size(), run.End == RunEnd::Failed ? 1U : 0U) << script;
    EXPECT_FALSE(PagesText(run.List).empty());
    if (run.End == RunEnd::Completed) ++completed;
  }
  EXPECT_GT(completed, 100);
}

}  // namespace
}  // namespace vaxel::test
