// The tool bar and the menus at the pointer.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "tests/app/fake_shell.h"

namespace vaxel {
namespace {

using namespace test;

// Which letter is marked depends on the other items.
ContextItem Find(const FakeShell& shell, ContextPlace place, const std::string& caption) {
  for (ContextItem& item : shell.App->ContextMenu(place)) {
    std::string plain = item.Caption;
    std::erase(plain, '&');
    if (plain == caption) return item;
  }
  ADD_FAILURE() << "no item " << caption;
  return {MenuId::Nowhere};
}

TEST(MenusAtHand, HaveTheKeysAndTheStateOfTheMenuBar) {
  FakeShell shell(Dial);
  EXPECT_TRUE(Find(shell, ContextPlace::Editor, "Help on Word\tF1").IsEnabled);
  EXPECT_TRUE(Find(shell, ContextPlace::Editor, "Run the script\tF4").IsEnabled);
  EXPECT_FALSE(Find(shell, ContextPlace::Drawing, "Next page\tCtrl+PgDn").IsEnabled);
  EXPECT_TRUE(Find(shell, ContextPlace::Drawing, "Zoom\tF7").IsEnabled);
  EXPECT_TRUE(Find(shell, ContextPlace::Drawing, "Centre the drawing here\tF6").IsEnabled);
  shell.App->SetItemEnabled(MenuId::Mnu_Visualiser, false);
  EXPECT_FALSE(Find(shell, ContextPlace::Drawing, "Run the script\tF4").IsEnabled);
  EXPECT_FALSE(Find(shell, ContextPlace::Drawing, "Centre the drawing here\tF6").IsEnabled);
}

// Items of several menus come together here, and a letter must not choose another one than it shows.
TEST(MenusAtHand, HaveEachItsOwnLetter) {
  FakeShell shell(Dial);
  for (int language = 1; language <= 3; ++language) {
    shell.Boxes.OnLanguages = [language](const LanguageDialog& dialog) {
      dialog.OnHelp(language);
      dialog.OnButton();
    };
    shell.App->Command(MenuId::Mnu_Langue);
    for (ContextPlace place : {ContextPlace::Editor, ContextPlace::Drawing}) {
      std::string letters;
      for (const ContextItem& item : shell.App->ContextMenu(place)) {
        const std::size_t mark = item.Caption.find('&');
        ASSERT_NE(mark, std::string::npos) << item.Caption;
        letters += UpperCase(item.Caption.substr(mark + 1, 1));
      }
      std::sort(letters.begin(), letters.end());
      EXPECT_EQ(std::adjacent_find(letters.begin(), letters.end()), letters.end())
          << language << ' ' << letters;
    }
  }
}

// Who finds no letter has none; the others keep theirs.
TEST(MenusAtHand, AnItemMayStayWithoutALetter) {
  std::vector<ContextItem> items;
  for (const char* caption : {"&ab", "&ba", "b&a\tF2", "&c"})
    items.push_back({MenuId::Mnu_Zoom, false, caption});
  GiveOwnLetters(items);
  EXPECT_EQ(items[0].Caption, "&ab");
  EXPECT_EQ(items[1].Caption, "&ba");
  EXPECT_EQ(items[2].Caption, "ba\tF2");
  EXPECT_EQ(items[3].Caption, "&c");
}

// What has a key for the drawing is in its menu, also with Ctrl.
TEST(MenusAtHand, RunWhatTheirKeysRun) {
  FakeShell shell("ZoomIni = 2.5\nTrait = 0, 0, 10, 10\n");
  shell.App->Choose(Find(shell, ContextPlace::Drawing, "Zoom of the script (ZoomIni)\tCtrl+F7"));
  EXPECT_EQ(shell.View().ScreenZoom, 2.5);
  EXPECT_EQ(shell.Take({"zoom dialog"}), Log{});
  shell.App->Runs().PointerMoved(100, 100);
  shell.App->Choose(Find(shell, ContextPlace::Drawing, "Centre the drawing here\tF6"));
  EXPECT_NE(shell.View().OffX, 0);
  // Ctrl that is held down meanwhile changes nothing.
  shell.System.Ctrl = true;
  shell.App->Choose(Find(shell, ContextPlace::Drawing, "Reference point\tF8"));
  EXPECT_EQ(shell.Take({"reference"}), Log{"reference dialog"});
  shell.System.Ctrl = false;
  shell.App->Choose(Find(shell, ContextPlace::Drawing, "Drawing in its usual place\tCtrl+F6"));
  EXPECT_EQ(shell.View().OffX, 0);
  shell.Window.OnEvents = [&] {
    const std::size_t happened = shell.Happened.size();
    shell.App->Choose(Find(shell, ContextPlace::Drawing, "Zoom\tF7"));
    EXPECT_EQ(shell.Happened.size(), happened);
  };
  shell.App->KeyDown(Key::F4);
}

TEST(ToolBar, SaysWhatItsButtonsDo) {
  FakeShell shell(Dial);
  EXPECT_EQ(shell.Window.ToolTexts[ToolIcon::Run], "Run the script (F4)");
  EXPECT_EQ(shell.Window.ToolTexts[ToolIcon::Stop], "Stop (Esc)");
  EXPECT_EQ(shell.Window.ToolTexts[ToolIcon::Print], "Print");
  EXPECT_EQ(shell.Window.ToolTexts[ToolIcon::Export], "Export...");
}

TEST(ToolBar, StaysHidden) {
  FakeShell shell(Dial);
  EXPECT_TRUE(shell.Window.IsToolBarShown);
  shell.App->Command(MenuId::Mnu_BarreOutils);
  EXPECT_FALSE(shell.Window.IsToolBarShown);
  // Also when the program is killed.
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  EXPECT_FALSE(shell.Window.IsToolBarShown);
  EXPECT_FALSE(shell.Window.Checked[MenuId::Mnu_BarreOutils]);
  shell.App->Command(MenuId::Mnu_BarreOutils);
  EXPECT_TRUE(shell.Window.IsToolBarShown);
}

}  // namespace
}  // namespace vaxel
