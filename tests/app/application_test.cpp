// Start, menus, settings and the end, as their order is seen by the window, the dialogs and the disk.
#include "app/application.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <new>
#include <set>
#include <stdexcept>
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
    EXPECT_EQ(dialog.Messages, 1);
    EXPECT_EQ(dialog.Help, 1);
    ChooseEnglish(dialog);
  };
  EXPECT_TRUE(shell.Start());
  EXPECT_EQ(shell.Take(), (Log{"language dialog", "open dialog", "disable", "events", "enable", "text 59",
                               "colour all", "title " + shell.Window.Title} +
                           RunOfDial));
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel  V0.3b  (")) << shell.Window.Title;
  EXPECT_TRUE(shell.Window.Title.ends_with(")   File: " + shell.Path("first.dat"))) << shell.Window.Title;
  EXPECT_EQ(
      shell.Read("Vaxel.cfg"),
      "'Fichier de configuration du Programme Vaxel V0.3b\r\n'Ne pas modifier / Do not change\r\n"
      "Recent1 = " +
          shell.Path("first.dat") +
          "\r\nLangue = English\r\nLangueAide = English\r\nFichierDat = Vaxel.dat\r\nDoubleClic = Non\r\n"
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

TEST(Application, TellsInTheTitleWhatIsSaved) {
  FakeShell shell(Dial);
  const auto ends = [&](const std::string& end) { return shell.Window.Title.ends_with(end); };
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel  V0.3b  (")) << shell.Window.Title;
  shell.Editor.Type("' mine");
  EXPECT_TRUE(shell.Window.Title.starts_with("*Vaxel  V0.3b  (")) << shell.Window.Title;
  shell.App->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel  V")) << shell.Window.Title;
  shell.App->Command(MenuId::Mnu_Nouveau);
  EXPECT_TRUE(ends(")   File: New script")) << shell.Window.Title;
  EXPECT_EQ(shell.Script().CurrentFile, "");
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    dialog.OnMessages(1);
    dialog.OnButton();
  };
  shell.App->Command(MenuId::Mnu_Langue);
  EXPECT_TRUE(ends(")   Fichier: Nouveau script")) << shell.Window.Title;
  // What the first run of a script writes into it is no change, and never seems one; a later one's is.
  shell.Write("noted.dat", "Trait = 0, 0, 1, 2\n?\n");
  shell.Take();
  shell.App->OpenDropped(shell.Path("noted.dat"));
  EXPECT_EQ(shell.Take({"title"}), Log{"title " + shell.Window.Title});
  EXPECT_TRUE(shell.Window.Title.starts_with("Vaxel")) << shell.Window.Title;
  shell.Editor.Content = "Trait = 0, 0, 1, 3\n?\n";
  shell.App->KeyDown(Key::F4);
  EXPECT_TRUE(shell.Window.Title.starts_with("*Vaxel")) << shell.Window.Title;
}

TEST(Application, KeepsRecentFilesAtOnce) {
  FakeShell shell(Dial);
  for (const char* name : {"a.dat", "b.dat", "c.dat"}) shell.Write(name, "X = 0,0,1\n");
  shell.App->OpenDropped(shell.Path("a.dat"));
  // Another program has opened one meanwhile, and this one is ended without being asked.
  std::string settings = shell.Read("Vaxel.cfg");
  settings.insert(settings.find("Recent1 ="), "Recent3 = " + shell.Path("c.dat") + "\r\n");
  shell.Write("Vaxel.cfg", settings);
  shell.CommandWithFiles(MenuId::Mnu_Enregistrer, {shell.Path("B.dat")});
  const Log names = {shell.Path("B.dat"), shell.Path("a.dat"), shell.Path("dial.dat"), shell.Path("c.dat")};
  EXPECT_EQ(shell.Window.Recent, names);
  shell.Restart();
  ASSERT_TRUE(shell.Start(shell.Path("B.dat")));
  EXPECT_EQ(shell.Window.Recent, names);
  // Where the settings cannot be written the menu knows them all the same, and the failure is told once.
  std::filesystem::remove(PathOf(shell.Path("Vaxel.cfg")));
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.cfg")));
  shell.Take();
  shell.App->OpenDropped(shell.Path("c.dat"));
  shell.App->OpenDropped(shell.Path("a.dat"));
  EXPECT_EQ(shell.Window.Recent,
            (Log{shell.Path("a.dat"), shell.Path("c.dat"), shell.Path("B.dat"), shell.Path("dial.dat")}));
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
}

// Nothing is chosen: the system's language is taken, and the next start asks again.
TEST(Application, EscapeAtTheFirstStartTakesTheLanguageOfTheSystem) {
  const std::pair<const char*, const char*> cases[] = {
      {"es-MX", "Archivos"}, {"fr", "Fichier"}, {"ja-JP", "File"}, {"", "File"}};
  for (const auto& [system, fileWord] : cases) {
    FakeShell shell;
    shell.System.Language = system;
    std::string proposed;
    shell.Boxes.OnLanguages = [&](const LanguageDialog& dialog) {
      proposed = dialog.Languages[static_cast<std::size_t>(dialog.Messages) - 1];
      dialog.OnMessages(3);
      dialog.OnHelp(2);
    };
    for (int start = 0; start < 2; ++start) {
      shell.Restart();
      ASSERT_TRUE(shell.Start());
      EXPECT_NE(shell.Window.Title.find(std::string(")   ") + fileWord + ": "), std::string::npos) << system;
      EXPECT_EQ(shell.App->Options().HelpFile(),
                shell.Path(HelpFileName(shell.App->Options().Values().HelpLangIndex,
                                        proposed == "Castellano" ? "es" : "en")))
          << system;
      EXPECT_EQ(shell.Take({"language"}).size(), 1U) << system;
      EXPECT_TRUE(shell.App->Quit());
    }
    EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nLangue =\r\nLangueAide =\r\n"), std::string::npos);
  }
}

// The dialog comes once, also when it is not answered.
TEST(Application, AnotherVersionProposesTheLanguagesInForce) {
  for (const bool isAnswered : {false, true}) {
    FakeShell shell;
    shell.Write("Vaxel.cfg", "'Vaxel V0.2 \r\nLangue = Français\r\nLangueAide = English\r\n");
    shell.System.Language = "es";
    shell.Boxes.OnLanguages = [&](const LanguageDialog& dialog) {
      EXPECT_EQ(dialog.Messages, 1);
      EXPECT_EQ(dialog.Help, 2);
      if (isAnswered) dialog.OnButton();
    };
    ASSERT_TRUE(shell.Start());
    EXPECT_TRUE(shell.App->Quit());
    shell.Restart();
    shell.Boxes.OnLanguages = nullptr;
    shell.Take();
    ASSERT_TRUE(shell.Start());
    EXPECT_EQ(shell.Take({"language"}), Log{});
    EXPECT_EQ(shell.App->Options().Values().LangIndex, 1);
    EXPECT_EQ(shell.App->Options().Values().HelpLangIndex, 2);
  }
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
  EXPECT_EQ(shell.Window.CaptionOf(MenuId::Mnu_Ouvrir), "&Abrir\tCtrl+O");
  EXPECT_EQ(shell.Window.CaptionOf(MenuId::Mnu_Visualiser), "E&jecutar (F4)");
  EXPECT_EQ(shell.Window.ToolTips[1], "Coordenadas X e Y del ratón en el gráfico");
  EXPECT_EQ(shell.App->Hint(MenuId::Mnu_Code), "Muestra u oculta el script");
  EXPECT_EQ(shell.App->Hint(MenuId::Mnu_Ouvrir), "");
  EXPECT_NE(shell.Window.Title.find(")   File: "), std::string::npos);
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    dialog.OnHelp(1);
    dialog.OnButton();
  };
  shell.App->Command(MenuId::Mnu_Langue);
  EXPECT_EQ(shell.Window.CaptionOf(MenuId::Mnu_AProposDe), "A propos de &Vaxel");
  EXPECT_EQ(shell.Window.CaptionOf(MenuId::Mnu_RefCurseur), "&RefCur (F8)");
  // Without the button, the languages stay.
  shell.Boxes.OnLanguages = [](const LanguageDialog& dialog) {
    dialog.OnHelp(2);
    dialog.OnMessages(3);
  };
  shell.App->Command(MenuId::Mnu_Langue);
  EXPECT_EQ(shell.Window.CaptionOf(MenuId::Mnu_AProposDe), "A propos de &Vaxel");
  EXPECT_EQ(shell.App->Message(TextId::FileWord), "File");
  EXPECT_EQ(shell.App->Options().HelpFile(), shell.Path("Vaxel.hlp"));
}

TEST(Application, NamesKeysBehindTheCaptions) {
  FakeShell shell(Dial);
  std::map<MenuId, std::string> captions(shell.Window.Captions.begin(), shell.Window.Captions.end());
  const std::pair<MenuId, const char*> cases[] = {
      {MenuId::Mnu_Syntaxe, "&Syntax (F2)"},       {MenuId::Mnu_RefCurseur, "Reference &point (F8)"},
      {MenuId::Mnu_EnregistrerS, "&Save\tCtrl+S"}, {MenuId::Mnu_Imprimer, "&Print"},
      {MenuId::Mnu_AideMot, "Help on &Word\tF1"},  {MenuId::Mnu_Enregistrer, "Save &as"}};
  for (const auto& [item, caption] : cases) EXPECT_EQ(captions[item], caption);
}

TEST(Application, TakesKeysWithWhatIsHeldDown) {
  FakeShell shell(Dial);
  const auto press = [&](Key key, bool withCtrl, bool withShift) {
    shell.System.Ctrl = withCtrl;
    return shell.App->KeyDown(key, withShift);
  };
  // Alone a letter is text, with Shift too it is another command's.
  EXPECT_FALSE(press(Key{'N'}, false, false));
  EXPECT_FALSE(press(Key{'N'}, true, true));
  EXPECT_FALSE(press(Key::F5, false, false));
  EXPECT_EQ(shell.Take(), Log{});
  EXPECT_TRUE(press(Key::F1, true, false));
  EXPECT_TRUE(press(Key::F1, false, true));
  EXPECT_EQ(shell.Take({"help"}), (Log{"help " + shell.App->Options().HelpFile() + " Arc",
                                       "help " + shell.App->Options().HelpFile() + " "}));
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
  shell.Write("dial.MTR", "min = 0\r\nmax = 5\r\n");
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
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"16", "0.5", "x", "-1"});
  const Log asked = shell.Take({"input", "message"});
  ASSERT_EQ(asked.size(), 4U);
  EXPECT_EQ(asked[1], "message Not a usable number: 16");
  EXPECT_EQ(asked[3], "message Not a usable number: x");
  EXPECT_TRUE(asked[0].starts_with("input Active patches:  1\n\nEnter a number")) << asked[0];
  EXPECT_FALSE(shell.App->Options().Values().PatchFlags[PatchTurnedFonts]);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"15"});
  EXPECT_NE(shell.Read("Vaxel.cfg").find("\r\nPatchs = 16384\r\n"), std::string::npos);
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {"-16", "cancel"});
  shell.CommandWithAnswers(MenuId::Mnu_Patchs, {" "});
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
  shell.Take();
  shell.CommandWithAnswers(MenuId::Mnu_TaillCar, {"3", "cancel"});
  EXPECT_EQ(shell.Take({"message"}), Log{"message Not a usable number: 3"});
  EXPECT_EQ(shell.Editor.FontSize, 0);
  shell.CommandWithAnswers(MenuId::Mnu_TaillCar, {"73", "x", "12"});
  EXPECT_EQ(shell.Take({"input", "message"}).size(), 3U);
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

