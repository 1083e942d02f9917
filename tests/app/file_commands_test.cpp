// Opening, saving and what must never be lost.
#include "app/file_commands.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "app/recovery.h"
#include "base/files.h"
#include "tests/app/fake_shell.h"
#include "tests/support/test_folder.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

const char* const Line = "X = 0,0,1\n";

TEST(FileCommands, OpensAScript) {
  FakeShell shell(Line);
  fs::create_directory(PathOf(shell.Path("sub")));
  shell.Write("sub/second.dat", "X = 0,0,2\r\nX = 1,1,2");
  shell.CommandWithFiles(MenuId::Mnu_Ouvrir, {shell.Path("sub/second.dat")});
  EXPECT_EQ(shell.Take({"open", "events", "text", "colour", "title", "show"}),
            (Log{"open dialog", "events", "text 19", "colour all", "title " + shell.Window.Title, "events",
                 "events", "show 4", "events"}));
  const FileDialog& dialog = shell.Boxes.FileDialogs.back();
  EXPECT_EQ(dialog.Filter, "Vaxel files (*.dat)|*.dat|All files (*.*)|*.*|");
  EXPECT_FALSE(dialog.TakesSeveral);
  EXPECT_EQ(dialog.Folder, shell.Folder());
  EXPECT_EQ(shell.StartupFile(), shell.Path("sub/second.dat"));
  EXPECT_FALSE(shell.Script().TextModified);
  // The next one begins in its folder; cancelled, it changes nothing.
  shell.Editor.Type("'");
  const std::string text = shell.Editor.Content;
  shell.Boxes.Answers = {"no"};
  shell.Take();
  shell.App->Command(MenuId::Mnu_Ouvrir);
  EXPECT_EQ(shell.Take(), (Log{"question Save the changes?", "open dialog"}));
  EXPECT_EQ(shell.Boxes.FileDialogs.back().Folder, shell.Path("sub/"));
  EXPECT_EQ(shell.Editor.Content, text);
  EXPECT_TRUE(shell.Script().TextModified);
  shell.CommandWithAnswers(MenuId::Mnu_Ouvrir, {"cancel"});
  EXPECT_EQ(shell.Take({"open"}), Log{});
  shell.Boxes.Answers = {"no"};
  shell.App->OpenRecent(1);
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.dat"));
}

TEST(FileCommands, KeepsTheTextWhenAFileCannotBeRead) {
  FakeShell shell(Line);
  shell.Write("binary.dat", std::string("\x7F\0\0x", 4));
  shell.Write("huge.dat", "");
  fs::resize_file(PathOf(shell.Path("huge.dat")), MaxScriptBytes + 1);  // takes no room on the disk
  for (const char* name : {"missing.dat", "binary.dat", "huge.dat", ""}) {
    shell.CommandWithFiles(MenuId::Mnu_Ouvrir, {shell.Path(name)});
    EXPECT_EQ(shell.Take({"critical"}).size(), 1U) << name;
    EXPECT_EQ(shell.Editor.Content, Line) << name;
    EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.dat")) << name;
  }
}

TEST(FileCommands, GivesReasonsInTheUsersLanguage) {
  FakeShell shell;
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangueAide = English\r\nLangue = Français\r\n");
  fs::create_directory(PathOf(shell.Path("folder.dat")));
  shell.Boxes.Files = {shell.Path("folder.dat")};
  ASSERT_TRUE(shell.Start());
  const std::string told = "critical Le fichier " + shell.Path("folder.dat");
  EXPECT_EQ(shell.Take({"critical"}), Log{told + " ne peut être lu : c'est un dossier"});
  shell.CommandWithFiles(MenuId::Mnu_Enregistrer, {shell.Path("folder.dat")});
  EXPECT_EQ(shell.Take({"critical"}), Log{told + " ne peut être écrit : c'est un dossier"});
}

