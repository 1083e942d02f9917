// Whatever goes wrong or happens meanwhile, the text that the user has typed is in the editor or on the disk,
// and the program knows that it is not saved.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/files.h"
#include "tests/app/fake_shell.h"
#include "tests/support/language_line.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

const char* const Line = "X = 0,0,1\n";

TEST(UnsavedText, IsWhatIsTypedAsSoonAsTheWindowTakesKeys) {
  FakeShell shell(Line);
  shell.Write("other.dat", "?\n");
  for (MenuId item : {MenuId::Mnu_Ouvrir, MenuId::Mnu_Nouveau}) {
    shell.Boxes.Files = {shell.Path("other.dat")};
    bool isTyped = false;
    shell.Window.OnEvents = [&] {
      if (shell.Window.IsEnabled && !std::exchange(isTyped, true)) shell.Editor.Type("' mine");
    };
    shell.App->Command(item);
    shell.Window.OnEvents = nullptr;
    EXPECT_TRUE(shell.Editor.Content.ends_with("' mine")) << shell.Editor.Content;
    EXPECT_TRUE(shell.Script().TextModified);
    shell.Boxes.Answers = {"no"};
  }
  // The comments of the run alone are nothing to be asked for.
  shell.CommandWithFiles(MenuId::Mnu_Ouvrir, {shell.Path("other.dat")});
  EXPECT_EQ(shell.Editor.Content, "?  ' 0, 0\n");
  EXPECT_FALSE(shell.Script().TextModified);
}

TEST(UnsavedText, TakesNoOtherCommandBetweenAnAnswerAndTheLoading) {
  FakeShell shell(Line);
  shell.Write("other.dat", "X = 1,1,1\n");
  shell.Boxes.Files = {shell.Path("other.dat")};
  shell.Window.OnEvents = [&] {
    shell.App->Command(MenuId::Mnu_Nouveau);
    EXPECT_FALSE(shell.App->Quit());
  };
  shell.App->Command(MenuId::Mnu_Ouvrir);
  shell.Window.OnEvents = nullptr;
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("other.dat"));
  EXPECT_EQ(shell.Take({"text"}), Log{"text 10"});
}

// A text under another's name would be saved over it, and nobody would be asked.
TEST(UnsavedText, KeepsItsNameWhenAnotherFindsNoRoom) {
  FakeShell shell(Line);
  shell.Write("other.dat", "X = 1,1,1\n");
  shell.Editor.Type("' mine");
  shell.Boxes.Answers = {"no", "no"};
  shell.Boxes.Files = {shell.Path("other.dat")};
  shell.Editor.IsFull = true;
  EXPECT_THROW(shell.App->Command(MenuId::Mnu_Ouvrir), std::bad_alloc);
  EXPECT_THROW(shell.App->Command(MenuId::Mnu_Nouveau), std::bad_alloc);
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_EQ(shell.Read("other.dat"), "X = 1,1,1\n");
  EXPECT_EQ(shell.Read("dial.dat"), "X = 0,0,1\r\n' mine");
}

TEST(UnsavedText, IsCopiedWhileARunDoesNotEnd) {
  FakeShell shell(Line);
  shell.Editor.Type("A:\nGoto A");
  shell.Window.OnEvents = [&] {
    shell.Tick();
    shell.App->KeyDown(Key::Escape);
  };
  shell.App->KeyDown(Key::F4);
  EXPECT_TRUE(shell.Read("Vaxe$7.rec").ends_with("A:\nGoto A"));
}

TEST(UnsavedText, IsCopiedWhenTheSessionEnds) {
  FakeShell shell(Line);
  shell.App->SessionEnds();
  EXPECT_FALSE(shell.Exists("Vaxe$7.rec"));
  shell.Editor.Type("' mine");
  shell.App->SessionEnds();
  EXPECT_TRUE(shell.Read("Vaxe$7.rec").ends_with("' mine"));
}

