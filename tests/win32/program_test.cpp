// The real program, driven from outside. It needs a printer (scripts/wine-with-printer), the tests named
// WithoutPrinter need that there is none (scripts/wine-run). VAXEL_PROGRAM names another Vaxel.exe.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/win32/control_ids.h"
#include "app/win32/dialog_ids.h"
#include "render/gdi_strings.h"
#include "resources/string_table.h"
#include "tests/win32/program_driver.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

enum Language : int { French, English, Spanish };

// The text of the interface, as windows show it.
std::string TextIn(Language language, int id) {
  return std::string(StringTable().Text(language * LanguageBlock + id));
}

std::string TestName() {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(test.test_suite_name()) + "." + test.name();
  std::replace(name.begin(), name.end(), '/', '.');
  return name;
}

std::string Version() {
  return VersionTextOf(VAXEL_MAJOR, VAXEL_MINOR, VAXEL_REVISION);
}

std::string Header() {
  return "'Fichier de configuration du Programme Vaxel V" + Version() + "\r\n";
}

std::string Settings(const std::string& language, const std::string& script) {
  return Header() + "Langue = " + language + "\r\nLangueAide = " + language + "\r\nFichierDat = " + script +
         "\r\nDoubleClic = Non\r\nZmm = 1\r\nPatchs = 0\r\n";
}

std::string TitleWith(Language language, const std::string& file) {
  return "Vaxel  V" + Version() + "  (mm × mm)   " + TextIn(language, 110) + ": " + file;
}

bool HasLine(const std::string& text, const std::string& line) {
  return ("\n" + text).find("\n" + line + "\r\n") != std::string::npos;
}

// Says behind its second line with which zoom and which correction it was run.
constexpr char Probe[] = "Trait = 0, 0, %ZOOM, %FCMM\n?";
std::string ProbeSays(const std::string& zoom, const std::string& correction) {
  return std::string(Probe) + "  ' " + zoom + ", " + correction;
}

class ProgramTest : public testing::Test {
 protected:
  // Starts English, with this script.
  void StartWith(const std::string& script) {
    folder_.Write("dial.dat", script);
    folder_.Write("Vaxel.cfg", Settings("English", folder_.NameOf("dial.dat")));
    program_.emplace(folder_);
    program_->AwaitIdle();
  }
  // The text that is asked about is given up.
  void EndWithoutSaving() {
    program_->Close();
    program_->AwaitDialog().Answer(IDNO);
    EXPECT_EQ(program_->AwaitExit(), 0);
  }
  void EndUnasked() {
    program_->Close();
    EXPECT_EQ(program_->AwaitExit(), 0);
  }
  void AwaitEditor(const std::string& text) {
    try {
      Await(
          "the editor's text", [&] { return program_->EditorText() == text; }, 8s);
    } catch (const DriveFailure&) {
    }
    EXPECT_EQ(program_->EditorText(), text);
    program_->AwaitIdle();
  }

  TestFolder folder_{TestName()};
  std::optional<Program> program_;
};

using WithoutPrinter = ProgramTest;

TEST_F(WithoutPrinter, TellsItInFrenchAndEnds) {
  const std::string settings = Settings("English", "dial.dat");
  for (const bool isConfigured : {false, true}) {
    if (isConfigured) folder_.Write("Vaxel.cfg", settings);
    Program program(folder_);
    const ProgramDialog box = program.AwaitDialog();
    EXPECT_EQ(box.Message(),
              "Attention, aucune imprimante n'est configurée sur ce système. Le programme "
              "Vaxel va être arrêté.");
    EXPECT_FALSE(IsWindowVisible(program.Window()));
    box.Press(IDOK);
    EXPECT_EQ(program.AwaitExit(), 1);
  }
  EXPECT_EQ(folder_.Read("Vaxel.cfg"), settings);
}

TEST_F(WithoutPrinter, WritesNoSettings) {
  Program program(folder_);
  program.AwaitDialog().Press(IDOK);
  program.AwaitExit();
  EXPECT_TRUE(FilesIn(folder_.Path(), ".cfg").empty());
}

