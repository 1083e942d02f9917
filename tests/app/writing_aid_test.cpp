// What helps while a script is written: offers, help, spelling, the list of problems, drawing as one types.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

// As at the keyboard, key by key.
void Type(FakeShell& shell, std::string_view text) {
  for (const char key : text) {
    if (key == '\n' && shell.App->KeyDown(Key::Return)) continue;
    shell.Editor.Type({&key, 1});
    shell.App->Typed();
  }
}

bool Offers(const FakeShell& shell, const std::string& name) {
  return std::ranges::find(shell.Aid.Offers, name) != shell.Aid.Offers.end();
}

TEST(WritingAid, OffersWhatABeginningMayMean) {
  FakeShell shell("Arc = 0, 0, 40, 45, 135\n");
  Type(shell, "C");
  EXPECT_TRUE(shell.Aid.Offers.empty());
  Type(shell, "er");
  EXPECT_TRUE(Offers(shell, "Cercle"));
  EXPECT_EQ(shell.Aid.Place, 24U);
  EXPECT_TRUE(shell.App->KeyDown(Key::Escape));
  EXPECT_FALSE(shell.App->Runs().IsAbortRequested());
  EXPECT_TRUE(shell.Aid.Offers.empty());
  // Another letter asks again; the first offer is taken, in one step.
  Type(shell, "c");
  ASSERT_FALSE(shell.Aid.Offers.empty());
  EXPECT_EQ(shell.Aid.Offers.front(), "Cercle");
  EXPECT_TRUE(shell.App->KeyDown(Key::Tab));
  EXPECT_EQ(shell.Editor.Content, "Arc = 0, 0, 40, 45, 135\nCercle = ");
  EXPECT_EQ(shell.Editor.Replacements, 1);
  EXPECT_TRUE(shell.Aid.Offers.empty());
  // Without offers the keys are the editor's.
  for (const Key key : {Key::Return, Key::Up}) EXPECT_FALSE(shell.App->KeyDown(key));
}

TEST(WritingAid, TheArrowsChooseAnOffer) {
  FakeShell shell("%Rayon = 40\n%Rond = 3\n%Rang = 5\n");
  Type(shell, "Trait = %R");
  ASSERT_EQ(shell.Aid.Offers.size(), 3U);
  const std::string second = shell.Aid.Offers[1], last = shell.Aid.Offers[2];
  EXPECT_TRUE(shell.App->KeyDown(Key::Up));
  EXPECT_EQ(shell.Aid.Chosen, 2U);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(shell.App->KeyDown(Key::Down));
  EXPECT_EQ(shell.Aid.Chosen, 1U);
  EXPECT_FALSE(shell.App->KeyDown(Key::PageUp));
  EXPECT_TRUE(shell.App->KeyDown(Key::Up));
  EXPECT_TRUE(shell.App->KeyDown(Key::Down));
  EXPECT_TRUE(shell.App->KeyDown(Key::Return));
  EXPECT_TRUE(shell.Editor.Content.ends_with("Trait = " + second)) << shell.Editor.Content;
}

// A folder is not read at every key; what has come into it is offered a little later.
TEST(WritingAid, OffersFilesBesideTheScriptAndFonts) {
  FakeShell shell(Dial);
  shell.Write("part.dat", Dial);
  std::filesystem::create_directory(PathOf(shell.Path("pages")));
  Type(shell, "Fichier = pa");
  EXPECT_TRUE(Offers(shell, "part.dat"));
  EXPECT_TRUE(Offers(shell, std::string("pages") + static_cast<char>(fs::path::preferred_separator)));
  EXPECT_FALSE(Offers(shell, "dial.dat"));
  shell.Write("part2.dat", Dial);
  Type(shell, "r");
  EXPECT_FALSE(Offers(shell, "part2.dat"));
  shell.System.Time += std::chrono::seconds(6);
  Type(shell, "t");
  EXPECT_TRUE(Offers(shell, "part2.dat"));
  shell.App->KeyDown(Key::Escape);
  Type(shell, "\nPolice = cour");
  EXPECT_TRUE(Offers(shell, "Courier New"));
}