TEST(FileCommands, BeginsANewScriptFromTheTemplate) {
  FakeShell shell(Line);
  shell.App->Command(MenuId::Mnu_Nouveau);
  EXPECT_EQ(shell.Editor.Content, "");
  shell.Write("Vaxel.daN", "' new\r\n\r\n");
  shell.Take();
  shell.App->Command(MenuId::Mnu_Nouveau);
  EXPECT_EQ(shell.Editor.Content, "' new\n\n");
  EXPECT_EQ(shell.Window.Text1, "L 1/3");
  EXPECT_EQ(shell.StartupFile(), "");
  EXPECT_FALSE(shell.Script().TextModified);
  EXPECT_EQ(shell.Take({"typing", "hourglass"}), (Log{"typing colour 0", "hourglass"}));
  // It has no name yet.
  shell.CommandWithFiles(MenuId::Mnu_EnregistrerS, {shell.Path("named.dat")});
  EXPECT_EQ(shell.Take(), (Log{"save dialog", "title " + shell.Window.Title}));
  EXPECT_EQ(shell.Read("named.dat"), "' new\r\n\r\n");
  EXPECT_EQ(shell.StartupFile(), shell.Path("named.dat"));
}

TEST(FileCommands, SavesUnderTheChosenName) {
  FakeShell shell(Line);
  const std::pair<const char*, const char*> names[] = {
      {"a.b.dat", "a.b"}, {"c.dat", "c.dat"}, {"dial.old.dat", "dial.old"}, {"plain", "plain"}};
  for (const auto& [chosen, written] : names) {
    shell.CommandWithFiles(MenuId::Mnu_Enregistrer, {shell.Path(chosen)});
    EXPECT_EQ(shell.Read(written), "X = 0,0,1\r\n") << chosen;
    EXPECT_EQ(shell.Script().CurrentFile, shell.Path(written));
  }
  const FileDialog& dialog = shell.Boxes.FileDialogs.back();
  EXPECT_EQ(dialog.Filter, "Vaxel files (*.dat)|*.dat|All files (*.*)|*.*");
  EXPECT_EQ(dialog.DefaultExtension, "dat");
  // The dialog could not ask whether this one may be replaced.
  shell.Write("a.b", "old");
  shell.Boxes.Files = {shell.Path("a.b.dat")};
  shell.CommandWithAnswers(MenuId::Mnu_Enregistrer, {"no"});
  EXPECT_EQ(shell.Read("a.b"), "old");
  // Cancelled.
  shell.Take();
  shell.App->Command(MenuId::Mnu_Enregistrer);
  EXPECT_EQ(shell.Take(), Log{"save dialog"});
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("plain"));
}

const char* const Meter = "min = 0\r\nmax = 5 V\r\nneedle = thin\r\n";

TEST(FileCommands, ImportsAMeterFile) {
  FakeShell shell(Line);
  const std::string name = shell.Path("dial.Mtr");
  shell.Write("dial.Mtr", Meter);
  shell.CommandWithFiles(MenuId::Mnu_OuvrirMeter, {name});
  EXPECT_EQ(shell.Take({"open", "message", "critical", "show"}),
            (Log{"open dialog", "message Lines of the Meter file that were not taken over: 1", "show 74"}));
  EXPECT_EQ(shell.Boxes.FileDialogs.back().Filter, "Meter files (*.mtr)|*.mtr|");
  EXPECT_NE(shell.Editor.Content.find("%Fin = 5\n' ? needle = thin\n"), std::string::npos);
  EXPECT_EQ(shell.Script().CurrentFile, name);
  EXPECT_NE(shell.Window.Title.find(name), std::string::npos);
  EXPECT_FALSE(shell.Script().TextModified);
  // Saving asks for another name and leaves the file alone.
  shell.CommandWithFiles(MenuId::Mnu_EnregistrerS, {});
  EXPECT_EQ(shell.Take({"save"}), Log{"save dialog"});
  EXPECT_EQ(shell.Read("dial.Mtr"), Meter);
  shell.CommandWithFiles(MenuId::Mnu_EnregistrerS, {shell.Path("volt.dat")});
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("volt.dat"));
  EXPECT_NE(shell.Read("volt.dat").find("%Fin = 5\r\n"), std::string::npos);
}

