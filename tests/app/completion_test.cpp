#include "app/completion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

#include "app/name_matches.h"
#include "app/parameter_choices.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "tests/support/sample_lines.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

class Outside : public CompletionSource {
 public:
  std::vector<std::string> FilesIn(std::string_view folder, std::size_t most) override {
    Folder = folder;
    EXPECT_EQ(most, 1000U);
    return Files;
  }
  std::span<const std::string> Fonts() override { return Names; }

  std::string Folder;
  std::vector<std::string> Files = {"dial.dat", "needle.DAT", "sub/", "photo.png", "values.txt"};
  std::vector<std::string> Names = {"Arial", "Arial Narrow", "Courier New", "Times New Roman"};
};

struct Asked {
  Outside Around;
  ScriptSurvey Survey;
  LineContext Context;
  StringTable Strings;
  int Base = 0;

  // "|" stands for the cursor, "!" after it says that completion was asked for.
  Completions Of(std::string line) {
    const std::size_t bar = line.find('|');
    const bool isAsked = line.compare(bar, 2, "|!") == 0;
    line.erase(bar, isAsked ? 2 : 1);
    const std::size_t column = Utf16Length(std::string_view(line).substr(0, bar));
    return Complete({line, column, 100, isAsked}, {Context, Survey, Around, {Strings, Base}});
  }
  // What is offered, and what the line becomes with the first of them.
  std::string Shown(std::string line) {
    const Completions found = Of(line);
    std::string shown;
    for (const Completion& one : found.List) shown += one.Shown + " ";
    if (found.List.empty()) return shown;
    const std::size_t bar = line.find('|');
    line.erase(bar, line.compare(bar, 2, "|!") == 0 ? 2 : 1);
    const std::size_t begin = ByteAtUnit(line, found.Begin), end = ByteAtUnit(line, found.End);
    return shown + "→ " + line.replace(begin, end - begin, found.List.front().Inserted);
  }
};

TEST(Completion, OffersWhatMayStandThere) {
  Asked asked;
  asked.Survey.Read("%Rayon = 1\n%rond = 2\n%Autre = 3\nDébut:\nFin de cadran:\n");
  const std::pair<const char*, const char*> cases[] = {
      {"C|", ""},
      {"perc|", "Percer PercerX → Percer = "},
      {"  cercl| = 0,0,1", "Cercle CercleI CercleP Arc TexteC →   Cercle = 0,0,1"},
      {"perc|ex = 0", "Percer PercerX → Percer = 0"},
      {"PercerX|", ""},
      {"percer|", "Percer PercerX → Percer = "},
      {"IF %A=1 THEN npa|", "NPage → IF %A=1 THEN NPage"},
      {"círculo|", "Cercle → Cercle = "},
      {"' perc|", ""},
      {"Trait = 1 ' Cercl|", ""},
      {"Trait = %r|on", "%Rayon %rond → Trait = %Rayon"},
      {"Trait = %Rayon|", ""},
      {"Trait = 2*%z|, 3", "%ZOOM → Trait = 2*%ZOOM, 3"},
      {"Texte = 0,0,,,100%%|", ""},
      {"Texte = 0,0,,,=100%|", ""},
      {"Texte = 0,0,,,%aut|", "%Autre → Texte = 0,0,,,%Autre"},
      {"Goto |", "Début Fin de cadran → Goto Début"},
      {"Goto debu| ' x", "Début → Goto Début ' x"},
      {"IF 1=1 goto cad|", "Fin de cadran → IF 1=1 goto Fin de cadran"},
      {"Fichier = |", ""},
      {"Fichier = |!", "dial.dat needle.DAT sub/ → Fichier = dial.dat"},
      {"Fichier = di|x, 1, 2", "dial.dat → Fichier = dial.dat, 1, 2"},
      {"Image = ph|", "photo.png → Image = photo.png"},
      {"Open = sub\\v|", "values.txt → Open = sub\\values.txt"},
      {"Police = new|", "Courier New Times New Roman → Police = Courier New"},
      {"Police = arial|, 2", "Arial Arial Narrow → Police = Arial, 2"},
      {"Couleur = r|", "Rouge Red Rose → Couleur = Rouge"},
      {"Cercle = 0,0,1,,,bl|eu", "Black Bleu Blue Blanc → Cercle = 0,0,1,,,Black"},
      {"Arc = 1,2,3,|!", nullptr},
      {"FormatI = pa|", "Paysage → FormatI = Paysage"},
      {"Echelle = ta|", "table → Echelle = table"},
      {"GradV = au|, 3", "auto → GradV = auto, 3"},
      {"EpaisT = 2§|!", "C R → EpaisT = 2§C"},
      {"Texte = 0,0,,*2g|!", "R # B I S U C X Y D H V → Texte = 0,0,,*2gR"},
      {"Texte = 0,0,,x|", ""},
      {"LVar = %R|", "%Rayon %rond → LVar = %Rayon"},
      {"LVar = |", ""},
      {"Fin: perc|", ""},
      {"%perc|", ""}};
  for (const auto& [line, shown] : cases) {
    if (!shown) continue;
    EXPECT_EQ(asked.Shown(line), shown) << line;
  }
  EXPECT_EQ(asked.Around.Folder, "sub\\");
  // Behind THEN any command may stand, as at the beginning; before it there is a condition.
  EXPECT_GT(asked.Of("IF 1=1 THEN |!").List.size(), 0U);
  EXPECT_EQ(asked.Of("IF 1=1 THEN |!").List.size(), asked.Of("|!").List.size());
  EXPECT_EQ(asked.Of("IF 1=1 |!").List.size(), 0U);
  EXPECT_EQ(asked.Of("LVar = |!").List.front().Shown, "%Rayon");
  const Completions colours = asked.Of("Arc = 1,2,3,|!");
  EXPECT_EQ(colours.List.front().Sample, Colour{0});
  EXPECT_EQ(colours.List.back().Shown, "N");
}

