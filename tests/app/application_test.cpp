// Start, menus, settings and the end, as their order is seen by the window, the dialogs and the disk.
#include "app/application.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "base/files.h"
#include "tests/app/fake_shell.h"
#include "tests/support/language_line.h"

namespace vaxel::test {
namespace {

Log operator+(Log first, const Log& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

void ChooseEnglish(const LanguageDialog& dialog) {
  dialog.OnMessages(2);
  dialog.OnHelp(2);
  dialog.OnButton();
}

TEST(Application, AsksAtTheFirstStartForLanguagesAndAScript) {
  FakeShell shell;
  shell.Write("first.dat", Dial);
  shell.Write("Vaxel_en.DaN", "' template\r\n");
  shell.Boxes.Files = {shell.Path("first.dat")};
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    EXPECT_EQ(dialog.Languages, (std::vector<std::string>{"Français", "English", "Castellano"}));
    EXPECT_EQ(dialog.Button, "&Valider - OK");
    ChooseEnglish(dialog);
  };
  EXPECT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take(), (Log{"language dialog", "open dialog", "disable", "events", "enable", "text 59",
                               "colour all", "title " + shell.Window.Title} +
                           RunOfDial));
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel  V0.3b  (")) << shell.Window.Title;
  EXPECT_TRUE(shell.Window.Title.ends_with(")   File: " + shell.Path("first.dat"))) << shell.Window.Title;
  EXPECT_EQ(shell.Read("Vaxel.cfg"),
            "'Fichier de configuration du Programme Vaxel V0.3b\r\n'Ne pas modifier / Do not change\r\n"
            "Langue = English\r\nLangueAide = English\r\nFichierDat = Vaxel.dat\r\nDoubleClic = Non\r\n"
            "Zmm = 1\r\nPatchs = 3\r\n");
  EXPECT_EQ(shell.Read("Vaxel.DaN"), "' template\r\n");
  EXPECT_EQ(shell.App->Options().HelpFile(), shell.Path("Vaxel_en.hlp"));
  EXPECT_FALSE(shell.Script().TextModified);
  // The next time it begins where the last one ended.
  EXPECT_TRUE(shell.App->Quit());
  shell.Take();
  shell.Restart();
  EXPECT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take(), (Log{"text 59", "colour all", "title " + shell.Window.Title} + RunOfDial));
  EXPECT_EQ(shell.Window.Text1, "L 1/4");
}

TEST(Application, ANamedScriptComesFirst) {
  FakeShell shell(Dial);
  shell.Write("other.dat", "X = 0,0,1\n");
  shell.Restart();
  EXPECT_TRUE(shell.Start("other.dat"));
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("other.dat"));
  // One that is not there is told; the editor stays empty.
  shell.Restart();
  shell.Take();
  EXPECT_TRUE(shell.Start("missing.dat"));
  const Log happened = shell.Take({"critical"});
  ASSERT_EQ(happened.size(), 1U);
  EXPECT_TRUE(happened[0].starts_with("critical The file " + shell.Path("missing.dat"))) << happened[0];
}

TEST(Application, NamesMenusInTheLanguageOfHelp) {
  FakeShell shell;
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangueAide = Castellano\r\nLangue = English\r\n");
  ASSERT_TRUE(shell.Start());
  ASSERT_EQ(shell.Window.Captions.size(), 39U);
  EXPECT_EQ(shell.Window.Captions[1].second, "&Abrir\tCtrl+O");
  EXPECT_EQ(shell.Window.Captions[13].second, "&Visualizar (F4)");
  EXPECT_EQ(shell.Window.ToolTips[1], "Coordenadas X e Y del ratón en el gráfico");
  EXPECT_NE(shell.Window.Title.find(")   File: "), std::string::npos);
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) { dialog.OnHelp(1); };  // and Escape
  shell.App->Command(MenuId::Mnu_Langue);
  EXPECT_EQ(shell.Window.Captions.back().second, "A propos de &Vaxel");
  EXPECT_EQ(shell.Window.Captions[39 + 14].second, "&Zoom (F7)");
}

TEST(Application, NamesKeysBehindTheCaptions) {
  FakeShell shell(Dial);
  std::map<MenuId, std::string> captions(shell.Window.Captions.begin(), shell.Window.Captions.end());
  const std::pair<MenuId, const char*> cases[] = {
      {MenuId::Mnu_Syntaxe, "&Syntax (F2)"},       {MenuId::Mnu_RefCurseur, "&RefCur (F8)"},
      {MenuId::Mnu_EnregistrerS, "&Save\tCtrl+S"}, {MenuId::Mnu_Imprimer, "&Print\tCtrl+P"},
      {MenuId::Mnu_AideMot, "Help on &Word\tF1"},  {MenuId::Mnu_Enregistrer, "Save &as"}};
  for (const auto& [item, caption] : cases) EXPECT_EQ(captions[item], caption);
}

