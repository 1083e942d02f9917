// What a run does with a script as a whole, beyond what it draws.
#include "interpreter/run.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

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
      {"Qwertz 1", 1, "Erreur de commande dans la ligne : Qwertz 1 du fichier : dial.dat"},
      {"CentreE = 0,0\nCentreE = 1,1", 2,
       "Erreur dans l'ordre des commandes ligne : CentreE = 1,1     Ordre des commandes : \n          "
       "FormatI =\n"
       "          CentreE =\n          CentreI =\n          Commandes de tracé\n\n"
       "La ligne 1 est venue avant : CentreE = 0,0"},
      {"X = 0, 0, _\n2 _\n", 1,
       "Erreur dans la ligne : X = 0, 0,2 _ du fichier: dial.dat\n\nLa suite annoncée par \" _\" manque à la "
       "fin du "
       "texte"}};
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
  EXPECT_EQ(RunText("Fichier = part", {.FileName = "", .LangBase = 300, .Files = {{"part", "X = 1/0"}}})
                .Errors[0]
                .Text,
            "Error in the line: X = 1/0 of the file: part\n\nDivision by zero\n"
            "included at unsaved script:1: Fichier = part");
  // A line of any length is reported in a box that can be read.
  EXPECT_LT(RunText("X = 1/0 '" + std::string(100000, 'x')).Errors[0].Text.size(), 500U);
}

TEST(Run, PagesHaveTheirOwnOrientation) {
  const ScriptRun run =
      RunText("FormatI = Paysage\nX = 0,0,1\nNPage\nFormatI = Portrait\nX = 0,0,1\nNPage", ForPrinter());
  ASSERT_EQ(run.List.Pages().size(), 3U);
  EXPECT_EQ(run.List.Pages()[0].Width, 297);
  EXPECT_EQ(run.List.Pages()[1].Width, 210);
  EXPECT_EQ(run.List.Pages()[1].Count, 2U);
  EXPECT_EQ(run.OrderState, 0);
  EXPECT_LT(RunText("CentreE = 1,1\nCentreE = 2,2").OrderState, 0);
}

// Without any jump or condition, too: the user waits as long for it.
TEST(Run, AStraightScriptCanBeEnded) {
  std::string script;
  for (int line = 0; line < 1000; ++line) script += "X = 0, 0, 1\n";
  RunSettings settings;
  settings.SignalAt = 5;
  const ScriptRun run = RunText(script, settings);
  EXPECT_EQ(run.End, RunEnd::Aborted);
  EXPECT_GT(run.List.Size(), 0U);
  EXPECT_LT(run.List.Size(), 400U);
}

// Every jump back asks, whether its target is known beforehand or not.
TEST(Run, ALoopOfJumpsCanBeEnded) {
  for (const std::string target : {"A", "%T"}) {
    RunSettings settings;
    settings.SignalAt = 5;
    const ScriptRun run = RunText("%T = A\nA:\nTrait = 0,0,1,1\nGoto " + target + "\n", settings);
    EXPECT_EQ(run.End, RunEnd::Aborted);
    EXPECT_EQ(run.List.Size(), 4U) << target;  // the first question comes before the first line
  }
}