TEST(FileCommands, KeepsTheTextWhenAMeterFileIsRefused) {
  FakeShell shell(Line);
  shell.Write("binary.mtr", std::string("min = 0\nmax = 5\n\0", 17));
  shell.Write("empty.mtr", "");
  shell.Write("huge.mtr", Meter);
  fs::resize_file(PathOf(shell.Path("huge.mtr")), 50'000'000);
  const std::pair<const char*, std::string> cases[] = {
      {"binary.mtr", "critical The file " + shell.Path("binary.mtr") + " is not a Meter file."},
      {"empty.mtr", "critical The file " + shell.Path("empty.mtr") + " is not a Meter file."},
      {"huge.mtr", "critical The file " + shell.Path("huge.mtr") + " is larger than 1 MB."}};
  for (const auto& [name, told] : cases) {
    shell.CommandWithFiles(MenuId::Mnu_OuvrirMeter, {shell.Path(name)});
    EXPECT_EQ(shell.Take({"critical", "text"}), Log{told});
    EXPECT_EQ(shell.Editor.Content, Line) << name;
    EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.dat")) << name;
  }
}

TEST(FileCommands, ImportsAMeterFileAnewWhenItHasChanged) {
  FakeShell shell(Line);
  shell.Write("dial.mtr", Meter);
  shell.App->OpenDropped(shell.Path("dial.mtr"));
  EXPECT_NE(shell.Editor.Content.find("%Fin = 5\n"), std::string::npos);
  shell.Write("dial.mtr", "min = 0\r\nmax = 7\r\n");
  shell.Boxes.Answers = {"yes"};
  shell.App->Activated();
  EXPECT_NE(shell.Editor.Content.find("%Fin = 7\n"), std::string::npos);
}

TEST(FileCommands, SavesInTheEncodingOfTheFile) {
  struct Case {
    std::string Bytes, Typed, Saved;
  };
  const Case cases[] = {
      {"' \xE9\r\n", "' €\n", "' \xE9\r\n' \x80\r\n"},
      {"' \xE9\r", "' Ω", "\xEF\xBB\xBF' é\r\n' Ω"},
      {"' é\n", "' Ω\n\n", "' é\r\n' Ω\r\n\r\n"},
      {"\xEF\xBB\xBF' é", "", "\xEF\xBB\xBF' é"},
      {std::string("\xFF\xFE'\0\xA9\x03", 6), "é", std::string("\xFF\xFE'\0\xA9\x03\xE9\0", 8)}};
  for (const Case& c : cases) {
    FakeShell shell(c.Bytes);
    shell.Editor.Type(c.Typed);
    shell.App->Command(MenuId::Mnu_EnregistrerS);
    EXPECT_EQ(shell.Read("dial.dat"), c.Saved);
    EXPECT_FALSE(shell.Script().TextModified);
    // A text that has to be saved in another encoding is told of, once.
    EXPECT_EQ(shell.Take({"message"}).size(), c.Saved.starts_with("\xEF\xBB\xBF' é\r") ? 1U : 0U);
    shell.Editor.Type("'");
    shell.App->Command(MenuId::Mnu_EnregistrerS);
    EXPECT_EQ(shell.Take({"message", "critical", "question"}), Log{});
  }
}