TEST(UnsavedText, OfAProgramOfTheSameNumberIsOfferedFirst) {
  FakeShell shell;
  for (const char* number : {"3", "5", "7", "9"}) {
    shell.Write("Vaxe$" + std::string(number) + ".rec",
                "Vaxel recovery\t0\t1\t" + std::string(number) + ".dat\n' of " + number);
  }
  shell.Boxes.Answers = {"yes"};
  shell.StartWith(Line);
  EXPECT_EQ(shell.Editor.Content, "' of 7");
  // It is copied to where the one that was taken lay; the others are still to be asked for.
  for (const char* number : {"3", "5", "7", "9"}) {
    EXPECT_TRUE(shell.Read("Vaxe$" + std::string(number) + ".rec").ends_with("' of " + std::string(number)));
  }
}

TEST(UnsavedText, BecomesAScriptWhenItIsNotWantedInTheEditor) {
  FakeShell shell;
  shell.Write("dial.dat", Line);
  shell.Write("dial recovered 2026-11-22 14.05.dat", "there already");
  shell.Write("Vaxe$3.rec", "Vaxel recovery\t0\t1\t" + shell.Path("dial.dat") + "\n' mine\n' é");
  // Its folder is gone with its script, and the last one has had none.
  shell.Write("Vaxe$4.rec", "Vaxel recovery\t0\t1\t" + shell.Path("gone/scale.dat") + "\n' scale");
  shell.Write("Vaxe$5.rec", "Vaxel recovery\t0\t1\t\n' nameless");
  shell.Boxes.Answers = {"no", "no", "no"};
  shell.Write("Vaxel.cfg",
              "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = English\r\nFichierDat = dial.dat\r\n");
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Editor.Content, Line);
  EXPECT_FALSE(shell.Script().TextModified);
  const std::string end = " recovered 2026-11-22 14.05";
  EXPECT_EQ(shell.Read("dial" + end + ".dat"), "there already");
  EXPECT_EQ(shell.Read("dial" + end + " (2).dat"), "' mine\r\n' é");
  EXPECT_EQ(shell.Read("scale" + end + ".dat"), "' scale");
  EXPECT_EQ(shell.Read("New script" + end + ".dat"), "' nameless");
  for (const char* name : {"Vaxe$3.rec", "Vaxe$4.rec", "Vaxe$5.rec"}) EXPECT_FALSE(shell.Exists(name));
  const Log told = shell.Take({"message"});
  ASSERT_EQ(told.size(), 3U);
  const std::string name = shell.Path("dial" + end + " (2).dat");
  EXPECT_NE(
      std::find(told.begin(), told.end(),
                "message The unsaved text of " + shell.Path("dial.dat") + " is kept in the file\n" + name),
      told.end());
}

TEST(UnsavedText, StaysACopyWhereNoScriptCanBeMadeOfIt) {
  FakeShell shell;
  // No folder of data takes a file of a name with a folder in it that is not there.
  shell.Write("Vaxel_de.lng",
              LineOf(TextId::LanguageName, "Deutsch") + LineOf(TextId::RecoveredName, "none/%1%2"));
  shell.Write("Vaxe$5.rec", "Vaxel recovery\t0\t1\t\n' nameless");
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangue = Deutsch\r\nLangueAide = English\r\n");
  shell.Boxes.Answers = {"no"};
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take({"critical"}).size(), 1U);
  EXPECT_TRUE(shell.Exists("Vaxe$5.rec"));
}

TEST(UnsavedText, StaysOnTheDiskUntilItIsCopiedAnew) {
  FakeShell shell;
  shell.Write("Vaxe$5.rec", "Vaxel recovery\t0\t1\t\n' mine");
  fs::create_directory(PathOf(shell.Path("Vaxe$7.rec")));
  shell.Boxes.Answers = {"safe"};
  shell.StartWith(Line);
  EXPECT_EQ(shell.Editor.Content, "' mine");
  EXPECT_TRUE(shell.Exists("Vaxe$5.rec"));
}

