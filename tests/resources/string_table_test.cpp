#include "resources/string_table.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr int English = LanguageBlock;
constexpr int Added = BuiltInLanguages * LanguageBlock;

// "LINE:FAULT" of each problem.
std::string Problems(const std::vector<LineProblem>& problems) {
  std::string text;
  for (const LineProblem& problem : problems) {
    if (!text.empty()) text += ' ';
    text += std::to_string(problem.Line) + ":" + std::to_string(static_cast<int>(problem.Fault));
  }
  return text;
}

std::string AddTo(StringTable& table, std::string_view text, std::string_view code = "de") {
  return Problems(table.AddLanguage(code, text));
}

TEST(StringTable, EveryTextIsWhole) {
  const StringTable table;
  for (int id = 0; id < Added; ++id) {
    const std::string_view text = table.Text(id);
    EXPECT_TRUE(IsValidUtf8(text)) << id;
    // Both ends of a text that others are put behind are those of the French one.
    const std::string_view french = table.Text(id % LanguageBlock);
    EXPECT_EQ(text.ends_with(' '), french.ends_with(' ')) << id;
    EXPECT_EQ(text.find_first_not_of(' '), french.find_first_not_of(' ')) << id;
  }
  for (int id : {-1, -300, 0, 84, Added, Added + LanguageNameId, 1 << 30})
    EXPECT_EQ(table.Text(id), "") << id;
}

TEST(StringTable, PutsValuesIn) {
  StringTable table;
  EXPECT_EQ(table.Text(English + 101, "a%2%1.dat", "gone"), "The file a%2%1.dat cannot be read: gone");
  EXPECT_EQ(table.Text(English + 193, "x"), "A list is a variable (%Name): x");
}

TEST(StringTable, KnowsLanguagesByTheirCode) {
  StringTable table;
  EXPECT_EQ(table.BaseOfCode("fr"), 0);
  EXPECT_EQ(table.BaseOfCode("ES"), 600);
  EXPECT_EQ(table.BaseOfCode("de"), -1);
  EXPECT_EQ(table.BaseOfCode(""), -1);
  EXPECT_EQ(AddTo(table, "5=Deutsch"), "");
  EXPECT_EQ(table.BaseOfCode("de"), Added);
}

TEST(StringTable, AddsALanguage) {
  StringTable table;
  const std::string_view early = table.Text(English + 118);
  EXPECT_EQ(AddTo(table,
                  "\xEF\xBB\xBF' Vaxel auf Deutsch\r\n"
                  "5 = Deutsch\r"
                  "\r\n"
                  "  10=&Datei  \n"
                  "114 = Fehler in der Zeile:\n"
                  "161 = Reihenfolge der Befehle:\\n FormatI =\n"
                  "101\t= %2: %1"),
            "");
  EXPECT_EQ(table.LanguageCount(), 4);
  for (int base : {0, English, 600, Added}) EXPECT_EQ(table.Text(base + LanguageCountId), "4");
  EXPECT_EQ(table.Text(Added + LanguageNameId), "Deutsch");
  EXPECT_EQ(table.Text(Added + LanguageCodeId), "de");
  EXPECT_EQ(table.Text(Added + 10), "&Datei");
  EXPECT_EQ(table.Text(Added + 114), "Fehler in der Zeile: ");
  EXPECT_EQ(table.Text(Added + 161), "     Reihenfolge der Befehle:\n FormatI =");
  EXPECT_EQ(table.Text(Added + 101, "a", "b"), "b: a");
  EXPECT_EQ(table.Text(Added + 118), "Save the changes?");
  EXPECT_EQ(table.Text(Added + 9), "");
  EXPECT_EQ(table.Text(Added + LanguageBlock + 5), "");
  EXPECT_EQ(early.data(), table.Text(English + 118).data());

  EXPECT_EQ(AddTo(table, "5 = Italiano", "it"), "");
  EXPECT_EQ(table.Text(Added + LanguageBlock + LanguageNameId), "Italiano");
  EXPECT_EQ(table.Text(Added + LanguageCountId), "5");
  EXPECT_EQ(table.Text(Added + 10), "&Datei");
}

