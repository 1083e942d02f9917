#include "app/configuration.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "tests/support/test_folder.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::vector<std::string> Languages = {"Français", "English", "Castellano"};
const std::string Head = "'Fichier de configuration du Programme Vaxel V1.2a\r\n";

Configuration Read(const std::string& text, bool isNt = true) {
  return ReadConfiguration(text, Languages, "1.2a", isNt);
}

// What differs from a configuration of which nothing is known, on an NT system.
std::string Shown(const Configuration& c) {
  std::ostringstream text;
  if (c.LangIndex != 0 || c.LangBase != 0) text << "lang " << c.LangIndex << "+" << c.LangBase << "; ";
  if (c.HelpLangIndex != 0) text << "help " << c.HelpLangIndex << "+" << c.HelpLangBase << "; ";
  if (!c.CurrentFile.empty()) text << "file <" << c.CurrentFile << ">; ";
  if (c.DoubleClick) text << "double; ";
  if (c.Zmm != 1) text << "zmm " << c.Zmm << "; ";
  if (c.CodeFontSize != 0) text << "font " << c.CodeFontSize << "; ";
  if (c.Patchs != 3) text << "patchs " << c.Patchs << "; ";
  if (c.PatchFlags.any()) text << "flags " << c.PatchFlags.to_ulong() << "; ";
  return text.str();
}

TEST(Configuration, IsReadLineByLine) {
  const struct {
    std::string Lines;  // below a head of the running version
    const char* Expected;
  } cases[] = {
      {"", ""},
      {"langue = english", "lang 2+300; "},
      {"LANGUE =  FRANÇAIS  \nlangueaide =français", "lang 1+0; help 1+0; "},
      {"Langue=English\nLangue  = English", ""},
      {"Langue = Klingon\nLangueAide =", ""},
      {"Langue = English\nLangue = Klingon", "lang 2+300; "},
      {"LangueAide = castellano", "help 3+600; "},
      {"FichierDat =  C:\\Été à = x.dat ", "file <C:\\Été à = x.dat>; "},
      {"FichierDat = a.dat\nfichierdat =", ""},
      {"DoubleClic = oui", "double; "},
      {"DoubleClic = Oui.", ""},
      {"Zmm = 1.25mm", "zmm 1.25; "},
      {"zmm =.5\nDoubleClic = Oui\nDoubleClic = Non", "zmm 0.5; "},
      {"Zmm=2\nZmm  = 3\nZmm\t= 4", ""},
      {"'Zmm = 5\n 'x Zmm = 2", "zmm 2; "},
      {"Ancien Zmm = 2 TailleCarCode = 9.5", "zmm 2; font 9.5; "},
      {"Langue = English Zmm = 2", "zmm 2; "},
      {"FichierDat = Zmm = 2", "file <Zmm = 2>; zmm 2; "},
      {"Zmm = 0", ""},
      {"Zmm = deux\nx", ""},
      {"Zmm = 1E400", ""},
      {"Zmm = -2", ""},
      {"Zmm = NaN", ""},
      {"Zmm = 1E-400", ""},
      {"Zmm = 3\nZmm = 1001", ""},
      {"TailleCarCode = 12\nTailleCarCode = 1E9\nTailleCarCode = -3\nTailleCarCode =", "font 12; "},
      // The number is the file's only on the last line; the flags are, wherever the line stands.
      {"Patchs = 1", "patchs 1; flags 1; "},
      {"Patchs = 1\nZmm = 1", "flags 1; "},
      {"Patchs = 1\n\n", "flags 1; "},
      {"Patchs = 1\n'", "patchs 1; flags 1; "},
      {"Patchs = 1\nPatchs = 2.5", "patchs 2; flags 2; "},
      {"Patchs = -1", "patchs -1; flags 32767; "},
      {"Patchs = -32768", "patchs -32768; "},
      {"Patchs = 70000", "patchs 0; "},
      {"Patchs = 1E400", "patchs 0; "},
      {"Patchs =", "patchs 0; "},
      {"Langue = English\rZmm = 2\rPatchs = 4\r", "lang 2+300; zmm 2; patchs 4; flags 4; "},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(Read(Head + c.Lines)), c.Expected) << c.Lines;
  EXPECT_EQ(Read("", false).Patchs, 0);
}

TEST(Configuration, AnotherVersionAsksForTheLanguage) {
  const std::string lines = "\nLangue = English\nLangueAide = English";
  const std::pair<std::string, int> cases[] = {{"Vaxel V1.2a", 2},
                                               {"'Programme Vaxel V1.2a ", 0},
                                               {"'Programme Vaxel V1.2b", 0},
                                               {"'vaxel v1.2a", 0},
                                               {"", 0},
                                               {"\n'Programme Vaxel V1.2a", 0}};
  for (const auto& [head, expected] : cases) {
    const Configuration settings = Read(head + lines);
    EXPECT_EQ(settings.LangIndex, expected) << head;
    // Until it is answered, the question is in the language that was chosen.
    EXPECT_EQ(settings.LangBase, 300);
    EXPECT_EQ(settings.HelpLangIndex, 2);
  }
  EXPECT_EQ(ReadConfiguration("'Vaxel V1.0 " + lines, Languages, "1.0 ", true).LangIndex, 2);
}

