// A program whose folder cannot be written works as any other, with its own files in the user's folder.
#include "app/data_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"
#include "tests/support/language_line.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

const std::string English =
    "'Fichier de configuration du Programme Vaxel V0.3b\r\nLangue = English\r\nLangueAide = English\r\n";

// The program's folder takes no files; the user's is not there yet.
class DataFolder : public testing::Test {
 protected:
  DataFolder() {
    own_ = NameOf((PathOf(shell_.Folder()) / "own" / "").make_preferred());
    shell_.System.UserFolder = own_;
    shell_.System.ReadOnly = {shell_.Folder()};
    shell_.Write("dial.dat", "X = 0,0,1\n");
  }
  std::string Own(const std::string& name) const { return shell_.Read("own/" + name); }

  FakeShell shell_;
  std::string own_;
};

TEST_F(DataFolder, HoldsWhatTheProgramWrites) {
  const std::string installed = English + "FichierDat = dial.dat\r\nZmm = 1.25\r\n";
  shell_.Write("Vaxel.cfg", installed);
  shell_.Write("Vaxel_en.DaN", "' English template\r\n");
  shell_.Write("Vaxel_de.lng", LineOf(TextId::LanguageName, "Deutsch"));
  ASSERT_TRUE(shell_.Start());
  // The settings that came with the program are those of the beginning, and stay as they are.
  EXPECT_EQ(shell_.Take({"message", "critical", "language", "open"}), Log{});
  EXPECT_EQ(shell_.Script().CurrentFile, shell_.Path("dial.dat"));
  EXPECT_EQ(shell_.App->Options().Values().Zmm, 1.25);
  shell_.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    EXPECT_EQ(dialog.Languages.back(), "Deutsch");
    dialog.OnButton();
  };
  shell_.App->Command(MenuId::Mnu_Langue);
  EXPECT_EQ(Own("Vaxel.DaN"), "' English template\r\n");
  shell_.Editor.Type("' unsaved");
  shell_.Tick();
  EXPECT_TRUE(Own("Vaxe$7.rec").ends_with("' unsaved"));
  shell_.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("1", "1.5"); };
  shell_.App->KeyDown(Key::F7);
  EXPECT_EQ(shell_.Read("Vaxel.cfg"), installed);
  for (const char* name : {"Vaxel.DaN", "Vaxe$7.rec", "Vaxe$cfg.old"}) EXPECT_FALSE(shell_.Exists(name));
  // The next start reads the user's own, and finds the text of the one that has crashed.
  shell_.Write("Vaxel.cfg", English + "Zmm = 2\r\n");
  shell_.System.Process = 8;
  shell_.Restart();
  shell_.Boxes.Answers = {"yes"};
  ASSERT_TRUE(shell_.Start());
  EXPECT_EQ(shell_.App->Options().Values().Zmm, 1.5);
  EXPECT_TRUE(shell_.Editor.Content.ends_with("' unsaved"));
  shell_.CommandWithAnswers(MenuId::Mnu_Nouveau, {"no"});
  EXPECT_EQ(shell_.Editor.Content, "' English template\n");
}

TEST_F(DataFolder, AsksForTheLanguageOnce) {
  const auto choose = [](const LanguageDialog& dialog) {
    dialog.OnMessages(2);
    dialog.OnHelp(2);
    dialog.OnButton();
  };
  shell_.Boxes.OnLanguages = choose;
  ASSERT_TRUE(shell_.Start(shell_.Path("dial.dat")));
  EXPECT_EQ(shell_.Take({"message", "critical", "language"}), Log{"language dialog"});
  shell_.Restart();
  ASSERT_TRUE(shell_.Start(shell_.Path("dial.dat")));
  EXPECT_EQ(shell_.Take({"message", "critical", "language"}), Log{});
}

// It looks for copies in both folders: rights may have changed since.
TEST_F(DataFolder, IsTheProgramsWhereThatCanBeWritten) {
  fs::create_directory(PathOf(own_));
  shell_.Write("own/Vaxel.cfg", English + "Zmm = 1.5\r\n");
  shell_.Write("own/Vaxe$5.rec", "Vaxel recovery\t0\t1\t\n' mine");
  shell_.Write("Vaxel.cfg", English + "FichierDat = dial.dat\r\nZmm = 1.25\r\n");
  shell_.System.ReadOnly.clear();
  shell_.Boxes.Answers = {"yes"};
  ASSERT_TRUE(shell_.Start());
  EXPECT_EQ(shell_.App->Options().Values().Zmm, 1.25);
  EXPECT_EQ(shell_.Editor.Content, "' mine");
  EXPECT_TRUE(shell_.Exists("Vaxe$7.rec"));
}

TEST_F(DataFolder, IsTheProgramsWhereThereIsNoOther) {
  shell_.System.ReadOnly.insert(own_);
  EXPECT_EQ(ChooseDataFolder(shell_.Folder(), shell_.System), shell_.Folder());
  shell_.System.ReadOnly = {shell_.Folder()};
  EXPECT_EQ(ChooseDataFolder(shell_.Folder(), shell_.System), own_);
  // Files can be made, but the settings that are there cannot be changed.
  shell_.System.ReadOnly.clear();
  EXPECT_EQ(ChooseDataFolder(shell_.Folder(), shell_.System), shell_.Folder());
  fs::create_directory(PathOf(shell_.Path("Vaxel.cfg")));
  EXPECT_EQ(ChooseDataFolder(shell_.Folder(), shell_.System), own_);
}

TEST_F(DataFolder, IsFoundOutByWriting) {
  EXPECT_TRUE(CanWriteIn(shell_.Folder()));
  EXPECT_EQ(std::distance(fs::directory_iterator(PathOf(shell_.Folder())), fs::directory_iterator()), 1);
  EXPECT_FALSE(CanWriteIn(shell_.Path("missing")));
  EXPECT_FALSE(CanWriteIn(shell_.Path("dial.dat")));
#ifdef __linux__
  EXPECT_FALSE(CanWriteIn("/proc"));  // for root, too
#endif
}

}  // namespace
}  // namespace vaxel::test
