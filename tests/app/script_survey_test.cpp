#include "app/script_survey.h"

#include <gtest/gtest.h>

#include <random>

#include "base/text.h"

namespace vaxel::test {
namespace {

std::string Listed(std::span<const ScriptSurvey::Named> items) {
  std::string text;
  for (const auto& item : items) text += item.Name + ":" + std::to_string(item.Line) + " ";
  return text;
}

std::string All(const ScriptSurvey& survey) {
  return Listed(survey.Labels()) + "| " + Listed(survey.VariablesUpTo(1'000'000)) + "| " +
         Listed(survey.Files());
}

TEST(ScriptSurvey, KnowsWhatALineNames) {
  ScriptSurvey survey;
  survey.Read(
      "%A = 1\n"
      "  Début : rest\n"
      "IF %A=1 THEN %B = 2\n"
      "? = %X, _\n"
      "  %Y\n"
      "Pour = %I, 1, 3\n"
      "LVar = %U, %W, ;\n"
      "Image = a.png,,,V§%PX§%PY\n"
      "TailleP = ,abc, %L, %{H x}\n"
      "Input = what, then, %Q\n"
      "' %C = 3\n"
      "Texte = 0,0,,, Fin: %A = 5\n"
      "IFNDEF %Size THEN %Size = 3\n"
      "PosV = 5, 1, %PVX, %PVY\n"
      "Fichier = part.dat, 1, 2, %Given=3\n"
      "%a = 7\n"
      "Separateur = ;\n"
      "? = %S; %T\n"
      "a,b:\n"
      "Pour :\n"
      "' comment _\n"
      "%Hidden = 1\n");
  EXPECT_EQ(All(survey),
            "Début :2 Pour :20 | %A:1 %B:3 %X:4 %Y:4 %I:6 %U:7 %W:7 %PX:8 %PY:8 %L:9 %H x:9 %Q:10 "
            "%Size:13 %PVX:14 %PVY:14 %S:18 %T:18 | part.dat:15 ");
  EXPECT_EQ(Listed(survey.VariablesUpTo(3)), "%A:1 %B:3 ");
  EXPECT_TRUE(survey.HasVariable("%size"));
  EXPECT_FALSE(survey.HasVariable("%C"));
  EXPECT_EQ(survey.SeparatorsAt(17).First, ",");
  EXPECT_EQ(survey.SeparatorsAt(18).First, ";");
  EXPECT_EQ(survey.FirstLineOf(5), 4U);
  EXPECT_EQ(survey.FirstLineOf(22), 21U);
  EXPECT_EQ(survey.FirstLineOf(6), 6U);
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// Whatever is changed, a survey that is kept up says the same as one of the new text.
TEST(ScriptSurvey, IsKeptUpAsIfItWereNew) {
  std::mt19937 random(3);
  const char* const pool[] = {"%A = 1",
                              "%B = 2",
                              "L1:",
                              "L2 :",
                              "Trait = 1, _",
                              "  %C, 2",
                              "? = %X, %Y",
                              "",
                              "' note _",
                              "Fichier = f.dat",
                              "IF 1=1 THEN %A = 3",
                              "? = _",
                              "Separateur = ;"};
  std::vector<std::string> lines;
  ScriptSurvey kept;
  kept.Read("");
  int whole = 0;
  for (int i = 0; i < 2000; ++i) {
    const std::size_t first = random() % (lines.size() + 1);
    const std::size_t removed = std::min<std::size_t>(random() % 3, lines.size() - first);
    std::vector<std::string> added;
    for (auto n = random() % (lines.size() > 30 ? 2 : 4); n > 0; --n) {
      const std::size_t choice = random() % (i % 50 == 0 ? std::size(pool) : std::size(pool) - 1);
      added.emplace_back(pool[choice]);
    }
    const auto at = lines.begin() + static_cast<std::ptrdiff_t>(first);
    lines.insert(lines.erase(at, at + static_cast<std::ptrdiff_t>(removed)), added.begin(), added.end());
    const bool isKept = kept.Replace(first + 1, removed, added.size(), lines.size(),
                                     [&](std::size_t line) { return lines[line - 1]; });
    if (!isKept) {
      kept.Read(Joined(lines));
      ++whole;
    }
    ScriptSurvey fresh;
    fresh.Read(Joined(lines));
    ASSERT_EQ(All(kept), All(fresh)) << i << "\n" << Joined(lines);
    for (std::size_t line = 1; line <= lines.size(); ++line) {
      ASSERT_EQ(kept.FirstLineOf(line), fresh.FirstLineOf(line)) << line << "\n" << Joined(lines);
    }
    for (const char* name : {"%A", "%C", "%X"}) ASSERT_EQ(kept.HasVariable(name), fresh.HasVariable(name));
  }
  EXPECT_LT(whole, 400);
}

// The editor colours anew what other names or other separators make another line.
TEST(ScriptSurvey, TellsWhatChangesColours) {
  const auto coloursAs = [](const char* one, const char* other) {
    ScriptSurvey first, second;
    first.Read(one);
    second.Read(other);
    return first.ColoursAs(second);
  };
  EXPECT_TRUE(coloursAs("%A = 1\nSeparateur = ;\n", "%A = 2\nSeparateur = ;\n"));
  EXPECT_FALSE(coloursAs("%A = 1\n", "%B = 1\n"));
  EXPECT_FALSE(coloursAs("%A = 1\nSeparateur = ;\n", "%A = 1\nSeparateur = /\n"));
  EXPECT_FALSE(coloursAs("%A = 1\nSeparateur = ;\n", "%A = 1\nSeparateur = ;, /\n"));
  EXPECT_FALSE(coloursAs("%A = 1\nSeparateur = ;\n", "Separateur = ;\n%A = 1\n"));
}

TEST(ScriptSurvey, BearsJunk) {
  std::mt19937 random(5);
  std::string junk;
  for (int i = 0; i < 300'000; ++i) junk += static_cast<char>(random() % 256);
  ScriptSurvey survey;
  survey.Read(junk);
  survey.Read(std::string(1'000'000, ':'));
  survey.Read("? = " + std::string(1'000'000, '%'));
  survey.Read("_\n_\n _\n _");
  EXPECT_TRUE(survey.Labels().empty());
}

}  // namespace
}  // namespace vaxel::test