TEST(WritingAid, OffersWhatTheCursorHasLeftNoMore) {
  FakeShell shell("%Rayon = 40\n");
  Type(shell, "Trait = %R");
  EXPECT_TRUE(Offers(shell, "%Rayon"));
  shell.Editor.GoToLine(1);
  shell.App->CursorMoved();
  EXPECT_TRUE(shell.Aid.Offers.empty());
  shell.Editor.Selected = {shell.Editor.Content.size(), shell.Editor.Content.size()};
  shell.Editor.Line = 2;
  shell.App->Command(MenuId::Mnu_Completer);
  EXPECT_TRUE(Offers(shell, "%Rayon"));
}

TEST(WritingAid, HelpFollowsTheCursor) {
  FakeShell shell("");
  shell.App->KeyDown(Key::F2);
  EXPECT_EQ(shell.Aid.Page, AidPage::Help);
  Type(shell, "Cercle = 1, 2, ");
  const AidHelp& help = shell.Aid.Help;
  EXPECT_TRUE(help.Text.starts_with("Cercle")) << help.Text;
  ASSERT_EQ(help.Strong.size(), 1U);
  const auto strong = [&] {
    return help.Text.substr(help.Strong[0].Begin, help.Strong[0].End - help.Strong[0].Begin);
  };
  EXPECT_EQ(strong(), "radius");
  // A line goes on in the next one, and counts its parameters from the first.
  Type(shell, "3\nCercle = 1, _\n2, ");
  ASSERT_EQ(help.Strong.size(), 1U);
  EXPECT_EQ(strong(), "radius");
  shell.App->KeyDown(Key::F2);
  EXPECT_EQ(shell.Aid.Page, AidPage::None);
}

TEST(WritingAid, ADoubleClickShowsHelpWhereThatIsWanted) {
  FakeShell shell(Dial);
  shell.App->DoubleClicked();
  EXPECT_EQ(shell.Aid.Page, AidPage::None);
  shell.App->Command(MenuId::Mnu_DblClick);
  shell.App->DoubleClicked();
  EXPECT_EQ(shell.Aid.Page, AidPage::Help);
}

TEST(WritingAid, SpellsTheLineThatIsLeft) {
  FakeShell shell("trait = 0,0,1,1\n");
  Type(shell, "trait = 0, 0, 5, 5 ' trait");
  shell.App->TypingPaused();
  EXPECT_TRUE(shell.Editor.Content.ends_with("\ntrait = 0, 0, 5, 5 ' trait"));
  Type(shell, "\nTr");
  EXPECT_EQ(shell.Editor.Content, "trait = 0,0,1,1\nTrait = 0, 0, 5, 5 ' trait\nTr");
  EXPECT_EQ(shell.Editor.Selected.Begin, shell.Editor.Content.size());
  EXPECT_EQ(shell.Editor.Replacements, 1);
  // A text that was loaded is as it was written, also in the line that was typed last.
  shell.Write("other.dat", "a:\nb:\ntrait = 1,1,2,2\n");
  shell.Editor.Line = 3;
  shell.App->Typed();
  shell.Boxes.Answers = {"no"};
  shell.App->OpenDropped(shell.Path("other.dat"));
  shell.App->CursorMoved();
  shell.App->TypingPaused();
  EXPECT_EQ(shell.Editor.Content, "a:\nb:\ntrait = 1,1,2,2\n");
}

// What was saved would else be changed soon after, and have to be saved again.
TEST(WritingAid, SpellsWhatWasTypedBeforeItIsSaved) {
  FakeShell shell("");
  Type(shell, "trait = 0, 0, 5, 5");
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_EQ(shell.Read("dial.dat"), "Trait = 0, 0, 5, 5");
  shell.Editor.Line = 2;
  shell.App->CursorMoved();
  shell.App->TypingPaused();
  EXPECT_FALSE(shell.Window.Title.starts_with("*")) << shell.Window.Title;
}

// To read a long script takes longer than a key may.
TEST(WritingAid, SpellsInALongScriptAtAPause) {
  FakeShell shell(std::string(120'000, '\'') + "\n");
  Type(shell, "trait = 0, 0, 5, 5\nTr");
  EXPECT_TRUE(shell.Editor.Content.ends_with("\ntrait = 0, 0, 5, 5\nTr"));
  shell.App->TypingPaused();
  EXPECT_TRUE(shell.Editor.Content.ends_with("\nTrait = 0, 0, 5, 5\nTr"));
}

