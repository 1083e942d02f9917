#include "interpreter/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interpreter/label_table.h"
#include "interpreter/script_fault.h"
#include "interpreter/text_encoding.h"

namespace vaxel {
namespace {

// "NUMBER:text" of every logical line; "!" before the one that is unfinished.
std::vector<std::string> LinesOf(const std::string& script) {
  const std::string text = NormaliseLineEnds(script);
  LineReader reader(text);
  LogicalLine line;
  std::vector<std::string> lines;
  for (;;) {
    const LineReader::Result result = reader.Next(line);
    if (result == LineReader::Result::End) return lines;
    const std::string mark = result == LineReader::Result::Unfinished ? "!" : "";
    lines.push_back(mark + std::to_string(line.Number) + ":" + std::string(line.Text));
    if (!mark.empty()) return lines;
  }
}

using Lines = std::vector<std::string>;

TEST(LineReader, CutsATextIntoLogicalLines) {
  EXPECT_EQ(LinesOf(""), Lines{});
  EXPECT_EQ(LinesOf("\r\n \t \r\n' only\r\n\t'a comment"), Lines{});
  EXPECT_EQ(LinesOf("  Arc=0,90,50\r\n\r\nX\t=1"), (Lines{"1:Arc=0,90,50", "3:X =1"}));
  // LF and CR alone end lines too, also mixed, and a last line needs no end.
  EXPECT_EQ(LinesOf("a\nb\rc\r\nd\r"), (Lines{"1:a", "2:b", "3:c", "4:d"}));
}

TEST(LineReader, JoinsContinuations) {
  EXPECT_EQ(LinesOf("Trait = 0,0, _\r\n  10,10\r\nX"), (Lines{"1:Trait = 0,0,  10,10", "3:X"}));
  EXPECT_EQ(LinesOf("a _\n\tb _\nc\nd"), (Lines{"1:a bc", "4:d"}));
  // Without its blank, or with one behind it, the underscore is an ordinary character.
  EXPECT_EQ(LinesOf("a_\nb _ \nc"), (Lines{"1:a_", "2:b _ ", "3:c"}));
  // A comment is continued as any line is.
  EXPECT_EQ(LinesOf("' note _\nArc = 1\nX"), Lines{"3:X"});
  EXPECT_EQ(LinesOf("X\nArc = 1 _"), (Lines{"1:X", "!2:Arc = 1 _"}));
  EXPECT_EQ(LinesOf("Arc = 1 _\n"), Lines{"!1:Arc = 1 _"});
}

TEST(LineReader, SplitsKeywordAndParameters) {
  struct Case {
    const char* Line;
    const char* Keyword;
    const char* Parameters;
  };
  const Case cases[] = {{"Arc=0,90,50", "Arc", "0,90,50"},
                        {"arc = 0, 90, 50", "arc", " 0, 90, 50"},
                        {"Goto Fin", "Goto", "Fin"},
                        {"NPage", "NPage", ""},
                        {"IF %A = 3 GOTO Fin", "IF", "%A = 3 GOTO Fin"},
                        {"ift %A=3 THEN X", "ift", "%A=3 THEN X"},
                        {"SI 1 = 1 GOTO 12", "SI", "1 = 1 GOTO 12"},
                        {"%N == 2*3", "%N", "= 2*3"},
                        {"%it's = 3", "%it's", " 3"},
                        {"Texte = 1,2,,,a = b", "Texte", " 1,2,,,a = b"},
                        // The "=" of a comment is not the command's.
                        {"Inversion ' side = left", "Inversion", "' side = left"}};
  for (const Case& c : cases) {
    const CommandLine command = SplitCommand(c.Line);
    EXPECT_EQ(command.Keyword, c.Keyword) << c.Line;
    EXPECT_EQ(command.Parameters, c.Parameters) << c.Line;
  }
}

TEST(LineReader, KnowsLabelLines) {
  for (const char* line : {"Fin:", "Fin : ' end", "a b: c", "Fin: ' x = 3"})
    EXPECT_TRUE(IsLabelLine(line)) << line;
  for (const char* line : {"Fin", "Arc = 1:2", "Fin ' a: b", "%A = C:"})
    EXPECT_FALSE(IsLabelLine(line)) << line;
}

LabelTable Collect(const std::string& text) {
  LineReader reader(text);
  LogicalLine line;
  LabelTable labels;
  labels.Collect(reader, line);
  return labels;
}

TEST(LabelTable, FindsLabelsByNameWithoutRegardToCase) {
  const std::string text = "X\n  début:\nFin : rest\nFIN:\n' note:\nIF %A = 1 GOTO fin";
  const LabelTable labels = Collect(text);
  EXPECT_EQ(labels.Count(), 3U);
  ASSERT_NE(labels.Find("DÉBUT"), nullptr);
  EXPECT_EQ(labels.Find("Début")->LineNumber, 2U);
  EXPECT_EQ(labels.Find("Début")->Position, 2U);
  EXPECT_EQ(labels.Find("fin")->LineNumber, 4U);
  EXPECT_EQ(labels.Find("fin ")->LineNumber, 3U);
  EXPECT_EQ(labels.Find("note"), nullptr);
}

TEST(LabelTable, KnowsNoLabelBehindALineThatHoldsStop) {
  EXPECT_EQ(Collect("a:\nTexte = 0,0,,,nonSTOPping\nb:").Find("b"), nullptr);
  EXPECT_NE(Collect("a:\nX = 1 ' stop\nb:").Find("b"), nullptr);
  EXPECT_NE(Collect("a:\nnonstop:\nb:").Find("nonstop"), nullptr);
}

TEST(LabelTable, RefusesASecondLabelOfOneName) {
  const std::string text = "X\nfin:\nX\nFin:\n";
  LineReader reader(text);
  LogicalLine line;
  LabelTable labels;
  EXPECT_THROW(labels.Collect(reader, line), ScriptFault);
  EXPECT_EQ(line.Number, 4U);
}

}  // namespace
}  // namespace vaxel
