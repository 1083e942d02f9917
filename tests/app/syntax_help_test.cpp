#include "app/syntax_help.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/command_search.h"
#include "app/help_syntax.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "tests/support/sample_lines.h"

namespace vaxel::test {
namespace {

constexpr int French = 0, English = 300, Spanish = 600;

const StringTable& Strings() {
  static const StringTable strings;
  return strings;
}

std::string Cut(std::string_view text, const ShownRange& range) {
  const std::size_t begin = ByteAtUnit(text, range.Begin), end = ByteAtUnit(text, range.End);
  return std::string(text.substr(begin, end - begin));
}

// The help for a line in which "|" stands for the cursor: "number name/part (default) <in the line>".
std::string Told(std::string line, int base = English, LineContext context = {}) {
  const std::size_t bar = line.find('|');
  line.erase(bar, 1);
  const SyntaxHelp help =
      HelpForLine(line, Utf16Length(std::string_view(line).substr(0, bar)), context, {Strings(), base});
  if (help.What != SyntaxHelp::Kind::Command) return help.Text;
  std::string told = std::string(help.Row->Spelling()) + " " + std::to_string(help.Parameter);
  if (help.Name) told += " " + Cut(help.Text, *help.Name);
  if (help.PartName) told += "/" + Cut(help.Text, *help.PartName);
  if (!help.Default.empty()) told += " (" + help.Default + ")";
  if (help.Parameter > 0) told += " <" + Cut(line, help.InLine) + ">";
  return told;
}

TEST(SyntaxHelp, NamesTheParameterAtTheCursor) {
  const std::pair<const char*, const char*> cases[] = {
      {"Cercle| = 0,0,3", "Cercle 0"},
      {"Cercle =| 0,0,3", "Cercle 1 xx (by default: the current point) < 0>"},
      {"cercle = 0, é|, 3", "Cercle 2 yy (by default: the current point) < é>"},
      {"Cercle = 0,0,3§|2", "Cercle 3 radius[§coefficient]/coefficient (by default: 1) <3§2>"},
      {"Cercle = 0,0,3,,,|", "Cercle 6 colour (by default: the current colour) <>"},
      {"Cercle = 0,0,3,,,RVB 1,2|,3", "Cercle 6 colour (by default: the current colour) <RVB 1,2,3>"},
      {"Trait = 1,2,3,4,,,5,6,7,8|", "Trait 10 yy2 <8>"},
      {"Trait = 1,2,3,4,2§C|", "Trait 5 LineWidth§LT§L1§L2§L3/LT (by default: the current line) <2§C>"},
      {"Poly = 1, 2, 3|, 4, 5, 6", "Poly 4 xx2 < 3>"},
      {"Poly = red, 1, 2|, 3, 4, 5, 6", "Poly 3 yy1 (by default: the current point) < 2>"},
      {"Poly = 1,2,3,4,5,6,7|", "Poly 8 xx3 <7>"},
      {"Grad = 10,2,|", "Grad 3 First (by default: 0) <>"},
      {"Grad = 10,2,,|", "Grad 4 Last (by default: Number) <>"},
      {"Grad1 = 1,2,3,red,5|", "Grad1 5 Scale%[§%Var_List]/Scale% <5>"},
      {"Val1D = 0,1,a,3,red,5,b|", "Val1D 7 text <b>"},
      {"Sect = 1,2,3,4,red,6,7,8|", "Sect 8 Distance (by default: 0) <8>"},
      {"QA = 0,0,9,0,3,5§|", "QA 6 Height[§Thickness]/Thickness (by default: Height) <5§>"},
      {"Texte = 0,0,,,one, two|", "Texte 5 text to write <one, two>"},
      {"Texte = 0,0,,|", "Texte 4 *kRa#BISCXYDHV <>"},
      {"Input = one, two|, %A", "Input 1 Prompt < one, two>"},
      {"Input = one, two, |%A", "Input 2 %Variable < %A>"},
      {"Exposant = |", "Exposant 1 z < >"},
      {"Exposant = L, 2|", "Exposant 2 Decades_Nb < 2>"},
      {"Echelle = table, x|", "Echelle 2 file < x>"},
      {"Echelle =< 1, 2, %V+PAR(1,2)|",
       "Echelle 3 expression in %V (place of %V in % of the support; ∞ may stand) < %V+PAR(1,2)>"},
      {"TailleP = *2|", "TailleP 1 *StandardSizeMultiplicator Style < *2>"},
      {"TailleP = *2, abc|", "TailleP 2 Text < abc>"},
      {"Image = a.png,1,2,Z§3§4|", "Image 4 {X§Width; Y§Height; Z§Width§Height; A§Width§Height} <Z§3§4>"},
      {"Pour = %I, PAR(1, 2)|, 9", "Pour 2 from < PAR(1, 2)>"},
      {"IF %A = 1| THEN Arc = 1", "IF 1 Expression1 Comparison Expression2 <%A = 1>"},
      {"IF %A = 1 GOTO x|", "IF 2 Label <x>"},
      {"IF %A = 1 THEN Arc = 1,|2", "Arc 2 EndAngle <2>"},
      {"IF 1=1 THEN IF 2=2 THEN Texte = ,,,,a 'b|", "Texte 5 text to write <a 'b>"},
      {"%A =| 3", "%Var 1 expression < 3>"},
      {"Goto |x", "Goto 1 Label <x>"},
      {"Arc\t=\t1,|2", "Arc 2 EndAngle <2>"},
      {"NPage|", "NPage 0"}};
  for (const auto& [line, told] : cases) EXPECT_EQ(Told(line), told) << line;
}

TEST(SyntaxHelp, KnowsSeparatorsAndLinesBefore) {
  LineContext context;
  context.Separators = {";", "#"};
  EXPECT_EQ(Told("Cercle = 1,5; 2; 3#4|", French, context),
            "Cercle 3 rayon[§coefficient]/coefficient (par défaut : 1) < 3#4>");
  context.Separators = {};
  context.Before = "Cercle = 0,0,";
  EXPECT_EQ(Told("  5|, 7", Spanish, context), "Cercle 3 radio[§coeficiente]/radio <  5>");
  context.Before = "Cercle = 0,0,1";
  EXPECT_EQ(Told("2|, 7", Spanish, context), "Cercle 3 radio[§coeficiente]/radio <2>");
}

TEST(SyntaxHelp, TellsOfWhatIsNoCommand) {
  EXPECT_EQ(Told("Fin|:", French).substr(0, 11), "Étiquette:");
  EXPECT_EQ(Told("' x|", French).substr(0, 13), "' Commentaire");
  EXPECT_EQ(Told("Trait = 1 ' x|", French).substr(0, 13), "' Commentaire");
  EXPECT_EQ(Told("%R|", French).substr(0, 1), "%");
  const SyntaxHelp unknown = HelpForLine("Triat = 3", 9, {}, {Strings(), French});
  EXPECT_EQ(unknown.What, SyntaxHelp::Kind::Unknown);
  EXPECT_EQ(unknown.Text, "Commande inconnue ; peut-être :");
  ASSERT_FALSE(unknown.Commands.empty());
  EXPECT_EQ(unknown.Commands[0]->Keyword, "Trait");
  const SyntaxHelp none = HelpForLine("zzzzzzz", 3, {}, {Strings(), French});
  EXPECT_EQ(none.Text, "Commande inconnue");
  EXPECT_GT(none.Commands.size(), 70U);
}

// The names that the help gives must be those of the parameters that the table knows, in all languages.
TEST(SyntaxHelp, NamesAllParametersOfEveryRow) {
  for (const CommandRow& row : CommandTable()) {
    const std::span<const ParameterForm> forms = FormsOf(row);
    for (int base : {French, English, Spanish}) {
      const std::string_view text = Strings().Text(base, row.Help);
      const std::vector<SyntaxLine> lines = SyntaxOf(text);
      ASSERT_EQ(lines.size(), forms.size()) << text;
      for (std::size_t i = 0; i < forms.size(); ++i) {
        const auto& named = lines[i].Parameters;
        ASSERT_EQ(named.size(), forms[i].Parameters.size()) << row.Keyword << " " << i << "\n" << text;
        for (std::size_t n = 0; n < named.size(); ++n) {
          const std::string_view name = text.substr(named[n].Begin, named[n].End - named[n].Begin);
          EXPECT_FALSE(name.starts_with(']') || name.ends_with('[')) << name;
          const bool isUnnamed = row.Help == Help::Image && i == 2 && (n == 1 || n == 2);
          EXPECT_EQ(name.empty(), isUnnamed) << row.Keyword << " " << i << " " << n << "\n" << text;
          const ParameterPartList& parts = *forms[i].At(n + 1);
          if (parts.size() > 1 && named[n].Parts.size() > 1) {
            EXPECT_EQ(named[n].Parts.size(), parts.size()) << name;
          }
        }
      }
      EXPECT_FALSE(PurposeOf(row, Strings(), base).empty());
    }
  }
}

TEST(SyntaxHelp, FollowsTheCursorThroughEveryRow) {
  for (const CommandRow& row : CommandTable()) {
    for (const ParameterForm& form : FormsOf(row)) {
      const std::string line = SampleLine(row, form);
      std::size_t n = 0;
      for (std::size_t column = 0; column <= Utf16Length(line); ++column) {
        const SyntaxHelp help = HelpForLine(line, column, {}, {Strings(), French});
        if (help.Row != &row) continue;  // what stands behind THEN
        EXPECT_GE(help.Parameter, n) << line << column;
        EXPECT_LE(help.Parameter, n + 1) << line << column;
        n = help.Parameter;
        if (row.Rules.Form == LineForm::Condition || form.Parameters.empty()) continue;
        EXPECT_EQ(&FormsOf(row)[help.Form], &form) << line;
      }
      const bool isLastElsewhere =
          row.Rules.Form == LineForm::Condition && form.At(2)->front().Kind == ParameterKind::Command;
      EXPECT_EQ(n + (isLastElsewhere ? 1 : 0), form.Parameters.size()) << line;
    }
  }
}

TEST(CommandSearch, FindsWhatIsMeant) {
  const auto first = [](const char* word, int base) -> std::string {
    const auto rows = FindCommands(word, Strings(), base);
    return rows.empty() ? "" : std::string(rows.front()->Keyword);
  };
  EXPECT_EQ(first("circle", English), "Cercle");
  EXPECT_EQ(first("Círculo", Spanish), "Cercle");
  EXPECT_EQ(first("rond", French), "Cercle");
  EXPECT_EQ(first("needle", English), "Aiguille");
  EXPECT_EQ(first("flèche", French), "Fleche");
  EXPECT_EQ(first("cerc", French), "Cercle");
  EXPECT_EQ(first("triat", French), "Trait");
  EXPECT_EQ(first("perçage", French), "Percer");
  EXPECT_EQ(first("X", French), "X");
  EXPECT_EQ(first("qqqqqq", French), "");
  EXPECT_EQ(first(std::string(100'000, 'a').c_str(), French), "");
  EXPECT_EQ(PurposeOf(*AllCommands().Find("IMAGE"), Strings(), English),
            "Insert the picture from the graphic file");
  EXPECT_EQ(PurposeOf(*AllCommands().Find("ARC"), Strings(), French),
            "Arc de cercle définissant la déviation de l'aiguille");
}

}  // namespace
}  // namespace vaxel::test
