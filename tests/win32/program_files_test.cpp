// The real program, driven from outside: starts, settings, files and ends.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/win32/program_fixture.h"
#include "win32/dialog_ids.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

using WithoutPrinter = ProgramTest;

TEST_F(WithoutPrinter, TellsItInFrenchAndEnds) {
  const std::string settings = SettingsWith("English", "dial.dat");
  for (const bool isConfigured : {false, true}) {
    if (isConfigured) folder_.Write("Vaxel.cfg", settings);
    RunningProgram program(folder_);
    const ShownDialog box = program.AwaitDialog();
    EXPECT_EQ(box.Message(),
              "Attention, aucune imprimante n'est configurée sur ce système. Le programme "
              "Vaxel va être arrêté.");
    EXPECT_FALSE(IsWindowVisible(program.Window()));
    box.Press(IDOK);
    EXPECT_EQ(program.AwaitExit(), 1);
    EXPECT_EQ(folder_.Read("Vaxel.cfg"), isConfigured ? settings : "");
  }
}

class Starts : public ProgramTest, public testing::WithParamInterface<Language> {};

// From the first start to the second one.
TEST_P(Starts, InTheLanguageThatWasChosen) {
  const Language language = GetParam();
  const std::string name = TextIn(language, TextId::LanguageName),
                    code = TextIn(language, TextId::LanguageCode);
  folder_.Write("dial.dat", "Trait = 0, 0, 10, 10\r\n' two\r\n' three");
  folder_.Write("Vaxel_" + code + ".DaN", "' template\r\n");
  program_.emplace(folder_);

  const ShownDialog languages = program_->AwaitDialog();
  EXPECT_FALSE(IsWindowVisible(program_->Window()));
  languages.Click(IDC_OPTION1_FIRST + int{language});
  languages.Click(IDC_OPTION2_FIRST + int{language});
  languages.Answer(IDC_COMMAND1);
  const ShownDialog open = program_->AwaitDialog();
  ASSERT_TRUE(open.IsFileDialog());
  open.AnswerFile(folder_.NameOf("dial.dat"));
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(language, folder_.NameOf("dial.dat")));
  EXPECT_EQ(program_->EditorText(), "Trait = 0, 0, 10, 10\n' two\n' three");
  EXPECT_EQ(program_->Text(Text1Id), "L 1/3");
  EXPECT_EQ(program_->ToolTip(Text1Id), TextIn(language, TextId::LineToolTip));
  EXPECT_EQ(program_->ToolTip(Text2Id), TextIn(language, TextId::PlaceToolTip));
  EndUnasked();

  const std::string settings = folder_.Read("Vaxel.cfg");
  EXPECT_TRUE(settings.starts_with(Header())) << settings;
  EXPECT_TRUE(HasLine(settings, "Langue = " + name)) << settings;
  EXPECT_TRUE(HasLine(settings, "LangueAide = " + name)) << settings;
  EXPECT_TRUE(HasLine(settings, "FichierDat =" + folder_.NameOf("dial.dat"))) << settings;
  EXPECT_TRUE(HasLine(settings, "DoubleClic = Non")) << settings;
  EXPECT_EQ(folder_.Read("Vaxel.DaN"), "' template\r\n");
  EXPECT_FALSE(folder_.Has("Vaxe$cfg.old"));

  program_.emplace(folder_);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(language, folder_.NameOf("dial.dat")));
  program_->Command(MenuId::Mnu_Nouveau);
  EXPECT_EQ(program_->Title(), TitleWith(language, ""));
  EXPECT_EQ(program_->EditorText(), "' template\n");
  EXPECT_EQ(program_->Text(Text1Id), "L 1/2");
  program_->TypeIntoEditor("x");
  program_->Close();
  const ShownDialog question = program_->AwaitDialog();
  EXPECT_EQ(question.Message(), TextIn(language, TextId::SaveChanges));
  question.Answer(IDNO);
  EXPECT_EQ(program_->AwaitExit(), 0);
}

INSTANTIATE_TEST_SUITE_P(Program, Starts, testing::Values(French, English, Spanish),
                         [](const testing::TestParamInfo<Language>& language) {
                           return TextIn(language.param, TextId::LanguageCode);
                         });