TEST(Application, TakesKeysWithWhatIsHeldDown) {
  FakeShell shell(Dial);
  const auto press = [&](Key key, bool withCtrl, bool withShift) {
    shell.System.Ctrl = withCtrl;
    return shell.App->KeyDown(key, withShift);
  };
  // Alone a letter is text, with Shift too it is another command's; Shift and F1 are the editor's.
  EXPECT_FALSE(press(Key{'N'}, false, false));
  EXPECT_FALSE(press(Key{'N'}, true, true));
  EXPECT_FALSE(press(Key::F1, false, true));
  EXPECT_FALSE(press(Key::F3, false, false));
  EXPECT_EQ(shell.Take(), Log{});
  EXPECT_TRUE(press(Key::F1, true, false));
  EXPECT_EQ(shell.Take({"help"}).size(), 1U);
  EXPECT_TRUE(press(Key::F4, true, true));
  EXPECT_EQ(shell.Take(), RunOfDial);
  EXPECT_TRUE(press(Key{'N'}, true, false));
  EXPECT_EQ(shell.Editor.Content, "");
}

TEST(Application, QuitsWithTheSaveQuestion) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 0,0,1");
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"cancel"});
  EXPECT_EQ(shell.Take({"question", "close", "folder"}), Log{"question Save the changes?"});
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"yes"});
  EXPECT_EQ(shell.Take({"question", "close", "folder"}),
            (Log{"question Save the changes?", "folder " + shell.Folder(), "close"}));
  EXPECT_TRUE(shell.Read("dial.dat").ends_with("\r\nX = 0,0,1"));
}

TEST(Application, DoesNotQuitWhenTheTextCouldNotBeSaved) {
  FakeShell shell(Dial);
  shell.Editor.Type("X = 0,0,1");
  std::filesystem::remove(PathOf(shell.Path("dial.dat")));
  std::filesystem::create_directory(PathOf(shell.Path("dial.dat")));
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"yes"});
  const Log happened = shell.Take({"critical", "close"});
  ASSERT_EQ(happened.size(), 1U);
  EXPECT_TRUE(happened[0].starts_with("critical The file ")) << happened[0];
  shell.CommandWithAnswers(MenuId::Mnu_Quitter, {"no"});
  EXPECT_EQ(shell.Take({"close"}), Log{"close"});
}

TEST(Application, NeverRemembersAnImportedFile) {
  FakeShell shell(Dial);
  shell.Write("dial.MTR", "");
  shell.App->OpenDropped(shell.Path("dial.MTR"));
  EXPECT_EQ(shell.Script().CurrentFile, shell.Path("dial.MTR"));
  EXPECT_TRUE(shell.App->Quit());
  EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nFichierDat = dial.dat\r\n"), std::string::npos);
}

TEST(Application, SetsPatchesByTheirNumbers) {
  FakeShell shell;
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = English\r\nPatchs = 1\r\n");
  ASSERT_TRUE(shell.Start());
  EXPECT_TRUE(shell.App->Options().Values().PatchFlags[PatchTurnedFonts]);
  shell.Take();
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"16", "0.5", "-1"});
  const Log asked = shell.Take({"input"});
  ASSERT_EQ(asked.size(), 3U);
  EXPECT_TRUE(asked[0].starts_with("input Active patches:  1\n\nEnter a number")) << asked[0];
  EXPECT_FALSE(shell.App->Options().Values().PatchFlags[PatchTurnedFonts]);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"15"});
  EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nPatchs = 16384\r\n"), std::string::npos);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"cancel"});
  EXPECT_TRUE(shell.App->Options().Values().PatchFlags[14]);
}

TEST(Application, GoesOnWithoutAFolderToWriteIn) {
  FakeShell shell;
  // Folders stand where the files should be.
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.cfg")));
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.DaN")));
  shell.Write("Vaxel_en.DaN", "' template");
  shell.Boxes.OnLanguages = ChooseEnglish;
  ASSERT_TRUE(shell.Start());
  shell.Boxes.OnZoom = [](const ZoomDialog& dialog) { dialog.OnButton("1", "1.1"); };
  shell.App->KeyDown(Key::F7);
  EXPECT_EQ(shell.App->Options().Values().Zmm, 1.1);
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
}