TEST(BrokenRun, LeavesADrawingAndThePlaceOfTheScreen) {
  FakeShell shell(Line);
  shell.Editor.Content = "A:\nX = 0,0,1\nGoto A";
  const auto breakOff = [&](int after) {
    shell.Window.OnEvents = [&shell, after, calls = 0]() mutable {
      if (++calls % after == 0) throw std::runtime_error("broken");
    };
  };
  shell.System.Step = milliseconds(5);
  breakOff(60);
  shell.App->KeyDown(Key::F4);
  const Log messages = shell.Take({"critical"});
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_TRUE(messages[0].ends_with("\n\nAn unexpected error has occurred: broken\n\nLine 3 of dial.dat"))
      << messages[0];
  shell.Window.Paint();
  EXPECT_GT(shell.Window.PaintedOperations, 2U);
  EXPECT_FALSE(shell.App->Runs().IsRunning());
  EXPECT_TRUE(shell.Window.IsEnabled);
  shell.Window.OnEvents = nullptr;
  shell.App->Runs().PointerMoved(440, 320);
  shell.Editor.Content = Line;
  shell.App->KeyDown(Key::F6);
  shell.Editor.Content = "A:\nX = 0,0,1\nGoto A";
  breakOff(20);
  shell.App->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(shell.View().OffX, 30);
}

// The drawing that the window has is never one that is gone.
TEST(BrokenRun, KeepsTheDrawingWhereMemoryIsLackingBehindIt) {
  FakeShell shell(Line);
  shell.Editor.Content = "A:\nX = 0,0,1\n%I == %I + 1\nIF %I < 500 GOTO A";
  shell.Editor.Content = "%I = 0\n" + shell.Editor.Content;
  shell.Window.OnEvents = [&, calls = 0]() mutable { shell.Editor.GivesNoText = ++calls > 2; };
  shell.System.Step = milliseconds(5);
  EXPECT_THROW(shell.App->KeyDown(Key::F4), std::bad_alloc);
  shell.Editor.GivesNoText = false;
  shell.Window.OnEvents = nullptr;
  shell.Window.Paint();
  EXPECT_EQ(shell.Window.PaintedOperations, 1000U);
  EXPECT_EQ(shell.Window.Messages.back(), "");
  EXPECT_FALSE(shell.App->Runs().IsRunning());
}

TEST(RunBridge, KeepsTheUsersOwnNumbers) {
  FakeShell shell("?  ' 1998\nEpaisT ' 2, 3\n?  ' see 'x' 5\n? ' 7 pixels\n? ' 1E+20,-0.5\n");
  EXPECT_EQ(shell.Editor.Content,
            "?  ' 1998  ' 0, 0\nEpaisT ' 2, 3  '  1 pixel, 0.25mm\n?  ' see 'x' 5  ' 0, 0\n"
            "? ' 7 pixels  ' 0, 0\n?  ' 0, 0\n");
  const std::string commented = shell.Editor.Content;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, commented);
}

// Nobody has typed anything.
TEST(UnsavedText, IsNotWhatTheFirstRunWrites) {
  FakeShell shell("Trait = 0, 0, 10, 20\n?\n");
  EXPECT_EQ(shell.Editor.Content, "Trait = 0, 0, 10, 20\n?  ' 10, 20\n");
  EXPECT_FALSE(shell.Script().TextModified);
  // A copy that was brought back is not saved yet.
  shell.Write("Vaxe$5.rec", "Vaxel recovery\t0\t1\t\n?");
  shell.Restart();
  shell.Boxes.Answers = {"yes"};
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Editor.Content, "?  ' 0, 0");
  EXPECT_TRUE(shell.Script().TextModified);
}

// The editor would put the comment into another line and take away what stands there.
TEST(UnsavedText, StaysWholeWhereTheEditorCountsOtherLines) {
  FakeShell shell;
  const std::string script = "Trait = 0, 0, 10, 20\n' a\vb\n?\n' end\n";
  shell.StartWith(Line);
  shell.Editor.Content = script;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, script);
  EXPECT_EQ(shell.Aid.Problems, Log{"3: ' 10, 20"});
}

// On the disk the script has other lines than in the editor.
TEST(RunBridge, WritesNothingIntoLinesOfAScriptThatIncludesItself) {
  FakeShell shell("?\n");
  const std::string edited = "Texte = 0,0,,,my words\nFichier = dial.dat\n";
  shell.Editor.Content = edited;
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, edited);
}

}  // namespace
}  // namespace vaxel::test