class Starts : public ProgramTest, public testing::WithParamInterface<Language> {};

// From the first start to the second one.
TEST_P(Starts, InTheLanguageThatWasChosen) {
  const Language language = GetParam();
  const std::string name = TextIn(language, LanguageNameId), code = TextIn(language, LanguageCodeId);
  folder_.Write("dial.dat", "Trait = 0, 0, 10, 10\r\n' two\r\n' three");
  folder_.Write("Vaxel_" + code + ".DaN", "' template\r\n");
  program_.emplace(folder_);

  const ProgramDialog languages = program_->AwaitDialog();
  EXPECT_FALSE(IsWindowVisible(program_->Window()));
  languages.Check(IDC_OPTION1_FIRST + int{language});
  languages.Check(IDC_OPTION2_FIRST + int{language});
  languages.Answer(IDC_COMMAND1);
  const ProgramDialog open = program_->AwaitDialog();
  ASSERT_TRUE(open.IsFileDialog());
  open.AnswerFile(folder_.NameOf("dial.dat"));
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(language, folder_.NameOf("dial.dat")));
  EXPECT_EQ(program_->EditorText(), "Trait = 0, 0, 10, 10\n' two\n' three");
  EXPECT_EQ(program_->Text(Text1Id), "L 1/3");
  EXPECT_EQ(program_->ToolTip(Text1Id), TextIn(language, 130));
  EXPECT_EQ(program_->ToolTip(Text2Id), TextIn(language, 131));
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
  const ProgramDialog question = program_->AwaitDialog();
  EXPECT_EQ(question.Message(), TextIn(language, 118));
  question.Answer(IDNO);
  EXPECT_EQ(program_->AwaitExit(), 0);
}

INSTANTIATE_TEST_SUITE_P(Program, Starts, testing::Values(French, English, Spanish),
                         [](const testing::TestParamInfo<Language>& language) {
                           return TextIn(language.param, LanguageCodeId);
                         });

// Nothing is chosen in either dialog of the first start; a script that was remembered is gone.
TEST_F(ProgramTest, StartsWithoutAScript) {
  folder_.Write("Vaxel.cfg", Settings("English", folder_.NameOf("gone.dat")));
  program_.emplace(folder_);
  const ProgramDialog open = program_->AwaitDialog();
  ASSERT_TRUE(open.IsFileDialog());
  open.Answer(IDCANCEL);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(English, ""));
  EXPECT_EQ(program_->EditorText(), "");
  program_->Command(MenuId::Mnu_Visualiser);
  EndUnasked();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "FichierDat = " + folder_.NameOf("gone.dat")));
}

TEST_F(ProgramTest, RunsWhatIsEdited) {
  StartWith("Trait = 0, 0, 4, 5\r\n' end");
  program_->SelectInEditor(0, 0);
  program_->TypeIntoEditor("?");
  program_->Key(VK_RETURN);
  AwaitEditor("?\nTrait = 0, 0, 4, 5\n' end");
  EXPECT_EQ(program_->Text(Text1Id), "L 2/3");
  program_->SetEditorText("Trait = 0, 0, 4, 5\n?\n' end");
  EXPECT_EQ(program_->Text(Text1Id), "L 3/3");
  program_->Key(VK_F4);
  AwaitEditor("Trait = 0, 0, 4, 5\n?  ' 4, 5\n' end");
  EndWithoutSaving();
  EXPECT_EQ(folder_.Read("dial.dat"), "Trait = 0, 0, 4, 5\r\n' end");
}

