#include "app/script_template.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/text.h"
#include "tests/app/fake_shell.h"
#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

const std::string Marked =
    "'fr:' Voltmètre : pour essai\n'en:' Voltmeter. A trial\n'es:' Voltímetro\n"
    "Trait = 0, 0, 10, 0\n'fr:Texte = 0, 5, , C, tension\n'en:Texte = 0, 5, , C, voltage\n' kept\n'F:r";

TEST(ScriptTemplate, KeepsTheLinesOfOneLanguage) {
  EXPECT_EQ(InLanguage(Marked, "fr"),
            "' Voltmètre : pour essai\nTrait = 0, 0, 10, 0\nTexte = 0, 5, , C, tension\n' kept\n'F:r");
  EXPECT_EQ(InLanguage(Marked, "es"), "' Voltímetro\nTrait = 0, 0, 10, 0\n' kept\n'F:r");
  EXPECT_EQ(InLanguage(Marked, "de"), InLanguage(Marked, "en"));
  EXPECT_EQ(InLanguage("", "fr"), "");
  EXPECT_EQ(InLanguage("'fr", "fr"), "'fr");
}

TEST(ScriptTemplate, IsNamedByItsFirstComment) {
  EXPECT_EQ(NameIn(InLanguage(Marked, "fr")), "Voltmètre");
  EXPECT_EQ(NameIn(InLanguage(Marked, "en")), "Voltmeter");
  EXPECT_EQ(NameIn("'  R. 1 over 2.\nTrait = 0, 0, 1, 1"), "R");
  EXPECT_EQ(NameIn("' 1.5 volts.\n"), "1.5 volts");
  EXPECT_EQ(NameIn("Trait = 0, 0, 1, 1\n' late"), "");
  EXPECT_EQ(NameIn("'"), "");
}

class Templates : public testing::Test {
 protected:
  Templates() {
    fs::create_directory(PathOf(shell_.Path("templates")));
    shell_.Write("templates/volts.dat", Marked);
    shell_.Write("templates/broken.DAT", "' Ampèremètre\nTrait = 0, 0, 10, 0\nTrait = x\n");
    shell_.Write("templates/empty.dat", "");
    shell_.Write("templates/notes.txt", "' Zzz");
  }

  // Chooses the template of this name, after a look at it; an empty one cancels.
  void Choose(const std::string& name) {
    shell_.Boxes.OnTemplates = [&, name](const TemplatesDialog& dialog) {
      names_ = dialog.Names;
      for (std::size_t i = 0; i < dialog.Names.size(); ++i) {
        if (dialog.Names[i] != name) continue;
        shown_ = dialog.OnShow(i);
        dialog.OnChosen(i);
      }
    };
    shell_.Take();
    shell_.App->Command(MenuId::Mnu_NouveauModele);
  }

  FakeShell shell_{Dial};
  std::vector<std::string> names_;
  PreviewPages shown_;
};

TEST_F(Templates, BeginANewScript) {
  Choose("Voltmeter");
  EXPECT_EQ(names_, (std::vector<std::string>{"Ampèremètre", "empty", "Voltmeter"}));
  EXPECT_EQ(shell_.Editor.Content, InLanguage(Marked, "en"));
  EXPECT_EQ(shell_.Script().CurrentFile, "");
  EXPECT_EQ(shell_.StartupFile(), "");
  EXPECT_FALSE(shell_.Script().TextModified);
  EXPECT_EQ(shell_.Take({"typing", "hourglass"}), (Log{"typing colour 0", "hourglass"}));
  // The line's 10 mm and the text, with a margin around them.
  ASSERT_EQ(shown_.Drawing->Pages().size(), 1U);
  EXPECT_GT(shown_.Sheets[0].Paper.Opposite.X, 18);
  EXPECT_LT(shown_.Sheets[0].Paper.Opposite.X, 30);
  EXPECT_EQ(shown_.Problem, "");
}

TEST_F(Templates, AreAskedForAfterTheChanges) {
  shell_.Editor.Type("' more\n");
  const std::string typed = shell_.Editor.Content;
  shell_.Boxes.Answers = {"cancel"};
  Choose("Voltmeter");
  EXPECT_EQ(shell_.Editor.Content, typed);
  EXPECT_TRUE(names_.empty());
  shell_.Boxes.Answers = {"no"};
  Choose("");
  EXPECT_FALSE(names_.empty());
  EXPECT_EQ(shell_.Editor.Content, typed);
  EXPECT_TRUE(shell_.Script().TextModified);
}

TEST_F(Templates, ThatAreBrokenAreToldOfAndLoseNothing) {
  shell_.Boxes.OnTemplates = [&](const TemplatesDialog& dialog) {
    EXPECT_TRUE(dialog.OnShow(0).Problem.starts_with("This template has an error in line 3: "));
    EXPECT_EQ(dialog.OnShow(1).Drawing->Pages().size(), 1U);
    fs::remove(PathOf(shell_.Path("templates/volts.dat")));
    EXPECT_NE(dialog.OnShow(2).Problem.find("volts.dat"), std::string::npos);
    dialog.OnChosen(2);
  };
  shell_.Take();
  shell_.App->Command(MenuId::Mnu_NouveauModele);
  const Log told = shell_.Take({"critical"});
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find("volts.dat"), std::string::npos);
  EXPECT_EQ(shell_.Editor.Content, Dial);
  EXPECT_EQ(shell_.Script().CurrentFile, shell_.StartupFile());
}

TEST_F(Templates, MayBeMissing) {
  fs::remove_all(PathOf(shell_.Path("templates")));
  Choose("Voltmeter");
  const Log told = shell_.Take({"message"});
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find(shell_.Path("templates")), std::string::npos);
  EXPECT_EQ(shell_.Editor.Content, Dial);
}

// Those that come with the program: each must be a good beginning in every language, on screen and on paper.
TEST(ScriptTemplate, EveryOneDrawsInEveryLanguage) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(VAXEL_SOURCE_DIR) / "src/resources/templates")) {
    if (entry.path().extension() != ".dat") continue;
    ++count;
    const Result<std::string> text = ReadWholeFile(entry.path().string(), 1U << 20);
    ASSERT_TRUE(text);
    for (const char* code : {"fr", "en", "es"}) {
      const std::string script = InLanguage(*text, code);
      EXPECT_TRUE(script.starts_with("' ")) << entry.path() << code;
      for (const RunSettings& settings : {RunSettings(), ForPrinter()}) {
        const ScriptRun run = RunText(script, settings);
        EXPECT_EQ(run.End, RunEnd::Completed) << entry.path() << code << run.Reason();
        EXPECT_EQ(run.Notices, std::vector<std::string>()) << entry.path() << code;
        EXPECT_GT(run.List.Size(), 25U) << entry.path() << code;
      }
    }
    // One that a language was left out of would come in English.
    for (const char* mark : {"'fr:", "'en:", "'es:"})
      EXPECT_EQ(CountOf(*text, mark), CountOf(*text, "'en:")) << entry.path() << mark;
  }
  EXPECT_GE(count, 15);
}

}  // namespace
}  // namespace vaxel::test
