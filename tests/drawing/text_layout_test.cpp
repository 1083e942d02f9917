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

}  // namespace
}  // namespace vaxel