TEST_F(ProgramTest, ShowsWhereAScriptFails) {
  folder_.Write("part.dat", "Trait = 0, 0, 1, 1\r\n\r\nTrait = 0, 0, 1/0, 1\r\n");
  StartWith("' one\r\n' two");
  program_->SetEditorText("' one\nNothing = 3\n' three");
  program_->Key(VK_F4);
  ProgramDialog box = program_->AwaitDialog();
  EXPECT_NE(box.Message().find("Nothing = 3"), std::string::npos) << box.Message();
  EXPECT_NE(box.Message().find(folder_.NameOf("dial.dat")), std::string::npos) << box.Message();
  EXPECT_FALSE(IsWindowEnabled(program_->Window()));
  box.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Text(Text1Id), "L 2/3");

  program_->SetEditorText("Fichier = part.dat");
  program_->Key(VK_F4);
  box = program_->AwaitDialog();
  EXPECT_NE(box.Message().find(TextIn(English, 173)), std::string::npos) << box.Message();
  EXPECT_NE(box.Message().find("Trait = 0, 0, 1/0, 1"), std::string::npos) << box.Message();
  EXPECT_NE(box.Message().find(folder_.NameOf("part.dat")), std::string::npos) << box.Message();
  box.Key(VK_ESCAPE);
  box.AwaitClosed();
  program_->AwaitIdle();
  EndWithoutSaving();
}

TEST_F(ProgramTest, ZoomsAndCorrectsMillimetres) {
  StartWith("");
  program_->SetEditorText("ZoomIni = 3\n" + std::string(Probe));
  const std::string start = "ZoomIni = 3\n";
  program_->Key(VK_F4);
  AwaitEditor(start + ProbeSays("1", "1"));

  program_->Key(VK_F7);
  ProgramDialog zoom = program_->AwaitDialog("Vaxel   Zoom   (F7, Ctrl-F7)");
  EXPECT_EQ(zoom.Text(IDC_TEXT1), "1");
  EXPECT_EQ(zoom.Text(IDC_TEXT2), "1");
  zoom.Type(IDC_TEXT2, "254/250");
  zoom.Type(IDC_TEXT1, "4/2");
  zoom.Key(VK_RETURN);
  zoom.AwaitClosed();
  AwaitEditor(start + ProbeSays("2", "1.016"));
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Zmm = 1.016"));

  zoom = program_->CommandWithDialog(MenuId::Mnu_Zoom);
  EXPECT_EQ(zoom.Text(IDC_TEXT1), "2");
  EXPECT_EQ(zoom.Text(IDC_TEXT2), "1.016");
  zoom.Type(IDC_TEXT1, "7");
  zoom.Key(VK_ESCAPE);
  zoom.AwaitClosed();
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), start + ProbeSays("2", "1.016"));

  zoom = program_->CommandWithDialog(MenuId::Mnu_Zoom);
  zoom.Type(IDC_TEXT1, "1/0");
  zoom.Type(IDC_TEXT2, "0");
  zoom.Answer(IDC_COMMAND1);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), start + ProbeSays("2", "1.016"));

  program_->CtrlKey(VK_F7);
  AwaitEditor(start + ProbeSays("3", "1.016"));
  EndWithoutSaving();
}

// The place of a pixel, as Text2 shows it.
struct Place {
  double X = 0, Y = 0;
};

Place PlaceIn(const std::string& text) {
  Place place;
  EXPECT_EQ(text.find(','), std::string::npos) << text;
  EXPECT_EQ(std::sscanf(text.c_str(), "%lf  %lf", &place.X, &place.Y), 2) << text;
  return place;
}

#define EXPECT_PLACE(text, x, y)       \
  do {                                 \
    const Place shown = PlaceIn(text); \
    EXPECT_NEAR(shown.X, x, 0.31);     \
    EXPECT_NEAR(shown.Y, y, 0.31);     \
  } while (false)