TEST(WritingAid, ListsWhatARunHasFoundWrong) {
  FakeShell shell("Couleur = Rot\n" + std::string(Dial));
  EXPECT_EQ(shell.Aid.Problems.size(), 1U);
  shell.Editor.Content = "Foo = 1\nCouleur = Blau\n";
  shell.App->KeyDown(Key::F4);
  ASSERT_EQ(shell.Aid.Problems.size(), 1U);
  EXPECT_TRUE(shell.Aid.Problems[0].starts_with("1: ")) << shell.Aid.Problems[0];
}

TEST(WritingAid, OffersToOpenTheFileOfAMessage) {
  FakeShell shell(Dial);
  shell.Write("part.dat", "' part\nTrait = 1/0\n");
  shell.Editor.Content = "\nFichier = part.dat\n";
  shell.App->KeyDown(Key::F4);
  ASSERT_EQ(shell.Aid.Problems.size(), 1U);
  shell.App->KeyDown(Key::F9);
  EXPECT_EQ(shell.Editor.Line, 2U);
  EXPECT_EQ(shell.App->Script().CurrentFile, shell.Path("dial.dat"));
  shell.Boxes.Answers = {"safe"};
  shell.App->ProblemClicked(0);
  EXPECT_EQ(shell.App->Script().CurrentFile, shell.Path("dial.dat"));
  shell.Boxes.Answers = {"yes"};
  shell.App->ProblemClicked(0);
  EXPECT_EQ(shell.App->Script().CurrentFile, shell.Path("part.dat"));
  EXPECT_EQ(shell.Editor.Line, 2U);
}

// What the editor colours lines by changes with the names in the script, not with every key.
TEST(WritingAid, TellsTheEditorOfNewNames) {
  FakeShell shell("%Rayon = 40\n");
  shell.Editor.NamesSet = 0;
  Type(shell, "Cercle = 0, 0, %Rayon\n");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.Editor.NamesSet, 0);
  Type(shell, "%Pas = 2");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.Editor.NamesSet, 1);
}

TEST(WritingAid, SaysWhatTheWordAtThePointerIs) {
  FakeShell shell("%Rayon = 40/2\nCercle = 0, 0, %{Rayon} + %Loin + %FCMM\n' Cercle\n");
  const std::string text = shell.Editor.Content;
  const auto said = [&](std::string_view word) {
    const auto help = shell.App->WordAt(text.find(word) + 1);
    return help ? text.substr(help->Word.Begin, help->Word.End - help->Word.Begin) + "|" + help->Text : "";
  };
  EXPECT_TRUE(said("Cercle").starts_with("Cercle|")) << said("Cercle");
  EXPECT_EQ(said("%{Rayon}"), "%{Rayon}|%Rayon = 40/2 (last run)");
  EXPECT_EQ(said("%FCMM"), "%FCMM|%FCMM: system variable");
  EXPECT_EQ(said("%Loin"), "%Loin|No line of this script gives %Loin a value.");
  EXPECT_EQ(said("0, 0"), "");
  EXPECT_EQ(said("' Cercle"), "");
  EXPECT_FALSE(shell.App->WordAt(text.find('+')));
  // Where nothing has run yet, the line that gives it a value is told.
  shell.Editor.Content += "%Neuf = 9\n";
  shell.App->EditorChanged();
  const auto fresh = shell.App->WordAt(shell.Editor.Content.find("%Neuf") + 1);
  ASSERT_TRUE(fresh);
  EXPECT_EQ(fresh->Text, "%Neuf: variable, line 4");
  shell.Editor.Content = "Couleur = Rouge\n";
  shell.App->EditorChanged();
  const auto colour = shell.App->WordAt(12);
  ASSERT_TRUE(colour && colour->Sample);
  EXPECT_EQ(colour->Text, "red 255, green 0, blue 0");
  EXPECT_EQ(*colour->Sample, MakeColour(255, 0, 0));
}