TEST(Configuration, HostileTextsAreRead) {
  std::string text = Head;
  for (int i = 0; i < 10000; ++i) text += "Line " + std::to_string(i) + " = Langue\0Zmm=\xFF\n"s;
  text += std::string(1 << 20, '=') + "\n" + std::string(1 << 20, '\'') + "\n" + std::string(1 << 20, 'x');
  text += " Zmm = 2\n\0Patchs = 1"s;
  EXPECT_EQ(Shown(Read(text)), "zmm 2; patchs 1; flags 1; ");
}

TEST(Configuration, LinesAreReplacedOrAdded) {
  const std::string text =
      "'Old head\r\n'Do not change\nlangue = x\rZmm =1\n\n Zmm = 2\r\nZMM = 3\nzmm = 4\nMine\0 \xFF"s;
  const std::string head = Head + "'Do not change\r\n";
  EXPECT_EQ(WithLines(text, "1.2a", {{"Zmm = ", "5"}, {"LangueAide =", " English"}}),
            head + "langue = x\r\nZmm =1\r\n\r\n Zmm = 2\r\nZmm = 5\r\nZmm = 5\r\n"s +
                "Mine\0 \xFF\r\nLangueAide = English\r\n"s);
  EXPECT_EQ(WithLines("Zmm = 2", "1.2a", {{"Zmm = ", "5"}}), Head + "Zmm = 5\r\n");
  EXPECT_EQ(WithLines("", "1.2a", {{"FichierDat =", "a\r\nZmm = 2"}}), Head + "FichierDat =a  Zmm = 2\r\n");
  EXPECT_EQ(WithLines(text, "1.2a", {}), WithLines(WithLines(text, "1.2a", {}), "1.2a", {}));
}

// They stand before the seven keys: behind "Patchs" they would change what is read of it.
TEST(Configuration, OwnLinesDisturbNoKey) {
  const std::string path = " C:\\50% Zmm = 2\\Patchs = 1\\langue =\n%3D é.dat  ";
  std::string text = DefaultConfiguration("1.2a", false) + "Patchs = 6";
  for (const char* name : {"Recent1", "recent2", "RECENT1"})
    text = WithLines(text, "1.2a", {OwnLine(name, path)});
  EXPECT_TRUE(text.starts_with(Head + "'Ne pas modifier / Do not change\r\nrecent2 = %20C:\\50%25 Zmm %3D 2"))
      << text;
  const Configuration settings = Read(text);
  EXPECT_EQ(Shown(settings), "file <Vaxel.dat>; patchs 6; flags 6; ");
  EXPECT_EQ(settings.OwnKey("recent1"), path);
  EXPECT_EQ(settings.OwnKey("Recent2"), path);
  EXPECT_FALSE(settings.OwnKey("Recent3"));
  EXPECT_EQ(Read("\nA = 5%\nB =%4\nC = %zz%41").OwnKey("c"), "%zzA");
}

TEST(Configuration, PatchesAreAskedFor) {
  EXPECT_EQ(PatchPrompt(0x4003, "Active: ", "Which?"), "Active:  1, 2, 15\n\nWhich?");
  EXPECT_EQ(PatchPrompt(0, "Active: ", "Which?"), "Active: \n\nWhich?");
  const struct {
    std::int16_t Patchs;
    double Answer;
    std::optional<std::int16_t> Expected;
  } cases[] = {
      {0, 1, 1},    {3, 3, 7},     {3, -1, 2},  {4, -1, 4},   {0, 15.9, 0x4000},     {-1, -15, -16385},
      {0, 0.9, {}}, {0, -0.5, {}}, {0, 16, {}}, {0, -16, {}}, {3, std::nan(""), {}}, {3, 1e300, {}}};
  for (const auto& c : cases) EXPECT_EQ(ApplyPatchAnswer(c.Patchs, c.Answer), c.Expected) << c.Answer;
}

class ConfigurationFolder : public testing::Test {
 protected:
  std::string Bytes() const { return folder_.Read("Vaxel.cfg"); }

  const test::TestFolder folder_;
  ConfigurationFile file_{NameOf(folder_.Path()), "1.2a", true};
};