// Nothing is chosen in either dialog of the first start; a script that was remembered is gone.
TEST_F(ProgramTest, StartsWithoutAScript) {
  folder_.Write("Vaxel.cfg", SettingsWith("English", folder_.NameOf("gone.dat")));
  program_.emplace(folder_);
  const ShownDialog open = program_->AwaitDialog();
  ASSERT_TRUE(open.IsFileDialog());
  open.Answer(IDCANCEL);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(English, ""));
  EXPECT_EQ(program_->EditorText(), "");
  program_->Command(MenuId::Mnu_Visualiser);
  EndUnasked();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "FichierDat = " + folder_.NameOf("gone.dat")));
}

TEST_F(ProgramTest, OpensAndSaves) {
  folder_.Write("other.dat", "' other");
  folder_.Write("Vaxel.DaN", "' template");
  StartWith("' one\r\n");
  std::error_code ignored;
  // Not saved yet, and kept by Cancel.
  program_->TypeIntoEditor("'");
  program_->CommandWithDialog(MenuId::Mnu_Ouvrir).Answer(IDCANCEL);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "'' one\n");
  program_->CtrlKey('S');
  // Reading it meanwhile could keep it from being replaced.
  Await("the saved file", [&] { return fs::file_size(folder_.Path() / "dial.dat", ignored) == 8; });
  program_->AwaitIdle();
  EXPECT_EQ(folder_.Read("dial.dat"), "'' one\r\n");

  ShownDialog open = program_->CommandWithDialog(MenuId::Mnu_Ouvrir);
  ASSERT_TRUE(open.IsFileDialog());
  open.AnswerFile("other.dat");
  AwaitEditor("' other");
  EXPECT_EQ(program_->Title(), TitleWith(English, folder_.NameOf("other.dat")));

  program_->TypeIntoEditor("' more ");
  program_->CommandWithDialog(MenuId::Mnu_Enregistrer).AnswerFile("a.b.dat");
  Await("the saved file", [&] { return folder_.Has("a.b"); });
  program_->AwaitIdle();
  EXPECT_EQ(folder_.Read("a.b"), "' more ' other");
  EXPECT_EQ(folder_.Read("other.dat"), "' other");
  EXPECT_FALSE(folder_.Has("a.b.dat"));
  EXPECT_EQ(program_->Title(), TitleWith(English, folder_.NameOf("a.b")));

  program_->OpenRecent(2);
  EXPECT_EQ(program_->EditorText(), "'' one\n");

  // A new script has no name until it is saved.
  program_->Command(MenuId::Mnu_Nouveau);
  EXPECT_EQ(program_->EditorText(), "' template");
  const ShownDialog save = program_->CommandWithDialog(MenuId::Mnu_EnregistrerS);
  ASSERT_TRUE(save.IsFileDialog());
  save.AnswerFile("new");
  Await("the saved file", [&] { return folder_.Has("new.dat"); });
  program_->AwaitIdle();
  EndUnasked();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "FichierDat =" + folder_.NameOf("new.dat")));
}

TEST_F(ProgramTest, AsksBeforeItEnds) {
  StartWith("' one");
  program_->Command(MenuId::Mnu_DblClick);
  program_->TypeIntoEditor("' zero ");
  program_->Post(MenuId::Mnu_Quitter);
  const ShownDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_EQ(question.Message(), TextIn(English, TextId::SaveChanges));
  question.Answer(IDCANCEL);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "' zero ' one");
  EXPECT_EQ(folder_.Read("dial.dat"), "' one");
  program_->Close();
  program_->AwaitDialog("Vaxel").Answer(IDYES);
  EXPECT_EQ(program_->AwaitExit(), 0);
  EXPECT_EQ(folder_.Read("dial.dat"), "' zero ' one");
  const std::string settings = folder_.Read("Vaxel.cfg");
  EXPECT_TRUE(HasLine(settings, "DoubleClic = Oui")) << settings;
  EXPECT_TRUE(HasLine(settings, "FichierDat =" + folder_.NameOf("dial.dat"))) << settings;
}

