// Lines that come again are kept as they were compiled; what comes of them must be what comes of the same
// lines when each is new.
#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

constexpr int Passes = 4;

// Stands in names of labels, for the pass.
constexpr char PassMark = '@';

// No separator that a script can set has these letters, which are parts of labels.
constexpr std::string_view PassLetters = "hjkl";

std::string WithPass(std::string text, char pass) {
  for (char& c : text) c = c == PassMark ? pass : c;
  return text;
}

// The second word of each operation of a list.
std::string WithoutLineNumbers(const std::string& list) {
  std::istringstream lines(list);
  std::string all;
  for (std::string kind, number, rest; lines >> kind >> number && std::getline(lines, rest);) {
    all += kind + rest + "\n";
  }
  return all;
}

// What comes of a script, but for the numbers of its lines and the names of its labels.
std::string Everything(const std::string& script, const RunSettings& settings) {
  const ScriptRun run = RunText(script, settings);
  std::string all = WithoutLineNumbers(PagesText(run.List));
  const auto add = [&](const std::string& text) {
    static const std::regex elsewhere("dial\\.dat:[0-9]+|(skip[0-9])[0-9]", std::regex::icase);
    all += std::regex_replace(text, elsewhere, "$1") + "\n";
  };
  for (const ErrorReport& error : run.Errors) add(error.FileName + error.Text);
  for (const auto* lines : {&run.Comments, &run.Boxes})
    for (const std::string& line : *lines) add(line.substr(line.find(':')));
  for (const auto& [name, value] : run.Variables) add(name + "=" + value);
  return all + std::to_string(run.OrderState);
}

// Lines of every kind, built of few parts so that they meet in many ways.
class ScriptWriter {
 public:
  explicit ScriptWriter(unsigned seed) : random_(seed) {}

