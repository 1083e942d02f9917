// Commands of the edit menu, on the text and the selection that they leave.
#include <gtest/gtest.h>

#include "app/line_editing.h"
#include "tests/app/fake_shell.h"

namespace vaxel::test {
namespace {

// A text in which "[" and "]" stand around what is selected, or "|" at the cursor.
class Edited {
 public:
  explicit Edited(const std::string& marked) : shell_("") {
    std::string text = marked;
    const std::size_t cursor = text.find('|');
    if (cursor != std::string::npos) {
      text.erase(cursor, 1);
      shell_.Editor.Selected = {cursor, cursor};
    } else {
      const std::size_t begin = text.find('[');
      text.erase(begin, 1);
      const std::size_t end = text.find(']');
      text.erase(end, 1);
      shell_.Editor.Selected = {begin, end};
    }
    shell_.Editor.Content = text;
    shell_.Editor.Line = shell_.Editor.LineAt(shell_.Editor.Selected.Begin);
  }

  std::string After(MenuId command) {
    shell_.App->Command(command);
    return Marked();
  }
  std::string Marked() {
    std::string text = shell_.Editor.Content;
    const EditorRange selected = shell_.Editor.Selected;
    if (selected.IsEmpty()) return text.insert(selected.Begin, "|");
    return text.insert(selected.End, "]").insert(selected.Begin, "[");
  }
  FakeShell& Shell() { return shell_; }
  int Steps() const { return shell_.Editor.Replacements; }

