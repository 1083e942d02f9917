#include "app/keyword_spelling.h"

#include <gtest/gtest.h>

#include "app/utf16_offsets.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "tests/support/sample_lines.h"

namespace vaxel::test {
namespace {

std::string Spelled(std::string line, const LineContext& context = {}) {
  const auto edit = SpellKeywords(line, context);
  if (!edit) return line;
  const std::size_t begin = ByteAtUnit(line, edit->Begin), end = ByteAtUnit(line, edit->End);
  return line.replace(begin, end - begin, edit->Text);
}

TEST(KeywordSpelling, ChangesKeywordsAndNothingElse) {
  const std::pair<const char*, const char*> cases[] = {
      {"  CERCLE = 0,0,é ' CERCLE", "  Cercle = 0,0,é ' CERCLE"},
      {"\tsi %a=1 then SIT %b = cercle Then texte = trait",
       "\tIF %a=1 then IFT %b = cercle Then Texte = trait"},
      {"SI 1=1 goto fin", "IF 1=1 goto fin"},
      {"+ = 0,0,3", "Plus = 0,0,3"},
      {"trait:", "trait:"},
      {"pour : reste", "pour : reste"},
      {"si", "IF"},
      {"trate = 1", "trate = 1"},
      {"' trait = 1", "' trait = 1"},
      {"%arc = trait", "%arc = trait"},
      {"%arc", "%arc"},
      {"npage", "NPage"},
      {"", ""}};
  for (const auto& [line, spelled] : cases) EXPECT_EQ(Spelled(line), spelled) << line;
}

TEST(KeywordSpelling, LeavesTheRestOfACommandAlone) {
  LineContext context;
  context.Before = "texte = 0,0,,, ";
  EXPECT_EQ(Spelled("trait = 1", context), "trait = 1");
  context.Before = "si 1=1 ";
  EXPECT_EQ(Spelled(" 😀 then arc=1,2,3", context), " 😀 then Arc=1,2,3");
}

TEST(KeywordSpelling, KnowsEveryKeyword) {
  for (const CommandRow& row : CommandTable()) {
    if (row.Keyword == "%") continue;
    const std::string line = SampleLine(row, FormsOf(row).front());
    const std::string rest = line.substr(row.Keyword.size());
    EXPECT_EQ(Spelled(UpperCase(row.Keyword) + rest), std::string(row.Spelling()) + rest);
    EXPECT_FALSE(SpellKeywords(std::string(row.Spelling()) + rest, {})) << line;
  }
}

}  // namespace
}  // namespace vaxel::test
