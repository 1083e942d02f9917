#include "app/script_tokens.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <random>
#include <string>

#include "app/script_colours.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "tests/support/sample_lines.h"

namespace vaxel::test {
namespace {

// "K:Trait N:1 S:, C:Rouge(255)": a letter for the kind, and the words of the line.
std::string Shown(std::string_view line, const LineContext& context = {}) {
  constexpr std::string_view letters = "?KULVWNTCS'";
  std::string shown;
  for (const ScriptToken& token : TokensOfLine(line, context)) {
    if (!shown.empty()) shown += ' ';
    shown += letters[static_cast<std::size_t>(token.Kind)];
    const std::size_t begin = ByteAtUnit(line, token.Begin), end = ByteAtUnit(line, token.End);
    shown += ":" + std::string(line.substr(begin, end - begin));
    if (token.Meant) shown += "(" + std::to_string(*token.Meant) + ")";
  }
  return shown;
}

TEST(ScriptTokens, SayWhatTheWordsOfALineAre) {
  struct Case {
    const char *Line, *Tokens;
  };
  const Case cases[] = {
      {"  trait = 1, 2.5 ' é", "K:trait N:1 S:, N:2.5 ':' é"},
      {"Trate = 1", "U:Trate N:1"},
      {"Cercle = 0,0,%R§0.5,,,Rouge", "K:Cercle N:0 S:, N:0 S:, V:%R S:§ N:0.5 S:, S:, S:, C:Rouge(255)"},
      {"Trait=0R,45°,,,2§C§1,RVB 1 2 3",
       "K:Trait N:0 S:, N:45 S:, S:, S:, N:2 S:§ S:§ N:1 S:, C:RVB 1 2 3(197121)"},
      {"Cercle = 0,0,1,,,RVB 0,0,255", "K:Cercle N:0 S:, N:0 S:, N:1 S:, S:, S:, C:RVB 0,0,255(16711680)"},
      {"Couleur = Rouge/Red", "K:Couleur C:Rouge/Red(255)"},
      {"Couleur = RVB 1/0 2 3", "K:Couleur N:1 N:0 N:2 N:3"},
      {"Texte = 0,0,,,L'eau à %T, %Q", "K:Texte N:0 S:, N:0 S:, S:, S:, T:L'eau à  V:%T T:,  W:%Q"},
      {"Texte = 0,0,,,=100 %", "K:Texte N:0 S:, N:0 S:, S:, S:, T:=100 %"},
      {"Police = Arial, 1.2", "K:Police T:Arial S:, N:1.2"},
      {"Poly = Vert, 1,2,3,4", "K:Poly C:Vert(65280) S:, N:1 S:, N:2 S:, N:3 S:, N:4"},
      {"' 😀 x", "':' 😀 x"},
      {"Début: ' 1", "L:Début: ':' 1"},
      {"%A = %B + 5 ' x", "V:%A W:%B N:5 ':' x"},
      {"%T", "V:%T"},
      {"IF %T < 3 THEN Arc = 1 ' x", "K:IF V:%T N:3 K:THEN K:Arc N:1 ':' x"},
      {"Si %T = 3 then si 1=1 goto Fin ' x", "K:Si V:%T N:3 K:then K:si N:1 N:1 K:goto L:Fin ':' x"},
      {"IF %T <", "K:IF V:%T"},
      {"Goto Fin ' x", "K:Goto L:Fin ':' x"},
      {"NPage ' x = 3", "K:NPage ':' x = 3"},
      {"Fichier = a.dat, 1, 2, %Q=3, %T", "K:Fichier T:a.dat S:, N:1 S:, N:2 S:, V:%Q N:3 S:, V:%T"},
      {"Echelle =< 0, 10, %V*10", "K:Echelle N:0 S:, N:10 S:, V:%V N:10"},
      {"X = %{T}, %ZOOM, %1, %%", "K:X V:%{T} S:, V:%ZOOM S:, V:%1 S:,"},
      {"Input = What, now, %T", "K:Input T:What, now S:, V:%T"},
      {"Trait\t=\t1, _", "K:Trait N:1 S:,"},
      {"", ""}};
  LineContext context;
  context.IsVariable = [](std::string_view name) {
    return EqualIgnoringCase(name, "%T") || EqualIgnoringCase(name, "%R");
  };
  for (const Case& c : cases) EXPECT_EQ(Shown(c.Line, context), c.Tokens) << c.Line;
}

TEST(ScriptTokens, FollowSeparatorsAndLinesBefore) {
  LineContext context;
  context.Separators = {";;", "#"};
  EXPECT_EQ(Shown("Cercle = 1;;2;;3#4;;;;;;red", context),
            "K:Cercle N:1 S:;; N:2 S:;; N:3 S:# N:4 S:;; S:;; S:;; C:red(255)");
  context.Separators = {};
  context.Before = "Texte = 0,0,Vert,, 😀 one ";
  EXPECT_EQ(Shown("  'two, 3", context), "T:  'two, 3");
  context.Before = "Cercle = 0,0,1,,";
  EXPECT_EQ(Shown(" , bleu ' x", context), "S:, C:bleu(16711680) ':' x");
}

// What follows a name that is too long stands where it stands, though the name is looked at in parts.
TEST(ScriptTokens, CountTheCharactersOfLongNames) {
  for (const std::size_t letters : {40, 49, 50, 51, 100}) {
    std::string line = "Trait = %";
    for (std::size_t i = 0; i < letters; ++i) line += "é";
    const std::vector<ScriptToken> tokens = TokensOfLine(line + ", 1", {});
    ASSERT_FALSE(tokens.empty());
    EXPECT_EQ(tokens.back().Begin, 9 + letters + 2) << letters;
    EXPECT_EQ(tokens.back().End, 9 + letters + 3) << letters;
  }
}

TEST(ScriptTokens, KnowEveryKeyword) {
  for (const CommandRow& row : CommandTable()) {
    for (const ParameterForm& form : FormsOf(row)) {
      const std::string line = SampleLine(row, form);
      const std::vector<ScriptToken> tokens = TokensOfLine(line, {});
      ASSERT_FALSE(tokens.empty()) << line;
      const bool isAssignment = row.Keyword == "%";
      EXPECT_EQ(tokens[0].Kind, isAssignment ? TokenKind::Variable : TokenKind::Keyword) << line;
      EXPECT_EQ(tokens[0].End, isAssignment ? 5 : row.Keyword.size()) << line;
      std::size_t colours = 0, wanted = 0;
      for (const ScriptToken& token : tokens) colours += token.Meant == Colour{255} ? 1U : 0U;
      for (std::size_t at = 0; (at = line.find("Rouge", at)) != std::string::npos; ++at) ++wanted;
      EXPECT_EQ(colours, wanted) << line;
    }
  }
}

TEST(ScriptColours, LeaveOutWhatIsPlain) {
  const std::vector<ColouredRange> ranges = ColoursOfLine("Trait = 1, 2 ' x", {}, true);
  ASSERT_EQ(ranges.size(), 4U);
  EXPECT_EQ(ranges[0].Ink, InkOf(TokenKind::Keyword, true));
  EXPECT_EQ(ranges[2].Begin, 11U);
  EXPECT_EQ(ranges[3].End, 16U);
}

TEST(ScriptColours, AreThoseThatALineNames) {
  EXPECT_EQ(ColourNamedIn("Cercle = 0, 0, 1,,, bleu ' Rouge"), MakeColour(0, 0, 255));
  EXPECT_EQ(ColourNamedIn("Couleur = RVB 1 2 3"), MakeColour(1, 2, 3));
  EXPECT_FALSE(ColourNamedIn("Trait = 1, 2 ' Rouge"));
}

double Luminance(Colour colour) {
  const auto part = [](std::uint32_t value) {
    const double v = value / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(RedOf(colour)) + 0.7152 * part(GreenOf(colour)) + 0.0722 * part(BlueOf(colour));
}

TEST(ScriptTokens, AreReadableOnBothGrounds) {
  for (int kind = 0; kind <= static_cast<int>(TokenKind::Comment); ++kind) {
    for (bool isDark : {false, true}) {
      const double ink = Luminance(InkOf(static_cast<TokenKind>(kind), isDark));
      const double ground = Luminance(isDark ? DarkGround : LightGround);
      const double contrast = (std::max(ink, ground) + 0.05) / (std::min(ink, ground) + 0.05);
      EXPECT_GE(contrast, 4.5) << kind << " " << isDark;
    }
  }
}

TEST(ScriptTokens, LieInOrderInAnyLine) {
  std::mt19937 random(7);
  const std::string_view pieces[] = {
      "%",     "{",      "}",    "§",        ",",      "'",      ":",
      "=",     "<",      " ",    "\t",       "IF ",    " THEN ", " GOTO ",
      "Trait", "Texte=", "RVB ", "1",        "é",      "😀",      "\xFF",
      "_",     " _",     "°",    "Couleur=", "Input=", "Poly=",  std::string_view("\0", 1)};
  for (int i = 0; i < 3000; ++i) {
    std::string line;
    for (auto n = random() % 25; n > 0; --n) line += pieces[random() % std::size(pieces)];
    LineContext context;
    if (i % 3 == 0) context.Separators = {"=", "'"};
    if (i % 4 == 0) context.Before = "Trait = 1,";
    std::size_t end = 0;
    for (const ScriptToken& token : TokensOfLine(line, context)) {
      ASSERT_LE(end, token.Begin) << line;
      ASSERT_LT(token.Begin, token.End) << line;
      end = token.End;
    }
    ASSERT_LE(end, Utf16Length(line));
  }
}

// Each of these was read again and again by one careless way or another.
TEST(ScriptTokens, TakeALongLineInOneGo) {
  for (const char* piece :
       {"IF 1=1 THEN ", "%{A}", "Couleur = Rouge§", "1,", "%%", "'", "%A+", ":", "\xFF", "§", "RVB "}) {
    for (const char* head : {"", "Couleur = ", "Texte = ,,,,", "Grad1 = ", "%A = "}) {
      std::string line = head;
      while (line.size() < 200'000) line += piece;
      const std::clock_t begin = std::clock();
      TokensOfLine(line, {});
      EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 1.5) << head << piece;
    }
  }
}

}  // namespace
}  // namespace vaxel::test