TEST(Application, TellsOfWrongLanguageFilesInTheChosenLanguage) {
  FakeShell shell;
  shell.Write("Vaxel_de.lng",
              LineOf(TextId::LanguageName, "Deutsch") + LineOf(TextId::FileWord, "Datei") + "x\n");
  shell.Write("Vaxel_it.lng", std::string(3 << 20, '\''));
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel_nl.lng")));
  shell.Write("Vaxel.cfg", "'Vaxel V0.3b\r\nLangue = English\r\nLangueAide = Deutsch\r\n");
  ASSERT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take({"message"}),
            (Log{"message Wrong lines of the language file Vaxel_de.lng, which the English text replaces:\n"
                 "line 3: not \"number = text\": x\n",
                 "message The language file Vaxel_it.lng is not used: the file is larger than 1 MB",
                 "message The file Vaxel_nl.lng cannot be read: it is a folder"}));
  EXPECT_EQ(shell.App->Options().HelpFile(), shell.Path("Vaxel_de.hlp"));
}

TEST(Application, RemembersItsWindow) {
  FakeShell shell(Dial);
  EXPECT_FALSE(shell.Window.PlaceSet);
  EXPECT_EQ(shell.Window.EditorWidth, 460);
  shell.App->Command(MenuId::Mnu_AgrandirCode);
  EXPECT_EQ(shell.Window.EditorWidth, 690);
  shell.App->Command(MenuId::Mnu_Code);
  EXPECT_EQ(shell.Window.EditorWidth, 0);
  shell.CommandWithAnswers(MenuId::Mnu_TaillCar, {"3", "12"});
  EXPECT_EQ(shell.Editor.FontSize, 0);
  shell.App->Command(MenuId::Mnu_TaillCar);
  EXPECT_TRUE(shell.App->Quit());
  shell.Restart();
  ASSERT_TRUE(shell.Start());
  ASSERT_TRUE(shell.Window.PlaceSet);
  EXPECT_EQ(shell.Window.PlaceSet->Frame.Right, 810);
  EXPECT_EQ(shell.Window.EditorWidth, 0);
  EXPECT_EQ(shell.Editor.FontSize, 12);
  shell.App->Command(MenuId::Mnu_Code);
  EXPECT_EQ(shell.Window.EditorWidth, 690);
  EXPECT_EQ(shell.Window.Recent, Log{shell.Path("dial.dat")});
  shell.Take();
  shell.App->Command(MenuId::Mnu_CentreCurseur);
  EXPECT_EQ(shell.Take(), Log{"pointer at 200,250"});
}

TEST(Application, RemembersItWhenTheSessionEnds) {
  FakeShell shell;
  shell.Write("dial.dat", Dial);
  shell.Boxes.Files = {shell.Path("dial.dat")};
  shell.Boxes.OnLanguages = [&](const LanguageDialog& dialog) {
    // Nothing is chosen: the next start asks again.
    const std::string settings = shell.Read("Vaxel.cfg");
    shell.App->SessionHasEnded();
    EXPECT_EQ(shell.Read("Vaxel.cfg"), settings);
    ChooseEnglish(dialog);
  };
  ASSERT_TRUE(shell.Start());
  shell.App->SessionHasEnded();
  const std::string settings = shell.Read("Vaxel.cfg");
  EXPECT_NE(settings.find("FichierDat =" + shell.Path("dial.dat") + "\r\n"), std::string::npos) << settings;
}

TEST(Application, GreysWhatHasNoCommandYet) {
  FakeShell shell(Dial);
  EXPECT_EQ(shell.Window.Greyed,
            (std::set<MenuId>{MenuId::Mnu_OuvrirMeter, MenuId::Mnu_Imprimante, MenuId::Mnu_ImprimerZoom,
                              MenuId::Mnu_ImprimerCode, MenuId::Mnu_Syntaxe, MenuId::Mnu_Polices,
                              // There is one page.
                              MenuId::Mnu_PagePrecedente, MenuId::Mnu_PageSuivante}));
  shell.App->Command(MenuId::Mnu_ImprimerZoom);
  EXPECT_FALSE(shell.App->KeyDown(Key::F2));
  EXPECT_EQ(shell.Take(), Log{});
  shell.Boxes.Chosen = 255;
  shell.App->Command(MenuId::Mnu_Couleur);
  shell.Boxes.Chosen = MakeColour(1, 2, 3);
  shell.App->Command(MenuId::Mnu_Couleur);
  EXPECT_TRUE(shell.Editor.Content.ends_with("RougeRVB 1 2 3")) << shell.Editor.Content;
  shell.App->KeyDown(Key::F1);
  EXPECT_EQ(shell.Take({"help"}), Log{"help " + shell.Folder() + "Vaxel_en.hlp Arc"});
}

}  // namespace
}  // namespace vaxel::test