 private:
  FakeShell shell_;
};

TEST(EditingCommands, LinesMoveWithTheirSelection) {
  EXPECT_EQ(Edited("one\nt|wo\nthree").After(MenuId::Mnu_Monter), "t|wo\none\nthree");
  EXPECT_EQ(Edited("one\nt|wo\nthree").After(MenuId::Mnu_Descendre), "one\nthree\nt|wo");
  EXPECT_EQ(Edited("one\nt[wo\nth]ree\nfour").After(MenuId::Mnu_Descendre), "one\nfour\nt[wo\nth]ree");
  // A line at whose start the selection ends stays.
  EXPECT_EQ(Edited("one\n[two\n]three").After(MenuId::Mnu_Monter), "[two\n]one\nthree");
  EXPECT_EQ(Edited("[one\n]two").After(MenuId::Mnu_Descendre), "two\n[one]");
  EXPECT_EQ(Edited("o|ne\ntwo").After(MenuId::Mnu_Monter), "o|ne\ntwo");
  EXPECT_EQ(Edited("one\nt|wo").After(MenuId::Mnu_Descendre), "one\nt|wo");
  Edited once("one\nt[wo\nth]ree");
  once.After(MenuId::Mnu_Monter);
  EXPECT_EQ(once.Steps(), 1);
}

TEST(EditingCommands, LinesAreDuplicatedAndDeleted) {
  EXPECT_EQ(Edited("one\nt|wo").After(MenuId::Mnu_Dupliquer), "one\ntwo\nt|wo");
  EXPECT_EQ(Edited("[one\ntw]o\n3").After(MenuId::Mnu_Dupliquer), "one\ntwo\n[one\ntw]o\n3");
  EXPECT_EQ(Edited("one\nt|wo\nthree").After(MenuId::Mnu_SupprimerLignes), "one\n|three");
  EXPECT_EQ(Edited("one\nt|wo").After(MenuId::Mnu_SupprimerLignes), "|one");
  EXPECT_EQ(Edited("o|ne").After(MenuId::Mnu_SupprimerLignes), "|");
}

TEST(EditingCommands, CommentsComeAndGo) {
  EXPECT_EQ(Edited("one\nt|wo").After(MenuId::Mnu_Commenter), "one\n't|wo");
  EXPECT_EQ(Edited("one\n't|wo").After(MenuId::Mnu_Commenter), "one\nt|wo");
  EXPECT_EQ(Edited("o[ne\n\n'two\nth]ree").After(MenuId::Mnu_Commenter), "['one\n\n''two\n'three]");
  for (const char* lines : {"a\n  'b\n\tc", "'a", "  Trait = 1, 2 ' c\n\n' d"}) {
    EXPECT_EQ(WithCommentsToggled(WithCommentsToggled(lines)), lines);
  }
}

TEST(EditingCommands, LinesAreIndented) {
  EXPECT_EQ(Indented("a\n\n b"), "  a\n\n   b");
  EXPECT_EQ(Unindented("  a\n\n b\n\tc\n    d"), "a\n\nb\nc\n  d");
  EXPECT_EQ(Edited("|a").After(MenuId::Mnu_Desindenter), "|a");
  EXPECT_EQ(Edited("x\n [a\n b]").After(MenuId::Mnu_Indenter), "x\n[   a\n   b]");
}

TEST(EditingCommands, ParenthesesFindEachOther) {
  using Pair = std::optional<Parentheses>;
  EXPECT_EQ(ParenthesesAt("a(b(c)d)", 2), (Pair{{1, 7}}));
  EXPECT_EQ(ParenthesesAt("a(b(c)d)", 6), (Pair{{3, 5}}));
  EXPECT_EQ(ParenthesesAt("a(b(c)d)", 1), (Pair{{1, 7}}));
  // The one before the cursor comes first.
  EXPECT_EQ(ParenthesesAt("(a)(b)", 3), (Pair{{0, 2}}));
  EXPECT_EQ(ParenthesesAt("\xF0\x9F\x8C\xA1(é)", 5), (Pair{{2, 4}}));
  EXPECT_EQ(ParenthesesAt("((a)", 0), Pair());
  EXPECT_EQ(ParenthesesAt(")(", 1), Pair());
}

SearchEntry Wanted(const char* wanted, const char* replacement = "") {
  SearchEntry entry;
  entry.Wanted = wanted;
  entry.Replacement = replacement;
  return entry;
}

TEST(EditingCommands, TextsAreFoundByCaseAndWord) {
  const auto placesOf = [](const char* text, const char* wanted, SearchRules rules) {
    std::string places;
    for (const TextPart& part : FindAll(text, wanted, rules)) places += std::to_string(part.Begin) + " ";
    return places;
  };
  EXPECT_EQ(placesOf("Arc arc ARCS", "arc", {}), "0 4 8 ");
  EXPECT_EQ(placesOf("Arc arc ARCS", "arc", {.MatchesCase = true}), "4 ");
  EXPECT_EQ(placesOf("Arc arc ARCS", "arc", {.WholeWords = true}), "0 4 ");
  EXPECT_EQ(placesOf("%R1 %R %R_2", "%R", {.WholeWords = true}), "4 ");
  EXPECT_EQ(placesOf("Écart ÉCART", "écart", {}), "0 7 ");
  EXPECT_EQ(placesOf("aaaa", "aa", {}), "0 2 ");
  EXPECT_EQ(placesOf("aa", "", {}), "");
}

TEST(EditingCommands, TheSearchGoesAroundAndOn) {
  Edited edited("one| two one");
  edited.Shell().Boxes.OnSearch = [&](const SearchDialog& dialog) {
    EXPECT_EQ(dialog.Buttons[0].OnPressed(Wanted("ONE")), "");
    EXPECT_EQ(edited.Marked(), "one two [one]");
    EXPECT_NE(dialog.Buttons[0].OnPressed(Wanted("ONE")), "");
    EXPECT_EQ(edited.Marked(), "[one] two one");
    EXPECT_EQ(dialog.Buttons[0].OnPressed(Wanted("four")), "Text not found: four");
    EXPECT_EQ(edited.Marked(), "[one] two one");
    dialog.Buttons[0].OnPressed(Wanted("o"));
  };
  edited.Shell().App->KeyDown(Key{'F'});
  edited.Shell().System.Ctrl = true;
  edited.Shell().App->KeyDown(Key{'F'});
  edited.Shell().System.Ctrl = false;
  EXPECT_EQ(edited.Marked(), "one tw[o] one");
  edited.Shell().App->KeyDown(Key::F3, true);
  EXPECT_EQ(edited.Marked(), "[o]ne two one");
  edited.Shell().App->KeyDown(Key::F3);
  EXPECT_EQ(edited.Marked(), "one tw[o] one");
  edited.Shell().Editor.Content = "three";
  edited.Shell().Take();
  edited.Shell().App->KeyDown(Key::F3);
  EXPECT_EQ(edited.Shell().Take({"message"}), Log{"message Text not found: o"});
}

TEST(EditingCommands, ReplacingStaysInTheSelection) {
  Edited edited("R\n[R = R\nR]\nR");
  edited.Shell().Boxes.OnSearch = [&](const SearchDialog& dialog) {
    ASSERT_TRUE(dialog.HasSelection);
    SearchEntry entry = Wanted("R", "Rayon");
    entry.InSelection = true;
    EXPECT_EQ(dialog.Buttons[2].OnPressed(entry), "Replaced: 3");
    EXPECT_EQ(edited.Shell().Editor.Content, "R\nRayon = Rayon\nRayon\nR");
    EXPECT_EQ(edited.Steps(), 1);
    // What was selected has become longer.
    entry.Wanted = "Rayon";
    entry.Replacement = "r";
    EXPECT_EQ(dialog.Buttons[2].OnPressed(entry), "Replaced: 3");
  };
  edited.Shell().App->Command(MenuId::Mnu_Chercher);
  EXPECT_EQ(edited.Shell().Editor.Content, "R\nr = r\nr\nR");
}

TEST(EditingCommands, OneIsReplacedWhenItIsSelected) {
  Edited edited("[ab] ab");
  edited.Shell().Boxes.OnSearch = [&](const SearchDialog& dialog) {
    EXPECT_EQ(dialog.Entry.Wanted, "ab");
    dialog.Buttons[1].OnPressed(Wanted("ab", "c"));
    EXPECT_EQ(edited.Marked(), "c [ab]");
  };
  edited.Shell().App->Command(MenuId::Mnu_Chercher);
}

TEST(EditingCommands, AWrongLineIsToldAndAskedForAgain) {
  Edited edited("one\ntwo\nthr|ee");
  edited.Shell().Happened.clear();
  edited.Shell().CommandWithAnswers(MenuId::Mnu_AllerLigne, {"four", "0", "2"});
  EXPECT_EQ(edited.Marked(), "one\n|two\nthree");
  EXPECT_EQ(edited.Shell().Take({"message"}),
            (Log{"message Not a usable number: four", "message Not a usable number: 0"}));
}

// What the control itself does.
TEST(EditingCommands, ReachTheEditor) {
  Edited edited("one\nt|wo");
  FakeShell& shell = edited.Shell();
  shell.Take();
  shell.System.Ctrl = true;
  for (const char key : {'Z', 'Y', 'X', 'C', 'V', 'K'}) shell.App->KeyDown(static_cast<Key>(key));
  EXPECT_EQ(shell.Take(), (Log{"undo", "redo", "cut", "copy", "paste", "colour all"}));
  shell.App->KeyDown(Key{'A'});
  EXPECT_EQ(edited.Marked(), "[one\ntwo]");
}

TEST(EditingCommands, AHiddenTextStays) {
  Edited edited("o|ne");
  edited.Shell().App->Command(MenuId::Mnu_Code);
  EXPECT_EQ(edited.After(MenuId::Mnu_SupprimerLignes), "o|ne");
}

}  // namespace
}  // namespace vaxel::test