TEST_F(ConfigurationFolder, IsGivenAFileAtTheFirstStart) {
  const auto first = file_.Read(Languages);
  EXPECT_FALSE(first.Problem);
  EXPECT_EQ(Shown(first.Settings), "file <Vaxel.dat>; flags 3; ");
  const std::string expected = Head +
                               "'Ne pas modifier / Do not change\r\nLangue =\r\nLangueAide =\r\n"
                               "FichierDat = Vaxel.dat\r\nDoubleClic = Non\r\nZmm = 1\r\nPatchs = 3\r\n";
  EXPECT_EQ(Bytes(), expected);
  EXPECT_TRUE(file_.WriteKey(LanguageKey, " Castellano"));
  EXPECT_EQ(Shown(file_.Read(Languages).Settings), "lang 3+600; file <Vaxel.dat>; flags 3; ");
  EXPECT_EQ(folder_.FileCount(), 1);
}

TEST_F(ConfigurationFolder, TheCopyReplacesALostFileAlone) {
  const std::string kept = Head + "Zmm = 2\r\n";
  folder_.Write("Vaxe$cfg.old", kept);
  EXPECT_EQ(file_.Read(Languages).Settings.Zmm, 2);
  EXPECT_EQ(Bytes(), kept);
  folder_.Write("Vaxe$cfg.old", Head + "Zmm = 3\r\n");
  EXPECT_EQ(file_.Read(Languages).Settings.Zmm, 2);
  EXPECT_TRUE(file_.WriteKey(ZmmKey, "2"));
  EXPECT_EQ(Bytes(), kept);
  EXPECT_EQ(folder_.FileCount(), 1);
  // A program that wrote in place has left the file empty.
  folder_.Write("Vaxel.cfg", "");
  folder_.Write("Vaxe$cfg.old", kept);
  EXPECT_TRUE(file_.WriteKey(DoubleClickKey, " Oui"));
  EXPECT_EQ(Bytes(), kept + "DoubleClic = Oui\r\n");
  EXPECT_EQ(folder_.FileCount(), 1);
}

TEST_F(ConfigurationFolder, KeepsItsEncoding) {
  folder_.Write("Vaxel.cfg", Head +
                                 "Langue = FRAN\xC7"
                                 "AIS\r\nM\xEAme \x81\0 ligne"s);
  EXPECT_EQ(file_.Read(Languages).Settings.LangIndex, 1);
  EXPECT_TRUE(file_.WriteKey(ScriptKey, "C:\\Été€.dat"));
  EXPECT_EQ(Bytes(), Head +
                         "Langue = FRAN\xC7"
                         "AIS\r\nM\xEAme \x81\0 ligne\r\nFichierDat =C:\\\xC9t\xE9\x80.dat\r\n"s);
  EXPECT_TRUE(file_.WriteKey(ScriptKey, "C:\\Ω.dat"));
  EXPECT_EQ(Bytes(),
            "\xEF\xBB\xBF" + Head + "Langue = FRANÇAIS\r\nMême \u0081\0 ligne\r\nFichierDat =C:\\Ω.dat\r\n"s);
  EXPECT_EQ(Shown(file_.Read(Languages).Settings), "lang 1+0; file <C:\\Ω.dat>; ");
  folder_.Write("Vaxel.cfg", "\xFF\xFEZ\0m\0m\0 \0=\0 \0002\0"s);
  EXPECT_TRUE(file_.WriteKey(PatchsKey, "2"));
  EXPECT_EQ(Bytes().substr(0, 6), "\xFF\xFE'\0F\0"s);
  EXPECT_EQ(Shown(file_.Read(Languages).Settings), "patchs 2; flags 2; ");
}

TEST_F(ConfigurationFolder, WhatCannotBeWrittenIsToldAndLeftWhole) {
  const std::string kept = Head + "Zmm = 2\r\n";
  folder_.Write("Vaxel.cfg", kept);
  fs::permissions(folder_.Path() / "Vaxel.cfg", fs::perms::owner_read);
  EXPECT_TRUE(file_.WriteKey(ZmmKey, "2")) << "nothing changes";
  EXPECT_FALSE(file_.WriteKeys({{"Zmm = ", "3"}, OwnLine("Recent1", "x")}));
  EXPECT_EQ(Bytes(), kept);
  EXPECT_EQ(folder_.FileCount(), 1);
  fs::permissions(folder_.Path() / "Vaxel.cfg", fs::perms::owner_all);

  // The program goes on with the defaults.
  ConfigurationFile lost(NameOf(folder_.Path() / "gone"), "1.2a", true);
  EXPECT_FALSE(lost.WriteKey(ZmmKey, "2"));
  const auto reading = lost.Read(Languages);
  EXPECT_TRUE(reading.Problem);
  EXPECT_EQ(Shown(reading.Settings), "file <Vaxel.dat>; flags 3; ");

  fs::remove(folder_.Path() / "Vaxel.cfg");
  fs::create_directory(folder_.Path() / "Vaxel.cfg");
  EXPECT_EQ(file_.Read(Languages).Problem.value_or(Failure{}).Fault, FileFault::IsFolder);
  EXPECT_FALSE(file_.WriteKey(ZmmKey, "2"));
}

}  // namespace
}  // namespace vaxel