  std::string Prologue() {
    std::string script = "%I = 0\n%X = 1\n%Y = 2\nArc = 40, 140, 30, N\nOpen = data.txt\n";
    for (const char* name : {"%A", "%B", "%C"}) script += std::string(name) + " =" + OneOf(Values()) + "\n";
    return script + "%K =< " + Command() + "\n";
  }
  std::string Body() {
    std::string body;
    for (int lines = 1 + Below(6); lines > 0; --lines) body += Line() + "\n";
    // Where the jumps of the lines before lead, or not.
    for (char label = '0'; label < '3'; ++label) body += std::string("Skip") + label + PassMark + ":\n";
    return body + "%I == %I + 1\n";
  }
  std::string Included() { return Command() + "\n" + Command() + "\n"; }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::string OneOf(const std::vector<std::string>& texts) {
    return texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))];
  }

  std::vector<std::string> Values() {
    return {" 3",    " -5",    " 2.50",       " 007",          " 1E+2",    " +4",    " 1E400",
            " .5",   " 5.",    " 2+3",        " 1, 2",         "",         " rouge", " %I",
            "< %I",  "= 1/3",  "= 10^15+0.3", "= -0",          " 90°, 10", " 4R",    "< =5",
            " Noir", " -1E-7", " 1 < 2",      "< X = %I, 1, 2"};
  }
  std::string Operand() {
    if (Below(2) == 0) return OneOf({"%I", "%A", "%B", "%C", "2", "0.1"});
    return OneOf({"%I",   "%A",     "%B",   "%C",      "2",          "0.1",     "-3",
                  "1E3",  "(%A+1)", "-%B",  "SIN(%A)", "RND2(%B/3)", "NBP(%C)", "%ZOOM",
                  "%Nil", "(2",     "%I%A", "ABS(%C)", "%{A}",       "%{B}0",   "%{zoom}"});
  }
  std::string Term() {
    std::string term = Operand();
    for (int more = Below(3); more > 0; --more)
      term += OneOf({"+", " - ", "*", "/", "^", " MOD ", "--"}) + Operand();
    return term;
  }
  std::string Coordinate() {
    return OneOf({Term(), Term() + "R", "%A°", "%I*30°", "", "10", "5R", " %B ", "%C r", "45°", "%A§%B"});
  }
  std::string Command() {
    switch (Below(19)) {
      case 0:
        return "Trait = " + Coordinate() + ", " + Coordinate() + ", " + Coordinate() + ", " + Coordinate();
      case 1:
        return "Trait = , , " + Coordinate() + ", " + Coordinate() + ", " +
               OneOf({"%A", "0.5mm", "2§C", ""}) + ", " + OneOf({"%C", "Rouge", "RVB %I 0 0"});
      case 2:
        return "Cercle = " + Coordinate() + ", , " + Term() + OneOf({"", "§0.5", "§%A"}) + ", " + Term();
      case 3:
        return "CercleP = 0, 0, " + Term() + ", , , " + OneOf({"%C", "RVB 1, %I, 3", "Bleu"});
      case 4:
        return "Grad1 = " + Term() + ", " + Term();
      case 5:
        return OneOf({"%A", "%B", "%{C}", "%D"}) + " =" +
               OneOf({"= " + Term(), " " + Term(), "< " + Term(), " %A + 1", " %B - %I", " %C %%"});
      case 6:
        return "Separateur = " + OneOf({";", ",", "%A", "|, &", ".", "7", ";;", ";, R"});
      case 7:
        return "Texte = %I, 0, , , " + OneOf({Term(), "of %A, 'x' %C", "=%A 5%", "%A%% %{B}x"});
      case 8:
        return "Couleur = " + OneOf({"%C", "Rouge", "RVB %I,2,3"});
      case 9:
        return OneOf(
            {"CT = " + Coordinate() + ", 1, N", "NPage", "EpaisT = " + Term(), "CentreE = 1, 1, N", "%C"});
      case 10:
        return "Poly = %A, %B, " + Coordinate() + ", 5, 6, 7";
      case 11:
        return "Val1 = " + OneOf({Term(), "§%C", "2§%B"}) + ", " + OneOf({"a", "%A", "§%C", "=%A"}) +
               ", 5, %C";
      case 12:
        return "Fichier = inc.dat" + OneOf({"", ", %I, 2", ", , , %A, %B=%C"});
      case 13:
        return OneOf({"LVar = %A", "LVar = %C", "Input =" + OneOf({"=", "<", ""}) + "Question %I, %B"});
      case 14:
        return OneOf({"? = %A, %B", "?", "ListeVar = %A", "TailleP = %A G, text %I, %D"});
      case 15:
        return "Fleche = %I, 2, " + Term() + ", " + Term() + ", , , %C";
      case 16:
        return OneOf({"Echelle =< 0, %A, %V*%B+" + Term(), "Echelle = " + Term() + ", %B", "Echelle",
                      "Echelle = liste, 0, 0, %A, " + Term(), "GradV = auto§%A, " + Term() + ", 10, 20",
                      "GradV = §%C, %A§T", "ValV = §%C§%B, 5", "PosV = %A, " + Term() + ", %D, %C",
                      "Aiguille = %A, 20, " + Term(), "FormatV = 0.0"});
      default:
        return "SectP = %A, " + Term() + ", 1, " + Term() + ", %C";
    }
  }
  std::string Target() { return OneOf({"Skip0", "Skip1", "skip2"}) + PassMark; }
  std::string Behind(int depth) {
    if (depth > 0 && Below(3) == 0) return Condition() + " THEN " + Behind(depth - 1);
    return OneOf({Command(), Command(), Command(), "GOTO " + Target(), "%K", "%C", "' %Nil"});
  }
  std::string Condition() {
    return OneOf({"IF ", "IFT ", "SI "}) + Term() + OneOf({" < ", "=", " >= ", "<>", "==", ""}) + Term();
  }
  std::string Line() {
    switch (Below(8)) {
      case 0:
      case 1:
        return Condition() + " THEN " + Behind(2);
      case 2:
        return Condition() + " GOTO " + OneOf({Target(), Target(), "Nowhere"});
      case 3:
        return Command() + OneOf({" _\n ", " ' %Nil", "\t"});
      case 4:
        return OneOf({"%K", "%C", "' %Nil", "", "Goto " + Target(), "Goto Past"});
      default:
        return Command();
    }
  }

  std::mt19937 random_;
};

TEST(CompiledLines, ComeToTheSameWhenTheyComeAgain) {
  constexpr unsigned scripts = 2500;
  unsigned completed = 0;
  for (unsigned seed = 0; seed < scripts; ++seed) {
    ScriptWriter writer(seed);
    const std::string prologue = writer.Prologue(), body = writer.Body();
    RunSettings settings;
    settings.Files = {{"inc.dat", writer.Included()}, {"data.txt", "3\n1, 2\n%I\n' none\nrouge\n"}};
    settings.Answers = {"2", "%I", "1 + 1"};
    std::string straight = prologue;
    for (int pass = 0; pass < Passes; ++pass)
      straight += WithPass(body, PassLetters[static_cast<std::size_t>(pass)]);
    const std::string loop = prologue + "Loop:\n" + WithPass(body, PassLetters[0]) + "IF %I < " +
                             std::to_string(Passes) + " GOTO Loop\n";
    const std::string expected = Everything(straight, settings);
    ASSERT_EQ(Everything(loop, settings), expected) << seed << ":\n" << loop;
    completed += expected.find("Erreur") == std::string::npos ? 1U : 0U;
    if (seed % 4 != 0) continue;
    settings.IsStraight = true;
    ASSERT_EQ(Everything(loop, settings), expected) << seed << ", straight:\n" << loop;
  }
  // Enough of them must get through all their passes for the comparison to mean something.
  EXPECT_GT(completed, scripts / 10);
}

}  // namespace
}  // namespace vaxel::test