TEST(WritingAid, DrawsWhileOneTypes) {
  FakeShell shell(Dial);
  const std::size_t before = shell.App->Runs().Drawing()->Size();
  shell.Happened.clear();
  Type(shell, "Trait = 0, 0, 5, 5\n?\n");
  EXPECT_GT(shell.Window.AwaitedPauses, 0);
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before);
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before + 1);
  EXPECT_TRUE(shell.Editor.Content.ends_with("?\n"));  // no comment is written
  // A script that fails keeps the drawing, which is said to be old; no box tells of it.
  Type(shell, "Foo = 1\n");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before + 1);
  EXPECT_TRUE(shell.Window.IsDrawingOld);
  ASSERT_EQ(shell.Aid.Problems.size(), 1U);
  EXPECT_TRUE(shell.Aid.Problems[0].starts_with("6: ")) << shell.Aid.Problems[0];
  EXPECT_EQ(shell.Aid.Marked, std::vector<std::size_t>{6});
  EXPECT_EQ(shell.Aid.Page, AidPage::None);
  EXPECT_EQ(shell.Take({"critical", "message", "hourglass", "disable"}), Log{});
  // The next problem is gone to by its key.
  shell.Editor.GoToLine(1);
  shell.App->KeyDown(Key::F9);
  EXPECT_EQ(shell.Aid.Page, AidPage::Problems);
  EXPECT_EQ(shell.Editor.Line, 6U);
  shell.Editor.GoToLine(7);
  shell.App->KeyDown(Key::F9, true);
  EXPECT_EQ(shell.Editor.Line, 6U);
  // What is mended is drawn again.
  shell.Editor.Replace(shell.Editor.RangeOfLines(6, 6), "' none");
  shell.App->TypingPaused();
  EXPECT_FALSE(shell.Window.IsDrawingOld);
  EXPECT_TRUE(shell.Aid.Problems.empty());
  EXPECT_TRUE(shell.Aid.Marked.empty());
}

TEST(WritingAid, AKeyEndsDrawing) {
  FakeShell shell(Dial);
  const std::size_t before = shell.App->Runs().Drawing()->Size();
  Type(shell, "Trait = 0, 0, 5, 5\n");
  shell.Window.OnInput = [] { return true; };
  shell.Window.AwaitedPauses = 0;
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before);
  EXPECT_EQ(shell.Window.AwaitedPauses, 1);
  shell.Window.OnInput = nullptr;
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before + 1);
  // One that is drawn is not drawn again.
  shell.Happened.clear();
  shell.App->TypingPaused();
  EXPECT_EQ(shell.Take({"show"}), Log{});
}

TEST(WritingAid, WhatTakesTooLongWaitsForF4) {
  FakeShell shell(Dial);
  Type(shell, "Again:\nGoto Again\n");
  shell.System.Step = std::chrono::milliseconds(20);
  shell.Window.AwaitedPauses = 0;
  for (int pause = 0; pause < 3; ++pause) shell.App->TypingPaused();
  EXPECT_EQ(shell.Window.AwaitedPauses, 1);  // for a second try
  EXPECT_NE(shell.Window.Status[static_cast<std::size_t>(StatusField::Message)].find("F4"),
            std::string::npos);
}

TEST(WritingAid, NothingIsDrawnWhereThatIsNotWanted) {
  FakeShell shell(Dial);
  shell.App->Command(MenuId::Mnu_DessinDirect);
  EXPECT_NE(shell.Read("Vaxel.cfg").find("DessinDirect = Non\r\n"), std::string::npos);
  const std::size_t before = shell.App->Runs().Drawing()->Size();
  Type(shell, "Trait = 0, 0, 5, 5\n");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before);
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  EXPECT_FALSE(shell.App->Options().DrawsLive());
}

TEST(WritingAid, QuestionsTakeTheLastAnswer) {
  FakeShell shell(Dial);
  shell.Editor.Content = "%N = 3\nInput = How many, %N\nTrait = 0, 0, %N, 0\n";
  shell.Boxes.Answers = {"7"};
  shell.App->KeyDown(Key::F4);
  shell.Happened.clear();
  Type(shell, "' more\n");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.Take({"input"}), Log{});
  EXPECT_FALSE(shell.Window.IsDrawingOld);
  // One that was not asked yet takes what the script proposes.
  const std::size_t before = shell.App->Runs().Drawing()->Size();
  Type(shell, "%M = 4\nInput = How wide, %M\nTrait = 0, 0, %M, 0\n");
  shell.App->TypingPaused();
  EXPECT_EQ(shell.App->Runs().Drawing()->Size(), before + 1);
  EXPECT_FALSE(shell.Window.IsDrawingOld);
}

}  // namespace
}  // namespace vaxel::test
