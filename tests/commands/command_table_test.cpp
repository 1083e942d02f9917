#include "commands/command_table.h"

#include <gtest/gtest.h>

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

TEST(CommandTable, SuggestsTheNearestKeyword) {
  EXPECT_EQ(AllCommands().Suggest("TRIAT"), "Trait");
  EXPECT_EQ(AllCommands().Suggest("SEPARATOR"), "Separateur");
  EXPECT_EQ(AllCommands().Suggest("GRDA"), "Grad");
  EXPECT_EQ(AllCommands().Suggest("ZZZZZZ"), "");
  EXPECT_EQ(AllCommands().Suggest(std::string(1000, 'A')), "");
}

}  // namespace
}  // namespace vaxel