TEST(Application, FollowsTheDividerAndTheWheel) {
  FakeShell shell(Dial);
  shell.App->EditorWidthChanged(333);
  EXPECT_EQ(shell.Window.EditorWidth, 333);
  shell.App->Command(MenuId::Mnu_IniCode);
  EXPECT_EQ(shell.Window.EditorWidth, 460);
  shell.App->CodeSizeStepped(2);
  EXPECT_EQ(shell.Editor.FontSize, 12);
  EXPECT_EQ(shell.Read("Vaxel.cfg").find("TaillCar"), std::string::npos);
  // It is written once, when the wheel rests.
  shell.App->CodeSizeStepped(100);
  shell.Tick();
  EXPECT_EQ(shell.Editor.FontSize, 72);
  EXPECT_NE(shell.Read("Vaxel.cfg").find("= 72\r\n"), std::string::npos) << shell.Read("Vaxel.cfg");
  shell.Editor.FontSize = 0;
  shell.App->CodeSizeStepped(1);
  EXPECT_EQ(shell.Editor.FontSize, 0);
}

// Another screen has pixels of another size.
TEST(Application, DrawsAnewWhenTheScreenChanges) {
  FakeShell shell("EpaisT = 2\nTrait = 0, 0, 10, 0\n");
  const auto width = [&] { return shell.App->Runs().Drawing()->At(0).Width; };
  const double before = width();
  shell.Window.Area.PixelMm /= 2;
  shell.App->ScreenChanged();
  EXPECT_DOUBLE_EQ(width(), before / 2);
}