TEST_F(ProgramTest, KeepsItsTextWhenTheSessionEnds) {
  StartWith("' one");
  program_->SetEditorText(Endless);
  program_->Key(VK_F4);
  Await("the run", [&] { return program_->IsBusy(); });
  // Neither is answered before the run looks for events.
  EXPECT_EQ(SendMessageW(program_->Window(), WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(program_->Window(), WM_ENDSESSION, TRUE, 0);
  const std::vector<fs::path> copies = FilesIn(folder_.Path(), ".rec");
  ASSERT_EQ(copies.size(), 1U);
  EXPECT_TRUE(test::BytesOf(copies.front()).ends_with(Endless));
  EXPECT_NE(folder_.Read("Vaxel.cfg").find("\nRecent1 "), std::string::npos);
  program_->Kill();
}

TEST_F(ProgramTest, OffersWhatWasNotSaved) {
  StartWith("' one");
  program_->TypeIntoEditor("' zero ");
  Await(
      "the copy", [&] { return FilesIn(folder_.Path(), ".rec").size() == 1; }, 30s);
  program_->Kill();
  program_.emplace(folder_);
  const ShownDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_NE(question.Message().find(folder_.NameOf("dial.dat")), std::string::npos) << question.Message();
  question.Answer(IDYES);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "' zero ' one");
  EXPECT_EQ(program_->Title(), "*" + TitleWith(English, folder_.NameOf("dial.dat")));
  EndWithoutSaving();
  EXPECT_EQ(folder_.Read("dial.dat"), "' one");
  EXPECT_TRUE(FilesIn(folder_.Path(), ".rec").empty());
}

TEST_F(ProgramTest, OpensWhatIsDroppedOnIt) {
  StartWith("' one");
  folder_.Write("other.dat", "' two");
  program_->Drop(folder_.NameOf("other.dat"));
  AwaitEditor("' two");
  EXPECT_EQ(program_->Title(), TitleWith(English, folder_.NameOf("other.dat")));
  program_->TypeIntoEditor("' ");
  program_->Drop(folder_.NameOf("dial.dat"));
  program_->AwaitDialog("Vaxel").Answer(IDCANCEL);
  AwaitEditor("' ' two");
  EXPECT_EQ(program_->Title(), "*" + TitleWith(English, folder_.NameOf("other.dat")));
  EndWithoutSaving();
}

TEST_F(ProgramTest, FollowsItsFile) {
  StartWith("' one");
  const auto activate = [this] { PostMessageW(program_->Window(), WM_ACTIVATE, WA_ACTIVE, 0); };
  folder_.Write("dial.dat", "' two");
  activate();
  const ShownDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_NE(question.Message().find(folder_.NameOf("dial.dat")), std::string::npos) << question.Message();
  question.Answer(IDYES);
  AwaitEditor("' two");
  EXPECT_EQ(program_->Title(), TitleWith(English, folder_.NameOf("dial.dat")));
  fs::remove(folder_.Path() / "dial.dat");
  activate();
  program_->AwaitDialog("Vaxel").Press(IDOK);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), "*" + TitleWith(English, folder_.NameOf("dial.dat")));
  EndWithoutSaving();
}

// Wine lets everyone write everywhere: a folder in the place of the settings stands in for rights.
TEST_F(ProgramTest, KeepsItsSettingsWhereItMayWrite) {
  const fs::path own = fs::path(Environment("APPDATA")) / "Vaxel";
  fs::remove_all(own);
  fs::create_directory(folder_.Path() / "Vaxel.cfg");
  folder_.Write("dial.dat", "' one");
  fs::create_directory(own);
  std::ofstream(own / "Vaxel.cfg", std::ios::binary) << SettingsWith("English", folder_.NameOf("dial.dat"));
  program_.emplace(folder_);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "' one");
  EndUnasked();
  EXPECT_TRUE(HasLine(test::BytesOf(own / "Vaxel.cfg"), "Recent1 = " + folder_.NameOf("dial.dat")));
  EXPECT_EQ(folder_.FileCount(), 2);
  fs::remove_all(own);
}

TEST_F(ProgramTest, Exports) {
  StartWith("Trait = 0, 0, 10, 10\r\nTexte = 0, 0, , , 10 kΩ");
  const std::vector<std::pair<std::string, std::string>> formats = {
      {"a.svg", "<svg"}, {"a.png", "\x89PNG"}, {"a.emf", std::string("\1\0\0\0", 4)}};
  int format = 0;
  for (const auto& [name, begin] : formats) {
    const ShownDialog how = program_->CommandWithDialog(MenuId::Mnu_Exporter);
    how.Click(IDC_OPTION1_FIRST + format++);
    how.Answer(IDOK);
    program_->AwaitDialog().AnswerFile(name);
    Await("the export " + name, [&name = name, this] { return folder_.Has(name); });
    program_->AwaitIdle();
    EXPECT_TRUE(folder_.Read(name).starts_with(begin)) << name;
  }
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