TEST(Completion, ExplainsInTheReadersLanguage) {
  Asked asked;
  asked.Base = 300;
  asked.Survey.Read("%Size = 1\nEnd:\n");
  EXPECT_EQ(asked.Of("perc|").List.front().Explanation, "Draws a drilling pattern");
  EXPECT_EQ(asked.Of("X = %s|").List.front().Explanation, "variable, line 1");
  EXPECT_EQ(asked.Of("Goto |").List.front().Explanation, "label, line 2");
  EXPECT_EQ(asked.Of("FormatI = po|").List.front().Explanation, "upright sheet");
}

TEST(Completion, BearsWhatLiesOutside) {
  Asked asked;
  asked.Around.Files.clear();
  EXPECT_EQ(asked.Shown("Fichier = |!"), "");
  asked.Around.Files.assign(5000, "x.dat");
  EXPECT_EQ(asked.Of("Fichier = x|").List.size(), NameMatches::Most);
  asked.Context.Separators = {";", "#"};
  EXPECT_EQ(asked.Shown("Cercle = 0;0;1;;;jau|"), "Jaune → Cercle = 0;0;1;;;Jaune");
  asked.Context.Separators = {};
  asked.Context.Before = "Cercle = 0,0,1,,";
  EXPECT_EQ(asked.Shown(" , jau|"), "Jaune →  , Jaune");
}

TEST(Completion, KnowsEveryKeyword) {
  Asked asked;
  for (const CommandRow& row : CommandTable()) {
    if (!row.Rules.Shown.empty() || row.Keyword.size() < 2) continue;
    std::string begun = UpperCase(row.Keyword.substr(0, row.Keyword.size() - 1));
    const Completions found = asked.Of(begun + (begun.size() < 2 ? "|!" : "|"));
    const auto isRow = [&](const Completion& one) { return one.Shown == row.Keyword; };
    EXPECT_TRUE(std::any_of(found.List.begin(), found.List.end(), isRow)) << begun;
    for (const Completion& one : found.List) EXPECT_FALSE(one.Explanation.empty()) << one.Shown;
  }
}

// A letter that a run refuses must not be offered, and one that it takes must not be kept back.
TEST(Completion, OffersTheLettersThatARunTakes) {
  for (const CommandRow& row : CommandTable()) {
    for (const ParameterForm& form : FormsOf(row)) {
      for (std::size_t n = 1; n <= form.Parameters.size(); ++n) {
        const ParameterChoices choices = ChoicesOf(form.At(n)->front().Kind);
        if (!choices.AreLetters || form.At(n)->front().Kind == ParameterKind::Orientation) continue;
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
          const std::string line = SampleLine(row, form, [&](SamplePlace place, const std::string& text) {
            return place.N != n                                            ? text
                   : form.At(n)->front().Kind == ParameterKind::Multiplier ? "*2 " + std::string(1, letter)
                                                                           : std::string(1, letter);
          });
          RunSettings settings;
          settings.Folder = VAXEL_SOURCE_DIR "/tests/pictures/";
          const ScriptRun run = RunText(BeforeSample(row) + line, settings);
          const bool isOffered =
              std::any_of(choices.List.begin(), choices.List.end(),
                          [&](const ParameterChoice& choice) { return choice.Word.front() == letter; });
          EXPECT_EQ(run.Errors.empty(), isOffered) << line << (run.Errors.empty() ? "" : run.Errors[0].Text);
        }
      }
    }
  }
}

TEST(Completion, IsQuickWithLongLists) {
  Asked asked;
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "Label" + std::to_string(i) + ":\n";
  asked.Survey.Read(text);
  asked.Around.Names.clear();
  for (int i = 0; i < 5000; ++i) asked.Around.Names.push_back("Police d'écriture " + std::to_string(i));
  for (const char* line : {"Goto |", "Goto abel9|", "Police = e|"}) {
    const std::clock_t begin = std::clock();
    asked.Of(line);
    // With all checks of the build; without them it is a few milliseconds.
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 0.5) << line;
  }
}

}  // namespace
}  // namespace vaxel::test