// How often the host is asked, which no clock is needed to tell: after a few short lines, and after each that
// reads, puts in or draws much.
TEST(Run, AsksWhetherItGoesOnAfterEveryPieceOfWork) {
  constexpr int lines = 12;
  const auto times = [](const std::string& line) {
    std::string script;
    for (int i = 0; i < lines; ++i) script += line + "\n";
    return script;
  };
  RunSettings settings;
  settings.Variables = {{"%Long", std::string(200'000, 'x')}, {"%Short", "x"}};
  settings.Files = {{"long.txt", times(std::string(200'000, 'x'))},
                    {"noted.txt", times("1\n'" + std::string(200'000, 'x'))},
                    {"short.txt", times("x")}};
  std::string references;
  for (int i = 0; i < 10'000; ++i) references += "%Short+";
  struct Case {
    std::string Script;
    int Questions;  // at least
  };
  const Case cases[] = {{times("%A = %Long"), lines},
                        {times("IFT %Long = x THEN X = 0,0,1"), lines},
                        {times("Open = short.txt"), 2 * lines},
                        {"Open = long.txt\n" + times("LVar = %A"), lines},
                        {"Open = noted.txt\n" + times("LVar = %A"), lines},
                        {times("%A = " + references), lines * 10}};
  for (const Case& c : cases) {
    const ScriptRun run = RunText(c.Script, settings);
    EXPECT_GE(run.Questions, c.Questions) << c.Script.substr(0, 100) << run.Reason();
  }
  EXPECT_LT(RunText(times("%A = %Short"), settings).Questions, 4);
  RunSettings ended = settings;
  ended.SignalAt = 20;
  EXPECT_EQ(RunText("%A = " + references + "\nX = 0,0,1\n", ended).End, RunEnd::Aborted);
}

TEST(Run, ASeparatorHasAtMostAThousandCharacters) {
  std::string longest;
  for (int i = 0; i < 1000; ++i) longest += "§";
  EXPECT_EQ(RunText("Separateur = " + longest + "\n").Reason(), "");
  EXPECT_EQ(RunText("Separateur = " + longest + "§\n").Reason(), "Séparateur de plus de 1000 caractères");
  EXPECT_EQ(RunText("Separateur = ;, " + longest + "§\n").Reason(), "Séparateur de plus de 1000 caractères");
}

// Ten characters, doubled twenty times, in one variable after another; those of an included script count
// while it runs.
// What the drawing itself refuses, in the words of a report.
TEST(Run, TellsWhichLimitOfTheDrawingIsExceeded) {
  using Why = DrawingFault::Reason;
  const StringTable strings;
  for (const auto& [why, text] : {std::pair(Why::TooManyOperations, TextId::TooManyOperations),
                                  {Why::TooMuchText, TextId::TooMuchText},
                                  {Why::TooManyPictures, TextId::TooManyPictures},
                                  {Why::OutOfRange, TextId::Overflow}}) {
    EXPECT_EQ(ScriptFault(DrawingFault{why}).Description(strings, 0), strings.Text(0, text));
  }
}

// Each of its parameters is short enough.
TEST(Run, RefusesALineThatIsTooLongWithItsVariables) {
  RunSettings settings;
  std::string half;
  half.resize(9'000'000, '1');
  settings.Variables = {{"%A", half}};
  EXPECT_EQ(RunText("Trait = %A, %A", settings).Reason(), StringTable().Text(0, TextId::TextTooLong));
}

TEST(Run, EndsWithAReportWhereMemoryIsLacking) {
  RunSettings settings;
  settings.Files = {{"data.txt", ""}};
  settings.LacksMemory = true;
  const ScriptRun run = RunText("Trait = 0, 0, 1, 1\nOpen = data.txt", settings);
  EXPECT_EQ(run.End, RunEnd::Failed);
  EXPECT_EQ(run.Reason(), StringTable().Text(0, TextId::OutOfMemory));
  EXPECT_EQ(run.List.Size(), 1U);
}

TEST(Run, VariablesTakeNoMoreThanTheirRoom) {
  std::string script = "%A = 0123456789\nFichier = inc.dat\nFichier = inc.dat\n";
  std::string grown;
  for (int i = 0; i < 20; ++i) grown += "%A = %{A}%{A}\n";
  const auto copies = [](int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) lines += "%B" + std::to_string(i) + " = %A\n";
    return lines;
  };
  RunSettings settings;
  settings.Files["inc.dat"] = "%A = 0123456789\n" + grown + copies(6) + "%A == 1\n";
  const ScriptRun fits = RunText(script + grown + copies(8), settings);
  EXPECT_EQ(fits.End, RunEnd::Completed) << fits.Reason();
  // It is said once that the text grows: in each of the files.
  EXPECT_EQ(fits.Notices.size(), 2U + 8U + 6U);
  const ScriptRun tooMuch = RunText(script + grown + copies(4) + "Fichier = inc.dat\n", settings);
  EXPECT_NE(tooMuch.Reason().find("100 Mo"), std::string::npos) << tooMuch.Reason();
  EXPECT_EQ(tooMuch.Errors.at(0).FileName, "inc.dat");
}

// Data, included scripts and pictures count together for as long as the run holds them.
TEST(Run, FilesShareTheirRoom) {
  RunSettings settings;
  settings.Files["data.txt"] = std::string(1000, '1');
  settings.Files["inc.dat"] = "Open = data.txt\n'" + std::string(482, 'x') + "\n";
  EXPECT_EQ(RunText("Open = data.txt\n", settings).RoomForFile, 100'000'000U);
  EXPECT_EQ(RunText("Open = data.txt\nFichier = inc.dat\n", settings).RoomForFile, 100'000'000U - 1000 - 500);
  EXPECT_EQ(RunText("Fichier = inc.dat\nOpen = data.txt\n", settings).RoomForFile, 100'000'000U);
}

// What a run keeps beside the script's text may not become many times that text.
TEST(Run, KeepsAHundredThousandLabelsAndNotices) {
  std::string labels = "Goto A99999\n", lines;
  for (int i = 0; i < 100'000; ++i) labels += "A" + std::to_string(i) + ":\n";
  EXPECT_EQ(RunText(labels + "Trait = 0, 0, 1, 1\n").Reason(), "");
  EXPECT_EQ(RunText(labels + "B:\n").Reason(), "Plus de 100 000 étiquettes");
  for (int i = 0; i < 100'002; ++i) lines += "Couleur=Xy\n";
  const std::vector<std::string> notices = RunText(lines).Notices;
  ASSERT_EQ(notices.size(), 100'001U);
  EXPECT_EQ(notices[99'999], "100000:couleur inconnue : Xy");
  EXPECT_EQ(notices.back(), "100001:100 000 avis ont été donnés : les suivants ne le sont pas");
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
