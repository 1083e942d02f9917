#include "interpreter/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "base/text_encoding.h"
#include "interpreter/command_row.h"
#include "interpreter/variables.h"

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

// Two keywords, of which the second came when there were scripts with such a label.
class TwoCommands : public CommandSet {
 public:
  const CommandRow* Find(std::string_view keyword) const override {
    for (const CommandRow* row : {&old_, &young_}) {
      if (EqualIgnoringCase(keyword, row->Keyword)) return row;
    }
    return nullptr;
  }
  std::string_view Suggest(std::string_view) const override { return {}; }

 private:
  CommandRow old_{.Keyword = "Arc"};
  CommandRow young_{.Keyword = "Coche", .Rules = {.IsAddition = true}};
};

TEST(LineReader, KnowsLabelLines) {
  const TwoCommands commands;
  for (const char* line : {"Fin:", "Fin : ' end", "a b: c", "Fin: ' x = 3", "Fin:glued", "Arc:", "Arc: c",
                           "Coche:", "Coche: c", "coche :", "coche  : c"}) {
    const auto label = ReadLabelLine(line, commands, {});
    EXPECT_TRUE(label && label->IsTarget) << line;
  }
  for (const char* line : {"Fin", "Arc = 1:2", "Fin ' a: b", "%A = C:", "Fin: a = 3", "Arc :", "Arc:1",
                           "Coche:1", "coche :1", "Coche a:", "a, b:", "a§b:"}) {
    EXPECT_FALSE(ReadLabelLine(line, commands, {})) << line;
  }
  EXPECT_FALSE(ReadLabelLine("a;b:", commands, {.First = ";"}));
  // It is passed over, but no jump finds it.
  const auto passed = ReadLabelLine("Fin: = 3", commands, {});
  EXPECT_TRUE(passed && !passed->IsTarget);
}

}  // namespace
}  // namespace vaxel