TEST_F(ProgramTest, CountsFromTheReferencePoint) {
  StartWith("CentreE = 10, 5, N\r\nTrait = 0, 0, 10, 10");
  const SIZE size = program_->GraphicSize();
  const double pixel = 25.4 / 96;
  const double centreX = size.cx * pixel / 2 + 10, centreY = size.cy * pixel / 2 + 5;
  const int bottom = size.cy - 1;
  EXPECT_PLACE(program_->MovePointer(0, bottom), -centreX, -centreY);

  program_->Key(VK_F8);
  const ProgramDialog reference = program_->AwaitDialog("Vaxel   RefCur   (F8, Ctrl-F8)");
  EXPECT_EQ(reference.Text(IDC_LABEL1), TextIn(English, 165));
  reference.Type(IDC_TEXT1, "50;100");
  reference.Press(IDC_COMMAND1);
  ProgramDialog hint(nullptr);
  Await("the hint", [&] { return (hint = program_->AwaitDialog()).Window() != reference.Window(); });
  EXPECT_EQ(hint.Message(), TextIn(English, 166));
  hint.Answer(IDOK);
  EXPECT_TRUE(reference.IsOpen());
  EXPECT_EQ(reference.Text(IDC_TEXT1), "50;100");
  reference.Type(IDC_TEXT1, "50,100z");
  reference.Answer(IDC_COMMAND1);
  program_->AwaitIdle();
  EXPECT_PLACE(program_->MovePointer(0, bottom), -50, -100);
  EXPECT_PLACE(program_->MovePointer(100, bottom), 100 * pixel - 50, -100);

  program_->CommandWithDialog(MenuId::Mnu_RefCurseur).Answer(IDC_COMMAND1);
  EXPECT_PLACE(program_->MovePointer(0, bottom), -50, -100);
  program_->CtrlKey(VK_F8);
  Await("the centre as reference", [&] { return PlaceIn(program_->MovePointer(0, bottom)).X < -51; });
  EXPECT_PLACE(program_->MovePointer(0, bottom), -centreX, -centreY);
  EndUnasked();
}

TEST_F(ProgramTest, MovesTheDrawingToThePointer) {
  StartWith("Trait = 0, 0, 10, 10");
  const std::string before = program_->MovePointer(120, 90);
  program_->Key(VK_F6);
  Await("the centre at the pointer", [&] { return program_->MovePointer(120, 90) == "0  0"; });
  program_->AwaitIdle();
  program_->CtrlKey(VK_F6);
  Await("the centre where it was", [&] { return program_->MovePointer(120, 90) == before; });
  program_->AwaitIdle();
  program_->Key(VK_F12);
  Await("the centre at the pointer", [&] { return program_->MovePointer(120, 90) == "0  0"; });
  program_->AwaitIdle();
  EndUnasked();
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

  ProgramDialog open = program_->CommandWithDialog(MenuId::Mnu_Ouvrir);
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

  // There already, under the name that is cut.
  program_->CommandWithDialog(MenuId::Mnu_Enregistrer).AnswerFile("a.b.dat");
  ProgramDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_NE(question.Message().find(folder_.NameOf("a.b")), std::string::npos) << question.Message();
  question.Answer(IDNO);
  program_->AwaitIdle();

  program_->OpenRecent(2);
  EXPECT_EQ(program_->EditorText(), "'' one\n");

  // A new script has no name until it is saved.
  program_->Command(MenuId::Mnu_Nouveau);
  EXPECT_EQ(program_->EditorText(), "' template");
  const ProgramDialog save = program_->CommandWithDialog(MenuId::Mnu_EnregistrerS);
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
  const ProgramDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_EQ(question.Message(), TextIn(English, 118));
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

// The decimal mark of the user's settings, for the time of a test.
class DecimalMark {
 public:
  explicit DecimalMark(const wchar_t* mark) {
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, old_, static_cast<int>(std::size(old_)));
    Set(mark);
  }
  ~DecimalMark() { Set(old_); }
  DecimalMark(const DecimalMark&) = delete;
  DecimalMark& operator=(const DecimalMark&) = delete;

  static std::wstring Now() {
    wchar_t mark[8] = L"";
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, mark, static_cast<int>(std::size(mark)));
    return mark;
  }

 private:
  static void Set(const wchar_t* mark) { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, mark); }

  wchar_t old_[8] = L"";
};