TEST(Application, TellsWhatIsMissing) {
  FakeShell shell(Dial);
  shell.System.HasHelp = false;
  shell.Take();
  shell.App->KeyDown(Key::F1);
  EXPECT_EQ(shell.Take({"message"}).size(), 1U);
  shell.Boxes.OnLanguages = ChooseEnglish;
  shell.Write("Vaxel_en.DaN", "' template");
  std::filesystem::create_directory(PathOf(shell.Path("Vaxel.DaN")));
  shell.App->Command(MenuId::Mnu_Langue);
  const Log told = shell.Take({"message"});
  ASSERT_EQ(told.size(), 1U);
  EXPECT_NE(told[0].find(shell.Path("Vaxel.DaN")), std::string::npos) << told[0];
  FakeShell another;
  another.Printer.Name.clear();
  EXPECT_FALSE(another.Start());
  EXPECT_EQ(another.Take({"critical"}).size(), 1U);
}

// Whatever a command throws, its user is told and goes on.
TEST(Application, TellsWhatACommandHasThrown) {
  FakeShell shell(Dial);
  const auto toldOf = [&](const auto& thrown) {
    shell.Take();
    try {
      throw thrown;
    } catch (...) {
      shell.App->TellException();
    }
    const Log told = shell.Take({"critical"});
    return told.size() == 1 ? told[0] : "";
  };
  EXPECT_NE(toldOf(std::runtime_error("broken")).find("broken"), std::string::npos);
  const std::string noMemory = toldOf(std::bad_alloc());
  EXPECT_NE(noMemory, "");
  EXPECT_EQ(noMemory.find("bad_alloc"), std::string::npos) << noMemory;
  EXPECT_NE(toldOf(3), "");
}

TEST(Application, TellsOfItself) {
  FakeShell shell(Dial);
  shell.Take();
  shell.App->Command(MenuId::Mnu_AProposDe);
  const Log told = shell.Take({"about"});
  ASSERT_EQ(told.size(), 1U);
  for (const char* part : {"0.3b", "Windows Test"})
    EXPECT_NE(told[0].find(part), std::string::npos) << told[0];
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

TEST(Application, GreysWhatCannotBeDone) {
  FakeShell shell(Dial);
  EXPECT_EQ(shell.Window.Greyed, (std::set<MenuId>{// There is one page.
                                                   MenuId::Mnu_PagePrecedente, MenuId::Mnu_PageSuivante}));
  shell.App->Command(MenuId::Mnu_PageSuivante);
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
