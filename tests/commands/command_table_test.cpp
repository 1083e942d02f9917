#include "commands/command_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

#include "base/text.h"

namespace vaxel {
namespace {

TEST(CommandTable, EveryRowIsFoundByItsKeyword) {
  for (const CommandRow& row : CommandTable()) {
    EXPECT_EQ(AllCommands().Find(row.Keyword), &row) << row.Keyword;
    EXPECT_NE(AllCommands().Find(UpperCase(row.Spelling())), nullptr) << row.Spelling();
  }
  EXPECT_EQ(AllCommands().Find("%ANY")->Keyword, "%");
  for (const char* unknown : {"", "ARCS", "CERCLE ", "A%"})
    EXPECT_EQ(AllCommands().Find(unknown), nullptr) << unknown;
}

// The words with which the parts in code begin that stand in the first cells of a text's tables.
std::set<std::string, std::less<>> WordsOfTables(const std::string& text) {
  std::set<std::string, std::less<>> words;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("| `")) continue;
    line.resize(line.find(" | "));
    for (std::size_t mark = 0; (mark = line.find('`', mark)) != std::string::npos; ++mark) {
      const std::size_t end = line.find_first_of(" `", ++mark);
      words.insert(line.substr(mark, end - mark));
      mark = line.find('`', mark);
    }
  }
  return words;
}

// The manual tells the additions from the others: in sections that say so.
TEST(CommandTable, AdditionsStandInTheManualAsSuch) {
  std::ifstream file(std::filesystem::path(VAXEL_SOURCE_DIR) / "docs/manual.md");
  const std::string manual{std::istreambuf_iterator<char>(file), {}};
  std::set<std::string, std::less<>> words;
  constexpr const char* said = "The commands of this section are additions";
  for (std::size_t at = 0; (at = manual.find(said, at)) != std::string::npos;) {
    const std::size_t end = manual.find("\n### ", at);
    words.merge(WordsOfTables(manual.substr(at, end - at)));
    at = end;
  }
  int count = 0;
  for (const CommandRow& row : CommandTable()) {
    EXPECT_EQ(words.contains(row.Keyword), row.Rules.IsAddition) << row.Keyword;
    count += row.Rules.IsAddition ? 1 : 0;
  }
  EXPECT_GE(count, 8);
}

TEST(CommandTable, SuggestsTheNearestKeyword) {
  EXPECT_EQ(AllCommands().Suggest("TRIAT"), "Trait");
  EXPECT_EQ(AllCommands().Suggest("SEPARATOR"), "Separateur");
  EXPECT_EQ(AllCommands().Suggest("GRDA"), "Grad");
  EXPECT_EQ(AllCommands().Suggest("ZZZZZZ"), "");
  EXPECT_EQ(AllCommands().Suggest(std::string(1000, 'A')), "");
}

}  // namespace
}  // namespace vaxel