TEST_F(ProgramTest, WritesPointsWhereOthersWriteCommas) {
  const DecimalMark comma(L",");
  ASSERT_EQ(DecimalMark::Now(), L",");
  StartWith("");
  program_->SetEditorText("Trait = 0, 0, 12.5, 0\n?");
  program_->Key(VK_F4);
  AwaitEditor("Trait = 0, 0, 12.5, 0\n?  ' 12.5, 0");
  bool hasPoint = false;
  for (int x = 10; x < 20; ++x) {
    const std::string text = program_->MovePointer(x, 10);
    EXPECT_EQ(text.find(','), std::string::npos) << text;
    hasPoint = hasPoint || text.find('.') != std::string::npos;
  }
  EXPECT_TRUE(hasPoint);
  const ProgramDialog zoom = program_->CommandWithDialog(MenuId::Mnu_Zoom);
  zoom.Type(IDC_TEXT2, "1.25");
  zoom.Answer(IDC_COMMAND1);
  program_->AwaitIdle();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Zmm = 1.25"));
  EndWithoutSaving();
}

constexpr char Endless[] = "Again:\nTrait = 0, 0, 10, 10\nNPage\nGoto Again";

TEST_F(ProgramTest, EscapeEndsARun) {
  StartWith("' one");
  program_->SetEditorText(Endless);
  for (int round = 0; round < 2; ++round) {
    program_->Key(VK_F4);
    Await("the run", [&] { return program_->IsBusy(); });
    std::this_thread::sleep_for(400ms);
    EXPECT_TRUE(program_->IsBusy());
    program_->Command(MenuId::Mnu_Nouveau);  // comes to nothing
    program_->PressKey(VK_ESCAPE);
    std::this_thread::sleep_for(80ms);
    program_->ReleaseKey(VK_ESCAPE);
    program_->AwaitIdle();
  }
  // Down and up before the run looks for events again.
  program_->Key(VK_F4);
  Await("the run", [&] { return program_->IsBusy(); });
  program_->Key(VK_ESCAPE);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), Endless);
  EndWithoutSaving();
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
  EXPECT_TRUE(BytesOf(copies.front()).ends_with(Endless));
  EXPECT_NE(folder_.Read("Vaxel.cfg").find("\nRecent1 "), std::string::npos);
  program_->Kill();
}

// What arrives at the printer lies in the folder that scripts/wine-with-printer names.
class Printing : public ProgramTest {
 protected:
  void SetUp() override {
    if (spool_.empty()) GTEST_SKIP() << "there is no folder for what is printed";
    for (const fs::path& job : Jobs()) fs::remove(job);
  }
  std::vector<fs::path> Jobs() const { return FilesIn(spool_, ".ps"); }

 private:
  fs::path spool_ = Environment("VAXEL_SPOOL_FOLDER");
};

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST_F(Printing, ArrivesAtThePrinter) {
  StartWith("FormatI = Paysage\r\nTrait = 0, 0, 10, 10\r\nNPage\r\nTrait = 0, 0, 20, 20");
  program_->MovePointer(120, 90);
  program_->Key(VK_F6);
  Await("the centre at the pointer", [&] { return program_->MovePointer(120, 90) == "0  0"; });
  program_->AwaitIdle();
  program_->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(program_->MovePointer(120, 90), "0  0");
  Await("the job", [&] { return Jobs().size() == 1; });
  const std::string job = BytesOf(Jobs().front());
  EXPECT_EQ(CountOf(job, "\n%%Page: "), 2);
  EXPECT_EQ(CountOf(job, "%%Title: dial\n"), 1) << job.substr(0, 400);
  EndUnasked();
}

TEST_F(Printing, DoesNotHappenWhenTheRunFails) {
  StartWith("' one");
  program_->SetEditorText("Trait = 0, 0, 10, 10\nNPage\nNothing = 1");
  program_->Post(MenuId::Mnu_Imprimer);
  // For the paper, and for the screen behind it.
  program_->AwaitDialog().Answer(IDOK);
  program_->AwaitDialog().Answer(IDOK);
  program_->AwaitIdle();
  program_->SetEditorText(Endless);
  program_->Post(MenuId::Mnu_Imprimer);
  Await("the run", [&] { return program_->IsBusy(); });
  std::this_thread::sleep_for(200ms);
  program_->PressKey(VK_ESCAPE);
  program_->AwaitIdle();
  program_->ReleaseKey(VK_ESCAPE);
  EndWithoutSaving();
  std::this_thread::sleep_for(300ms);
  EXPECT_TRUE(Jobs().empty());
}

