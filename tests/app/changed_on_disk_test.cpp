// What other programs do to the file of the script in the editor.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

const char* const Line = "X = 0,0,1\n";

class ChangedOnDisk : public testing::Test {
 protected:
  // The window comes to the front and what it asks is answered.
  Log Activate(std::deque<std::string> answers = {}) {
    shell_.Boxes.Answers = std::move(answers);
    shell_.App->Activated();
    return shell_.Take({"question", "message", "critical", "show"});
  }
  std::string Question(const std::string& end = {}) const {
    return "question The file " + shell_.Path("dial.dat") +
           " was changed by another program. Load it again?" + end;
  }

  FakeShell shell_{Line};
};

TEST_F(ChangedOnDisk, IsLoadedAgain) {
  EXPECT_EQ(Activate(), Log{});
  shell_.Write("dial.dat", "X = 0,0,1\nX = 1,1,1\nX = 2,2,2\n");
  shell_.Editor.Line = 2;
  EXPECT_EQ(Activate({"yes"}), (Log{Question(), "show 6"}));
  EXPECT_EQ(shell_.Editor.Place().Line, 2U);
  EXPECT_EQ(shell_.Window.Text1, "L 2/4");
  EXPECT_FALSE(shell_.Script().TextModified);
  EXPECT_EQ(Activate(), Log{});
  // The line where the cursor was is no more.
  shell_.Editor.Line = 4;
  shell_.Write("dial.dat", "X = 0,0,1");
  EXPECT_EQ(Activate({"yes"}).size(), 2U);
  EXPECT_EQ(shell_.Editor.Place().Line, 1U);
  // Saved by the program itself, or written with the bytes that it has: nothing new.
  shell_.Editor.Type("' mine");
  shell_.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_EQ(Activate(), Log{});
  shell_.Write("dial.dat", shell_.Read("dial.dat"));
  EXPECT_EQ(Activate(), Log{});
}

// What is refused is asked once, and the text that no file holds any more counts as not saved.
TEST_F(ChangedOnDisk, StaysAsItIsInTheEditor) {
  shell_.Write("dial.dat", "X = 9,9,1\n");
  EXPECT_EQ(Activate({"no"}), Log{Question()});
  EXPECT_EQ(Activate(), Log{});
  EXPECT_EQ(shell_.Editor.Content, Line);
  EXPECT_TRUE(shell_.Script().TextModified);
  shell_.Tick();
  EXPECT_TRUE(shell_.Exists("Vaxe$7.rec"));
  shell_.Write("dial.dat", "X = 9,9,12\n");
  EXPECT_EQ(Activate({"no"}), Log{Question("\nYour unsaved changes would be lost.")});
  // Saving asks for itself.
  shell_.CommandWithAnswers(MenuId::Mnu_EnregistrerS, {"cancel"});
  EXPECT_EQ(shell_.Take({"question"}).size(), 1U);
  EXPECT_EQ(shell_.Read("dial.dat"), "X = 9,9,12\n");
  // Back as it was loaded.
  shell_.Write("dial.dat", Line);
  EXPECT_EQ(Activate(), Log{});
}

TEST_F(ChangedOnDisk, IsToldWhenItHasVanished) {
  fs::remove(PathOf(shell_.Path("dial.dat")));
  EXPECT_EQ(Activate(), Log{"message The file " + shell_.Path("dial.dat") +
                            " does not exist any more. Its text stays in the editor and is not saved."});
  EXPECT_EQ(Activate(), Log{});
  EXPECT_TRUE(shell_.Script().TextModified);
  EXPECT_EQ(shell_.Editor.Content, Line);
  shell_.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_TRUE(shell_.Exists("dial.dat"));
  EXPECT_EQ(Activate(), Log{});
}

TEST_F(ChangedOnDisk, KeepsTheTextWhenItCannotBeLoaded) {
  shell_.Write("dial.dat", std::string("\x7F\0\0x", 4));
  const Log happened = Activate({"yes"});
  ASSERT_EQ(happened.size(), 2U);
  EXPECT_TRUE(happened[1].starts_with("critical The file ")) << happened[1];
  EXPECT_EQ(shell_.Editor.Content, Line);
  EXPECT_TRUE(shell_.Script().TextModified);
}

TEST_F(ChangedOnDisk, WaitsForTheEndOfARun) {
  shell_.Write("dial.dat", "X = 9,9,1\n");
  shell_.Window.OnEvents = [&] { shell_.App->Activated(); };
  shell_.App->KeyDown(Key::F4);
  shell_.Window.OnEvents = nullptr;
  EXPECT_EQ(shell_.Take({"question"}), Log{});
  EXPECT_EQ(Activate({"no"}), Log{Question()});
  // A script without a file has nothing to follow.
  shell_.Boxes.Answers = {"no"};
  shell_.App->Command(MenuId::Mnu_Nouveau);
  shell_.Take();
  EXPECT_EQ(Activate(), Log{});
}

}  // namespace
}  // namespace vaxel::test
