#include "resources/string_table.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/utf8.h"
#include "tests/support/language_line.h"

namespace vaxel {
namespace {

using test::LineOf;
using test::NumberOf;
using enum TextId;

constexpr int English = LanguageBlock, Spanish = 2 * LanguageBlock;
constexpr int Added = BuiltInLanguages * LanguageBlock;

std::string_view NameOf(TextId id) {
  switch (id) {
#define VAXEL_STRING(name, number, french, english, spanish) \
  case TextId::name:                                         \
    return #name;
#include "resources/strings.def"
    case TextId::None:
      break;
  }
  return "None";
}

// "FAULT LINE LINE, FAULT LINE" of the problems; the line 0 is the file as a whole.
std::string Problems(const std::vector<LineProblem>& problems) {
  std::string text;
  TextId fault = TextId::None;
  for (const LineProblem& problem : problems) {
    if (problem.Fault != fault) text.append(text.empty() ? "" : ", ").append(NameOf(problem.Fault));
    text += " " + std::to_string(problem.Line);
    fault = problem.Fault;
  }
  return text;
}

std::string AddTo(StringTable& table, std::string_view text, std::string_view code = "de") {
  return Problems(table.AddLanguage(code, text));
}

TEST(StringTable, EveryTextIsWhole) {
  const StringTable table;
  for (const StringRow& row : StringRows) {
    const std::string_view french = table.Text(0, row.Id);
    for (int base : {0, English, Spanish}) {
      const std::string_view text = table.Text(base, row.Id);
      EXPECT_TRUE(!text.empty() && IsValidUtf8(text)) << NameOf(row.Id);
      // Both ends of a text that others are put behind are those of the French one.
      EXPECT_EQ(text.ends_with(' '), french.ends_with(' ')) << NameOf(row.Id);
      EXPECT_EQ(text.find_first_not_of(' '), french.find_first_not_of(' ')) << NameOf(row.Id);
    }
  }
  const int inAnotherBlock = English + static_cast<int>(MenuFile);
  for (int id : {-300, -1, 0, 84, inAnotherBlock, FirstLaterId - 1, FirstLaterId + English, 0x7FFF})
    EXPECT_EQ(table.Text(0, static_cast<TextId>(id)), "") << id;
  for (int base : {-300, 1, Added, 1 << 30}) EXPECT_EQ(table.Text(base, MenuFile), "") << base;
}

TEST(StringTable, PutsValuesIn) {
  StringTable table;
  EXPECT_EQ(table.Text(English, CannotRead, "a%2%1.dat", "gone"), "The file a%2%1.dat cannot be read: gone");
  EXPECT_EQ(table.Text(English, NotAList, "x"), "A list is a variable (%Name): x");
  EXPECT_EQ(table.Text(English, CliNotAChoice, "--%3", "%1", "a|b"), "--%3: '%1' is none of a|b");
}

TEST(StringTable, KnowsLanguagesByTheirCode) {
  StringTable table;
  EXPECT_EQ(table.BaseOfCode("fr"), 0);
  EXPECT_EQ(table.BaseOfCode("ES"), 600);
  EXPECT_EQ(table.BaseOfCode("de"), -1);
  EXPECT_EQ(table.BaseOfCode(""), -1);
  EXPECT_EQ(AddTo(table, NumberOf(LanguageName) + "=Deutsch"), "");
  EXPECT_EQ(table.BaseOfCode("de"), Added);
}

TEST(StringTable, AddsALanguage) {
  StringTable table;
  const std::string_view early = table.Text(English, SaveChanges);
  EXPECT_EQ(
      AddTo(table, "\xEF\xBB\xBF' Vaxel auf Deutsch\r\n" + NumberOf(LanguageName) + " = Deutsch\r" + "\r\n" +
                       "  " + NumberOf(MenuFile) + "=&Datei  \n" +
                       LineOf(ErrorInLine, "Fehler in der Zeile:") +
                       LineOf(OrderOfCommands, "Reihenfolge der Befehle:\\n FormatI =") +
                       NumberOf(CannotRead) + "\t= %2: %1\n" + NumberOf(IsFolder) + " = es ist ein Ordner"),
      "");
  EXPECT_EQ(table.LanguageCount(), 4);
  for (int base : {0, English, Spanish, Added}) EXPECT_EQ(table.Text(base, LanguageCount), "4");
  EXPECT_EQ(table.Text(Added, LanguageName), "Deutsch");
  EXPECT_EQ(table.Text(Added, LanguageCode), "de");
  EXPECT_EQ(table.Text(Added, MenuFile), "&Datei");
  EXPECT_EQ(table.Text(Added, ErrorInLine), "Fehler in der Zeile: ");
  EXPECT_EQ(table.Text(Added, OrderOfCommands), "     Reihenfolge der Befehle:\n FormatI =");
  EXPECT_EQ(table.Text(Added, CannotRead, "a", "b"), "b: a");
  EXPECT_EQ(table.Text(Added, SaveChanges), "Save the changes?");
  EXPECT_EQ(table.Text(Added, IsFolder), "es ist ein Ordner");
  EXPECT_EQ(table.Text(Added, IsReadOnly), "it is read-only");
  EXPECT_EQ(table.Text(Added, static_cast<TextId>(9)), "");
  EXPECT_EQ(table.Text(Added + LanguageBlock, LanguageName), "");
  EXPECT_EQ(early.data(), table.Text(English, SaveChanges).data());

  EXPECT_EQ(AddTo(table, LineOf(LanguageName, "Italiano"), "it"), "");
  EXPECT_EQ(table.Text(Added + LanguageBlock, LanguageName), "Italiano");
  EXPECT_EQ(table.Text(Added, LanguageCount), "5");
  EXPECT_EQ(table.Text(Added, MenuFile), "&Datei");
}

TEST(StringTable, ReportsWrongLinesAndKeepsTheirEnglishText) {
  StringTable table;
  const std::string lines[] = {
      LineOf(LanguageName, "Deutsch"),                                      // 1
      "Datei\n",                                                            // 2: no number
      "zehn = Datei\n",                                                     // 3
      "= Datei\n",                                                          // 4
      "-" + LineOf(MenuFile, "Datei"),                                      // 5
      LineOf(MenuFile, " "),                                                // 6: no text
      "9 = x\n",                                                            // 7: unknown
      std::to_string(FirstLaterId + LanguageBlock) + " = x\n",              // 8
      std::to_string((1LL << 32) + static_cast<int>(MenuFile)) + " = x\n",  // 9: one of them in 32 bits
      std::to_string((1LL << 16) + static_cast<int>(MenuFile)) + " = x\n",  // 10: in 16
      LineOf(LanguageCode, "xx"),                                           // 11: the file's name says it
      LineOf(CannotRead, "nur %1"),                                         // 12: other placeholders
      LineOf(VaxelFiles, "Dateien %1"),                                     // 13
      LineOf(CannotRead, "%%1 und %%2"),                                    // 14: signs, not placeholders
      LineOf(CliNotAChoice, "%1 und %2"),                                   // 15
      LineOf(AllFiles, "Alle Dateien"),                                     // 16
      LineOf(AllFiles, "Andere"),                                           // 17: twice
      "00" + LineOf(MenuFile, "&Datei"),                                    // 18: a good one
  };
  std::string file;
  for (const std::string& line : lines) file += line;
  EXPECT_EQ(
      AddTo(table, file),
      "LanguageLineUnreadable 2 3 4 5 6, LanguageIdUnknown 7 8 9 10 11, LanguagePlaceholders 12 13 14 15, "
      "LanguageTextRepeated 17");
  EXPECT_EQ(table.Text(Added, MenuFile), "&Datei");
  EXPECT_EQ(table.Text(Added, CannotRead), table.Text(English, CannotRead));
  EXPECT_EQ(table.Text(Added, VaxelFiles), "Vaxel files");
  EXPECT_EQ(table.Text(Added, AllFiles), "Alle Dateien");
  EXPECT_EQ(table.Text(Added, LanguageCode), "de");
}

TEST(StringTable, RefusesWhatIsNoLanguage) {
  StringTable table;
  const std::string name = LineOf(LanguageName, "Deutsch");
  EXPECT_EQ(AddTo(table, ""), "LanguageNameMissing 0");
  EXPECT_EQ(AddTo(table, LineOf(MenuFile, "&Datei") + "x"),
            "LanguageNameMissing 0, LanguageLineUnreadable 2");
  EXPECT_EQ(AddTo(table, name, "FR"), "LanguageExists 0");
  EXPECT_EQ(AddTo(table, LineOf(LanguageName, "FRANÇAIS")), "LanguageExists 0");
  for (std::string_view code : {"", "d e", "../x", "ninechars", "\xC3\xA9"}) {
    EXPECT_EQ(AddTo(table, name, code), "LanguageCodeWrong 0");
  }
  EXPECT_EQ(AddTo(table, name + '\0'), "LanguageFileNotAText 0");
  EXPECT_EQ(AddTo(table, LineOf(LanguageName,
                                "Fran\xE7"
                                "ais bis")),
            "LanguageFileNotAText 0");
  EXPECT_EQ(AddTo(table, name + LineOf(MenuFile, "&" + std::string(1 << 20, 'x'))), "LanguageFileTooLarge 0");
  EXPECT_EQ(table.LanguageCount(), BuiltInLanguages);

  for (int i = 0; i < MaxAddedLanguages; ++i) {
    EXPECT_EQ(AddTo(table, LineOf(LanguageName, "Language " + std::to_string(i)), "x" + std::to_string(i)),
              "");
  }
  EXPECT_EQ(AddTo(table, name), "TooManyLanguages 0");
  EXPECT_EQ(table.Text(0, LanguageCount), "63");
}

TEST(StringTable, TakesHostileFilesWithinBounds) {
  const std::string name = LineOf(LanguageName, "Deutsch");
  StringTable longLines;
  EXPECT_EQ(AddTo(longLines, name + LineOf(MenuFile, "&" + std::string(1'000'000, 'x'))), "");
  StringTable wrongLines;
  std::string file = name;
  while (file.size() < 1'000'000) file += "x\r";
  EXPECT_EQ(wrongLines.AddLanguage("de", file).size(), 100U);
  EXPECT_EQ(wrongLines.LanguageCount(), 4);
  const auto withoutName = StringTable().AddLanguage("fi", file.substr(name.size()));
  ASSERT_EQ(withoutName.size(), 100U);
  EXPECT_EQ(withoutName.front().Fault, LanguageNameMissing);

  std::mt19937 random(7);
  const std::vector<std::string> parts = {NumberOf(LanguageName),
                                          "=",
                                          " ",
                                          "\n",
                                          "\r",
                                          NumberOf(CannotRead),
                                          "%1",
                                          "%2",
                                          "\\n",
                                          "\\",
                                          "'",
                                          "%",
                                          "999999",
                                          "\t",
                                          "é",
                                          "\xEF\xBB\xBF",
                                          "-",
                                          NumberOf(LanguageCount),
                                          "\xC3",
                                          "Name",
                                          NumberOf(MenuFile) + " = "};
  for (int round = 0; round < 3000; ++round) {
    StringTable table;
    std::string text = random() % 2 ? name : "";
    for (std::size_t count = random() % 60; count > 0; --count) text += parts[random() % parts.size()];
    const std::vector<LineProblem> problems = table.AddLanguage("de", text);
    const bool isRefused = !problems.empty() && problems.front().Line == 0;
    ASSERT_EQ(table.LanguageCount(), isRefused ? 3 : 4) << text;
    if (isRefused) continue;
    for (const StringRow& row : StringRows) ASSERT_FALSE(table.Text(Added, row.Id).empty()) << text;
    const std::string filled = table.Text(Added, CannotRead, "one", "two");
    ASSERT_TRUE(filled.find("one") != std::string::npos && filled.find("two") != std::string::npos) << text;
  }
}

}  // namespace
}  // namespace vaxel