TEST_F(ProgramTest, Exports) {
  StartWith("Trait = 0, 0, 10, 10\r\nTexte = 0, 0, , , 10 kΩ");
  const std::vector<std::pair<std::string, std::string>> formats = {
      {"a.svg", "<svg"}, {"a.png", "\x89PNG"}, {"a.emf", std::string("\1\0\0\0", 4)}};
  for (const auto& [name, begin] : formats) {
    program_->CommandWithDialog(MenuId::Mnu_Exporter).AnswerFile(name);
    Await("the export " + name, [&name = name, this] { return folder_.Has(name); });
    program_->AwaitIdle();
    EXPECT_TRUE(folder_.Read(name).starts_with(begin)) << name;
  }
  EndUnasked();
}

TEST_F(ProgramTest, KeepsItsDialogsAndCommandsTidy) {
  StartWith("' one\r\n");
  program_->CommandWithDialog(MenuId::Mnu_AProposDe).Answer(IDOK);
  ProgramDialog dialog = program_->CommandWithDialog(MenuId::Mnu_Patchs);
  dialog.Type(IDC_TEXT1, "1");
  dialog.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Patchs = 1"));
  dialog = program_->CommandWithDialog(MenuId::Mnu_TaillCar);
  dialog.Type(IDC_TEXT1, "14");
  dialog.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "TailleCarCode =14") ||
              HasLine(folder_.Read("Vaxel.cfg"), "TailleCarCode = 14"));
  dialog = program_->CommandWithDialog(MenuId::Mnu_Couleur);
  dialog.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "Noir' one\n");
  EXPECT_TRUE(IsWindowVisible(program_->Control(EditorId)));
  program_->Command(MenuId::Mnu_Code);
  EXPECT_FALSE(IsWindowVisible(program_->Control(EditorId)));
  program_->Command(MenuId::Mnu_Code);
  EXPECT_TRUE(IsWindowVisible(program_->Control(EditorId)));
  EndWithoutSaving();
}

TEST_F(ProgramTest, GivesBackWhatItTakes) {
  StartWith(
      "Police = Arial\r\nTailleP = 9\r\nEpaisT = 0.3mm\r\nArc = 45, 135, 50\r\nGrad = 50, 3, , , 0.2mm\r\n"
      "ValR = , 5, 0, 100, 7\r\nPolyP = Rouge, 0, 0, 10, 0, 5, 8\r\nTexte = 0, 30, , *1.3C, V");
  const auto dialogs = [this](std::initializer_list<MenuId> items) {
    for (const MenuId item : items) {
      const ProgramDialog dialog = program_->CommandWithDialog(item);
      PostMessageW(dialog.Window(), WM_CLOSE, 0, 0);
      dialog.AwaitClosed();
      program_->AwaitIdle();
    }
  };
  const auto own = {MenuId::Mnu_Zoom, MenuId::Mnu_RefCurseur, MenuId::Mnu_AProposDe, MenuId::Mnu_Langue,
                    MenuId::Mnu_Patchs};
  const auto ofTheSystem = {MenuId::Mnu_Couleur, MenuId::Mnu_Ouvrir};
  const auto runs = [this](int count) {
    for (int i = 0; i < count; ++i) {
      program_->Command(MenuId::Mnu_Visualiser);
      program_->Resize(900 + i % 7 * 30, 600 + i % 5 * 20);
    }
    program_->Resize(1000, 700);
    program_->Command(MenuId::Mnu_Visualiser);
  };
  runs(8);
  for (int round = 0; round < 3; ++round) dialogs(ofTheSystem);
  for (int round = 0; round < 10; ++round) dialogs(own);
  // The system keeps some objects for the next time, a handful at a time: what is lost is lost in each batch.
  const auto leastLost = [&](int batches, const std::function<void()>& work) {
    ResourceCount least{INT_MAX, INT_MAX};
    for (int batch = 0; batch < batches; ++batch) {
      const ResourceCount before = program_->CountResources();
      EXPECT_GT(before.GdiObjects, 0);
      EXPECT_GT(before.UserObjects, 5);
      work();
      const ResourceCount after = program_->CountResources();
      least.GdiObjects = std::min(least.GdiObjects, after.GdiObjects - before.GdiObjects);
      least.UserObjects = std::min(least.UserObjects, after.UserObjects - before.UserObjects);
    }
    return least;
  };
  const ResourceCount ofRuns = leastLost(4, [&] { runs(50); });
  EXPECT_LE(ofRuns.GdiObjects, 0);
  EXPECT_LE(ofRuns.UserObjects, 0);
  const ResourceCount ofDialogs = leastLost(3, [&] {
    for (int round = 0; round < 10; ++round) dialogs(own);
  });
  EXPECT_LT(ofDialogs.GdiObjects, 10);
  EXPECT_LE(ofDialogs.UserObjects, 0);
  EndUnasked();
}