TEST(FileCommands, NoticesThatTheFileHasChangedOnTheDisk) {
  FakeShell shell(Line);
  shell.Editor.Type("' mine");
  shell.Write("dial.dat", "' somebody else's");
  shell.CommandWithAnswers(MenuId::Mnu_EnregistrerS, {"cancel"});
  EXPECT_TRUE(shell.Script().TextModified);
  EXPECT_EQ(shell.Read("dial.dat"), "' somebody else's");
  shell.Boxes.Answers = {"safe"};
  shell.CommandWithFiles(MenuId::Mnu_EnregistrerS, {shell.Path("mine.dat")});
  EXPECT_EQ(shell.Read("dial.dat"), "' somebody else's");
  EXPECT_EQ(shell.Read("mine.dat"), "X = 0,0,1\r\n' mine");
  shell.Write("mine.dat", "");
  shell.CommandWithAnswers(MenuId::Mnu_EnregistrerS, {"yes"});
  EXPECT_EQ(shell.Read("mine.dat"), "X = 0,0,1\r\n' mine");
  // The program's own writing is no change, and a file that is gone is nothing to be asked for.
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  fs::remove(PathOf(shell.Path("mine.dat")));
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_TRUE(shell.Exists("mine.dat"));
}

TEST(FileCommands, TellsWhyItCannotSaveAndKeepsTheText) {
  FakeShell shell(Line);
  shell.Editor.Type("' mine");
  fs::permissions(PathOf(shell.Path("dial.dat")), fs::perms::owner_read);
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_EQ(shell.Take({"critical"}), Log{"critical The script " + shell.Path("dial.dat") +
                                          " is read-only. Save it under another name."});
  EXPECT_TRUE(shell.Script().TextModified);
  EXPECT_EQ(shell.Read("dial.dat"), Line);
  fs::permissions(PathOf(shell.Path("dial.dat")), fs::perms::owner_all);
  fs::create_directory(PathOf(shell.Path("vanished")));
  shell.CommandWithFiles(MenuId::Mnu_Enregistrer, {shell.Path("vanished/dial.dat")});
  shell.Editor.Type("' more");
  fs::remove_all(PathOf(shell.Path("vanished")));
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_EQ(shell.Take({"critical"}),
            Log{"critical The folder " + shell.Path("vanished") + " does not exist any more."});
  EXPECT_TRUE(shell.Script().TextModified);
  EXPECT_EQ(shell.Editor.Content, std::string(Line) + "' mine' more");
#ifndef _WIN32
  const Result<ScriptBytes> saved = SaveScript("/dev/full", shell.Editor.Content, TextEncoding::Utf8);
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.Why().Fault, FileFault::DiskIsFull);
#endif
}

TEST(FileCommands, TakesScriptsOfManyMegabytes) {
  std::string script;
  while (script.size() < 50'000'000)
    script += "' a long line of a comment that says little, but takes its room\n";
  FakeShell shell(script);
  EXPECT_EQ(shell.Editor.Content, script);
  shell.Editor.Type("X");
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  const std::string saved = shell.Read("dial.dat");
  EXPECT_EQ(saved.size(), shell.Editor.Content.size() + shell.Editor.Place().Lines - 1);
  EXPECT_TRUE(saved.ends_with("room\r\nX"));
}

TEST(FileCommands, InsertsNamesAsScriptsGiveThem) {
  FakeShell shell(Line);
  shell.CommandWithFiles(MenuId::Mnu_Liste_Fic,
                         {shell.Path("pictures/a b.png"), shell.Path("c.dat"), "/elsewhere/d.txt"});
  const std::string below = NameOf(PathOf("pictures/a b.png").make_preferred());
  EXPECT_EQ(shell.Editor.Content, Line + below + "\nc.dat\n/elsewhere/d.txt\n");
  EXPECT_TRUE(shell.Boxes.FileDialogs.back().TakesSeveral);
  EXPECT_TRUE(shell.Script().TextModified);
  EXPECT_EQ(ListOfNames({"C:\\Dials\\x.dat", "c:\\dials\\sub\\y.dat", "D:\\z.dat"}, "C:\\Dials\\dial.dat"),
            "x.dat\nsub\\y.dat\nD:\\z.dat\n");
}

