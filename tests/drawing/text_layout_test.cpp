#include "drawing/text_layout.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vaxel {
namespace {

TEST(TextLayout, LeavesOutWhatNoOutputCanHold) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain", "plain"},
      {"a\tb\r\nc\x01\x7F", "a bc"},
      {"\xC2\x81\xE2\x80\xA8Ω\xEF\xBF\xBE\xEF\xB7\x90", "Ω"},
      {"\xF0\x9F\x98\x80\xF0\x9F\xBF\xBF", "\xF0\x9F\x98\x80"},
      // A lone byte, a surrogate written as UTF-8, a sequence that is cut off.
      {"\xFFx", "\xEF\xBF\xBDx"},
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD"}};
  for (const auto& [text, drawable] : cases) EXPECT_EQ(DrawableText(text), drawable) << text;
}

TEST(TextLayout, MarksStayWithTheirLetters) {
  using Characters = std::vector<std::string_view>;
  EXPECT_EQ(CharactersOf("aé"), (Characters{"a", "é"}));
  EXPECT_EQ(CharactersOf("e\u0301x"), (Characters{"e\u0301", "x"}));
  EXPECT_EQ(CharactersOf("\u0301x"), (Characters{"\u0301", "x"}));
  EXPECT_EQ(CharactersOf("a\u200Dbc"), (Characters{"a\u200Db", "c"}));
}

TEST(TextLayout, SuperscriptsAreSetAlikeWithinARow) {
  const auto pieces = [](std::string_view text) {
    std::string result;
    for (const TextPiece& piece : PiecesOf(text, *StandardFace({"Arial", false, false}))) {
      result += (piece.Rise > 0 ? "^" : "_") + piece.Text;
    }
    return result;
  };
  EXPECT_EQ(pieces("cm² 10¹²"), "_cm² 10¹²");
  EXPECT_EQ(pieces("10¹⁴ Hz"), "_10^14_ Hz");
  EXPECT_EQ(pieces("⁻⁰x"), "^−0_x");
}

// Widths in 1/2048 as published for the fonts that every system's Times New Roman, Arial and Courier New
// match.
TEST(StandardFaces, AreAsWideAsPublished) {
  const auto width = [](const char* name, bool bold, bool italic, const char* text) {
    const FaceTable* face = StandardFace({name, bold, italic});
    return face ? face->Width(text).value_or(-1) * 2048 : -2;
  };
  EXPECT_EQ(width("times new roman", false, false, "0.A"), 1024 + 512 + 1479);
  EXPECT_EQ(width("Times New Roman", true, false, "0A"), 1024 + 1479);
  EXPECT_EQ(width("Times New Roman", false, true, "A"), 1251);
  EXPECT_EQ(width("Times New Roman", true, true, "A"), 1366);
  EXPECT_EQ(width("ARIAL", false, false, "0%°"), 1139 + 1821 + 819);
  EXPECT_EQ(width("Arial", true, false, "A"), 1479);
  EXPECT_EQ(width("Courier New", false, false, "iW°µЖ"), 5 * 1229);
  EXPECT_EQ(width("Arial", false, false, "中"), -2048);
  EXPECT_EQ(width("Arial Narrow", false, false, "A"), -2);
}

}  // namespace
}  // namespace vaxel