TEST_F(ProgramTest, OffersWhatWasNotSaved) {
  StartWith("' one");
  program_->TypeIntoEditor("' zero ");
  Await(
      "the copy", [&] { return FilesIn(folder_.Path(), ".rec").size() == 1; }, 30s);
  program_->Kill();
  program_.emplace(folder_);
  const ProgramDialog question = program_->AwaitDialog("Vaxel");
  EXPECT_NE(question.Message().find(folder_.NameOf("dial.dat")), std::string::npos) << question.Message();
  question.Answer(IDYES);
  program_->AwaitIdle();
  EXPECT_EQ(program_->EditorText(), "' zero ' one");
  EXPECT_EQ(program_->Title(), TitleWith(English, folder_.NameOf("dial.dat")));
  EndWithoutSaving();
  EXPECT_EQ(folder_.Read("dial.dat"), "' one");
  EXPECT_TRUE(FilesIn(folder_.Path(), ".rec").empty());
}

// How long the user waits; docs/performance.md has the figures. On demand only:
//   scripts/wine-with-printer build/windows/bin/program_tests.exe --gtest_also_run_disabled_tests
//     --gtest_filter='*Times*'
class DISABLED_Times : public ProgramTest, public testing::WithParamInterface<const char*> {
 protected:
  using Milliseconds = std::chrono::duration<double, std::milli>;

  static void Say(const char* what, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    std::printf("%-20s %-24s median %6.1f ms, least %6.1f ms, most %6.1f ms\n", GetParam(), what,
                times[times.size() / 2], times.front(), times.back());
  }
};

TEST_P(DISABLED_Times, OfTheWindow) {
  // Its last line has a comment when the drawing is on the screen.
  const std::string script =
      BytesOf(fs::path(VAXEL_SOURCE_DIR) / "examples" / (std::string(GetParam()) + ".dat")) + "\n?";
  std::vector<double> starts, runs;
  for (int round = 0; round < 21; ++round) {
    folder_.Write("dial.dat", script);
    folder_.Write("Vaxel.cfg", Settings("English", folder_.NameOf("dial.dat")));
    const auto start = std::chrono::steady_clock::now();
    program_.emplace(folder_);
    Await("the drawing", [this] {
      const HWND window = program_->Window();
      if (!window || !GetDlgItem(window, EditorId)) return false;
      const std::string text = program_->EditorText();
      return text.rfind("\n?  '") != std::string::npos;
    });
    starts.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    program_->AwaitIdle();
  }
  for (int round = 0; round < 60; ++round) {
    const auto start = std::chrono::steady_clock::now();
    program_->Command(MenuId::Mnu_Visualiser);
    runs.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
  }
  Say("start to drawing", std::vector<double>(starts.begin() + 1, starts.end()));
  Say("F4", runs);
}

INSTANTIATE_TEST_SUITE_P(Program, DISABLED_Times,
                         testing::Values("vu-meter", "airspeed-indicator", "clock-face", "signal-panel"));

}  // namespace
}  // namespace vaxel