TEST(Recovery, BringsBackWhatWasNotSaved) {
  FakeShell shell(Line);
  shell.Editor.Type("' unsaved");
  shell.Tick();
  EXPECT_TRUE(shell.Exists("Vaxe$7.rec"));
  // Not again before some seconds have passed.
  shell.Editor.Type(" é");
  shell.Tick();
  EXPECT_EQ(shell.Read("Vaxe$7.rec").find("é"), std::string::npos);
  shell.System.Time += std::chrono::seconds(11);
  shell.Tick();
  EXPECT_NE(shell.Read("Vaxe$7.rec").find("é"), std::string::npos);
  // Another program in the same folder leaves it alone while this one runs.
  shell.System.Process = 8;
  shell.System.Running = {7};
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take({"question"}), Log{});
  // After a crash it is offered.
  shell.System.Running.clear();
  shell.Restart();
  shell.Boxes.Answers = {"yes"};
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take({"question"}),
            Log{"question A recovery copy of the unsaved text of " + shell.Path("dial.dat") +
                " was found. Restore it?\n(No: keep it in a file of its own)"});
  EXPECT_EQ(shell.Editor.Content, std::string(Line) + "' unsaved é");
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.dat"));
  EXPECT_TRUE(shell.Script().TextModified);
  EXPECT_FALSE(shell.Exists("Vaxe$7.rec"));
  EXPECT_TRUE(shell.Exists("Vaxe$8.rec"));
  // Saved, and then ended: nothing is left.
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  shell.Tick();
  EXPECT_FALSE(shell.Exists("Vaxe$8.rec"));
  shell.Editor.Type("x");
  shell.System.Time += std::chrono::seconds(11);
  shell.Tick();
  shell.Boxes.Answers = {"no"};
  EXPECT_TRUE(shell.App->Quit());
  EXPECT_FALSE(shell.Exists("Vaxe$8.rec"));
}

// It is written while the user goes on; what could not be written is due again, though nothing has changed.
TEST(Recovery, TriesAgainWhereACopyCouldNotBeWritten) {
  TestFolder folder;
  Recovery recovery({folder.NameOf("none/")}, 7);
  recovery.TextChanged();
  const Recovery::Clock::time_point start = Recovery::Clock::now(), later = start + std::chrono::seconds(11);
  EXPECT_TRUE(recovery.IsDue(start));
  recovery.BeginWriting(start, {{}, "dial.dat", {}, 0, "text"});
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!recovery.IsDue(later) && std::chrono::steady_clock::now() < deadline)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_TRUE(recovery.IsDue(later));
}

// Another version of the program must find the hash that this one has left.
TEST(Recovery, HoldsAHashThatStaysTheSame) {
  EXPECT_EQ(HashOf(""), 0xCBF29CE484222325U);
  EXPECT_EQ(HashOf("foobar"), 0x85944171F73967E8U);
}

TEST(Recovery, PassesOverWhatIsNoCopy) {
  FakeShell shell;
  shell.Write("Vaxe$5.rec", "something else");
  shell.Write("Vaxe$x.rec", "Vaxel recovery\t0\t1\tx\nX");
  shell.Write("Vaxe$6.rec", "Vaxel recovery\t9\t1\tx\nX");
  shell.StartWith(Line);
  EXPECT_EQ(shell.Editor.Content, Line);
}

TEST(RunBridge, WritesCommentsBehindTheirLines) {
  FakeShell shell("Trait = 0, 0, 10, 20\n? ' where\nEpaisT = 2\nEpaisT\n");
  const std::string commented =
      "Trait = 0, 0, 10, 20\n? ' where  ' 10, 20\nEpaisT = 2\nEpaisT  '  2 pixels, 0.5mm\n";
  EXPECT_EQ(shell.Editor.Content, commented);
  EXPECT_EQ(shell.Editor.Replacements, 1);
  shell.App->KeyDown(Key::F4);
  EXPECT_EQ(shell.Editor.Content, commented);
  shell.Editor.Content.replace(8, 1, "5");
  shell.App->KeyDown(Key::F4);
  EXPECT_NE(shell.Editor.Content.find("' where  ' 10, 20\n"), std::string::npos);
}

}  // namespace
}  // namespace vaxel::test