TEST(StringTable, ReportsWrongLinesAndKeepsTheirEnglishText) {
  StringTable table;
  EXPECT_EQ(AddTo(table,
                  "5 = Deutsch\n"         // 1
                  "Datei\n"               // 2: no number
                  "zehn = Datei\n"        // 3
                  "= Datei\n"             // 4
                  "-10 = Datei\n"         // 5
                  "10 =  \n"              // 6: no text
                  "9 = x\n"               // 7: unknown
                  "300 = x\n"             // 8
                  "4294967306 = x\n"      // 9: 10 in 32 bits
                  "8 = xx\n"              // 10: the file's name says it
                  "101 = nur %1\n"        // 11: other placeholders
                  "105 = Dateien %1\n"    // 12
                  "101 = %%1 und %%2\n"   // 13: signs, not placeholders
                  "106 = Alle Dateien\n"  // 14
                  "106 = Andere\n"        // 15: twice
                  "0010 = &Datei"),       // 16: a good one
            "2:287 3:287 4:287 5:287 6:287 7:288 8:288 9:288 10:288 11:289 12:289 13:289 15:290");
  EXPECT_EQ(table.Text(Added + 10), "&Datei");
  EXPECT_EQ(table.Text(Added + 101), table.Text(English + 101));
  EXPECT_EQ(table.Text(Added + 105), "Vaxel files");
  EXPECT_EQ(table.Text(Added + 106), "Alle Dateien");
  EXPECT_EQ(table.Text(Added + LanguageCodeId), "de");
}

TEST(StringTable, RefusesWhatIsNoLanguage) {
  StringTable table;
  EXPECT_EQ(AddTo(table, ""), "0:295");
  EXPECT_EQ(AddTo(table, "10 = &Datei\nx"), "0:295 2:287");
  EXPECT_EQ(AddTo(table, "5 = Deutsch", "FR"), "0:294");
  EXPECT_EQ(AddTo(table, "5 = FRANÇAIS"), "0:294");
  for (std::string_view code : {"", "d e", "../x", "ninechars", "\xC3\xA9"}) {
    EXPECT_EQ(AddTo(table, "5 = Deutsch", code), "0:293");
  }
  EXPECT_EQ(AddTo(table, std::string_view("5 = Deutsch\n10 = \0", 18)), "0:292");
  EXPECT_EQ(AddTo(table,
                  "5 = Fran\xE7"
                  "ais bis"),
            "0:292");
  EXPECT_EQ(AddTo(table, "5 = Deutsch\n10 = &" + std::string(1 << 20, 'x')), "0:291");
  EXPECT_EQ(table.LanguageCount(), BuiltInLanguages);

  for (int i = 0; i < MaxAddedLanguages; ++i) {
    EXPECT_EQ(AddTo(table, "5 = Language " + std::to_string(i), "x" + std::to_string(i)), "");
  }
  EXPECT_EQ(AddTo(table, "5 = Deutsch"), "0:296");
  EXPECT_EQ(table.Text(LanguageCountId), "63");
}

TEST(StringTable, TakesHostileFilesWithinBounds) {
  StringTable longLines;
  EXPECT_EQ(AddTo(longLines, "5 = Deutsch\n10 = &" + std::string(1'000'000, 'x')), "");
  StringTable wrongLines;
  std::string file = "5 = Deutsch\n";
  while (file.size() < 1'000'000) file += "x\r";
  EXPECT_EQ(wrongLines.AddLanguage("de", file).size(), 100U);
  EXPECT_EQ(wrongLines.LanguageCount(), 4);

  std::mt19937 random(7);
  const std::vector<std::string> parts = {"5",   "=",  " ",    "\n",   "\r",     "101", "%1", "%2",
                                          "\\n", "\\", "'",    "%",    "999999", "\t",  "é",  "\xEF\xBB\xBF",
                                          "-",   "3",  "\xC3", "Name", "10 = "};
  for (int round = 0; round < 3000; ++round) {
    StringTable table;
    std::string text = random() % 2 ? "5 = Deutsch\n" : "";
    for (std::size_t count = random() % 60; count > 0; --count) text += parts[random() % parts.size()];
    const std::vector<LineProblem> problems = table.AddLanguage("de", text);
    const bool isRefused = !problems.empty() && problems.front().Line == 0;
    ASSERT_EQ(table.LanguageCount(), isRefused ? 3 : 4) << text;
    if (isRefused) continue;
    for (const StringRow& row : StringRows) ASSERT_FALSE(table.Text(Added + row.Id).empty()) << text;
    const std::string filled = table.Text(Added + 101, "one", "two");
    ASSERT_TRUE(filled.find("one") != std::string::npos && filled.find("two") != std::string::npos) << text;
  }
}

}  // namespace
}  // namespace vaxel
