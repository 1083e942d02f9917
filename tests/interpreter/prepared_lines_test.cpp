// Lines that are run again are prepared; what comes of them must be what comes of reading them anew.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

std::string Everything(const std::string& script, RunSettings settings, bool prepares) {
  (void)prepares;
  const ScriptRun run = RunText(script, settings);
  std::string all = PagesText(run.List);
  for (const ErrorReport& error : run.Errors)
    all += std::to_string(error.LineNumber) + ": " + error.Text + "\n";
  for (const std::string& comment : run.Comments) all += comment + "\n";
  for (const auto& [name, value] : run.Variables) all += name + "=" + value + "\n";
  return all + std::to_string(run.OrderState);
}

// Lines of every kind, built of few parts so that they meet in many ways.
class ScriptWriter {
 public:
  explicit ScriptWriter(unsigned seed) : random_(seed) {}

  // A body that is run four times, from the second on with prepared lines.
  std::string Script() {
    std::string script = "%I = 0\nArc = 40, 140, 30, N\n";
    for (const char* name : {"%A", "%B", "%C"}) script += std::string(name) + " =" + OneOf(Values()) + "\n";
    script += "Loop:\n";
    for (int lines = 1 + Below(5); lines > 0; --lines) script += Line() + "\n";
    return script + "%I == %I + 1\nIF %I < 4 GOTO Loop\n? = %X, %Y\n";
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::string OneOf(const std::vector<std::string>& texts) {
    return texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))];
  }

  std::vector<std::string> Values() {
    return {" 3",          " -5",  " 2.50",    " 007", " 1E+2",  " +4",   " 1E400", " .5",
            " 5.",         " 2+3", " 1, 2",    "",     " rouge", " %I",   "< %I",   "= 1/3",
            "= 10^15+0.3", "= -0", " 90°, 10", " 4R",  "< =5",   " Noir", " -1E-7"};
  }
  std::string Operand() {
    if (Below(2) == 0) return OneOf({"%I", "%A", "%B", "%C", "2", "0.1"});
    return OneOf({"%I", "%A", "%B", "%C", "2", "0.1", "-3", "1E3", "(%A+1)", "-%B", "SIN(%A)", "RND2(%B/3)",
                  "NBP(%C)", "%ZOOM", "%Nil", "(2", "%I%A", "ABS(%C)"});
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
    switch (Below(12)) {
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
        return "%" + OneOf({"A", "B", "C", "D"}) + " =" + OneOf({"= " + Term(), " " + Term(), "< " + Term()});
      case 6:
        return "Separateur = " + OneOf({";", ",", "%A", "|, &", ".", "7"});
      case 7:
        return "Texte = %I, 0, , , " + Term();
      case 8:
        return "Couleur = " + OneOf({"%C", "Rouge", "RVB %I,2,3"});
      case 9:
        return OneOf(
            {"CT = " + Coordinate() + ", 1, N", "NPage", "EpaisT = " + Term(), "CentreE = 1, 1, N", "%C"});
      case 10:
        return "Poly = %A, %B, " + Coordinate() + ", 5, 6, 7";
      default:
        return "SectP = %A, " + Term() + ", 1, " + Term() + ", %C";
    }
  }
  std::string Line() {
    switch (Below(6)) {
      case 0:
        return OneOf({"IF ", "IFT "}) + Term() + OneOf({" < ", "=", " >= ", "<>", "==", ""}) + Term() +
               " THEN " + Command();
      case 1:
        return "IF " + Term() + " < " + Term() + " GOTO " + OneOf({"Skip", "%A", "99", "Nowhere"});
      case 2:
        return Command() + OneOf({" _\n ", " ' %Nil", "\t"});
      case 3:
        return OneOf({"Skip" + std::to_string(Below(3)) + ":", "' %Nil", "", "Goto Past"});
      default:
        return Command();
    }
  }

  std::mt19937 random_;
};

TEST(PreparedLines, ComeToTheSameAsLinesReadAnew) {
  constexpr unsigned scripts = 4000;
  unsigned completed = 0;
  for (unsigned seed = 0; seed < scripts; ++seed) {
    const std::string script = ScriptWriter(seed).Script();
    // Some jump back for ever: they are ended, after as many conditions in both ways.
    RunSettings settings;
    settings.SignalAt = 100;
    const std::string plain = Everything(script, settings, false);
    ASSERT_EQ(Everything(script, settings, true), plain) << seed << ":\n" << script;
    completed += plain.find("Erreur") == std::string::npos ? 1U : 0U;
  }
  // Enough of them must get through all their passes for the comparison to mean something.
  EXPECT_GT(completed, scripts / 10);
}

}  // namespace
}  // namespace vaxel::test
