// The real program, driven from outside: editing, runs, views, printing and handles.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "tests/win32/program_fixture.h"
#include "win32/dialog_ids.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::BytesOf;

// Says behind its second line with which zoom and which correction it was run.
constexpr char Probe[] = "Trait = 0, 0, %ZOOM, %FCMM\n?";
std::string ProbeSays(const std::string& zoom, const std::string& correction) {
  return std::string(Probe) + "  ' " + zoom + ", " + correction;
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
  StartWith("' one\r\n' two");
  program_->SetEditorText("' one\nNothing = 3\n' three");
  program_->Key(VK_F4);
  const ShownDialog box = program_->AwaitDialog();
  EXPECT_NE(box.Message().find("Nothing = 3"), std::string::npos) << box.Message();
  EXPECT_NE(box.Message().find(folder_.NameOf("dial.dat")), std::string::npos) << box.Message();
  EXPECT_FALSE(IsWindowEnabled(program_->Window()));
  box.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_EQ(program_->Text(Text1Id), "L 2/3");
  EndWithoutSaving();
}

TEST_F(ProgramTest, ZoomsAndCorrectsMillimetres) {
  StartWith("");
  program_->SetEditorText("ZoomIni = 3\n" + std::string(Probe));
  const std::string start = "ZoomIni = 3\n";
  program_->Key(VK_F4);
  AwaitEditor(start + ProbeSays("1", "1"));

  program_->Key(VK_F7);
  const ShownDialog zoom = program_->AwaitDialog("Vaxel   Zoom   (F7, Ctrl-F7)");
  EXPECT_EQ(zoom.Text(IDC_TEXT1), "1");
  EXPECT_EQ(zoom.Text(IDC_TEXT2), "1");
  zoom.Type(IDC_TEXT2, "254/250");
  zoom.Type(IDC_TEXT1, "4/2");
  zoom.Key(VK_RETURN);
  zoom.AwaitClosed();
  AwaitEditor(start + ProbeSays("2", "1.016"));
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Zmm = 1.016"));

  program_->CtrlKey(VK_F7);
  AwaitEditor(start + ProbeSays("3", "1.016"));
  EndWithoutSaving();
}

// What Text2 shows, with points for decimal marks, is this place but for the rounding.
void ExpectPlace(const std::string& text, double x, double y) {
  double shownX = 0, shownY = 0;
  EXPECT_EQ(std::sscanf(text.c_str(), "%lf  %lf", &shownX, &shownY), 2) << text;
  EXPECT_NEAR(shownX, x, 0.31) << text;
  EXPECT_NEAR(shownY, y, 0.31) << text;
}

TEST_F(ProgramTest, CountsFromTheReferencePoint) {
  StartWith("CentreE = 10, 5, N\r\nTrait = 0, 0, 10, 10");
  const SIZE size = program_->GraphicSize();
  const double pixel = 25.4 / 96;
  const double centreX = size.cx * pixel / 2 + 10, centreY = size.cy * pixel / 2 + 5;
  const int bottom = size.cy - 1;
  ExpectPlace(program_->MovePointer(0, bottom), -centreX, -centreY);

  program_->Key(VK_F8);
  const ShownDialog reference = program_->AwaitDialog("Vaxel   Reference point   (F8, Ctrl-F8)");
  EXPECT_EQ(reference.Text(IDC_LABEL1), TextIn(English, TextId::ReferenceLabel));
  reference.Type(IDC_TEXT1, "50;100");
  reference.Press(IDC_COMMAND1);
  ShownDialog hint(nullptr);
  Await("the hint", [&] { return (hint = program_->AwaitDialog()).Window() != reference.Window(); });
  EXPECT_EQ(hint.Message(), TextIn(English, TextId::ReferenceHint));
  EXPECT_FALSE(IsWindowEnabled(reference.Window()));
  EXPECT_FALSE(IsWindowEnabled(program_->Window()));
  hint.Answer(IDOK);
  EXPECT_TRUE(reference.IsOpen());
  EXPECT_EQ(reference.Selected(IDC_TEXT1), "50;100");
  reference.Type(IDC_TEXT1, "50,100z");
  reference.Key(VK_RETURN);
  reference.AwaitClosed();
  program_->AwaitIdle();
  ExpectPlace(program_->MovePointer(0, bottom), -50, -100);
  ExpectPlace(program_->MovePointer(100, bottom), 100 * pixel - 50, -100);

  program_->CommandWithDialog(MenuId::Mnu_RefCurseur).Answer(IDC_COMMAND1);
  const std::string before = program_->MovePointer(0, bottom);
  ExpectPlace(before, -50, -100);
  program_->CtrlKey(VK_F8);
  Await("the centre as reference", [&] { return program_->MovePointer(0, bottom) != before; });
  ExpectPlace(program_->MovePointer(0, bottom), -centreX, -centreY);
  EndUnasked();
}

TEST_F(ProgramTest, MovesTheDrawingToThePointer) {
  StartWith("Trait = 0, 0, 10, 10");
  const std::string before = program_->MovePointer(120, 90);
  program_->Key(VK_F6);
  AwaitPlace("0  0");
  program_->CtrlKey(VK_F6);
  AwaitPlace(before);
  program_->Key(VK_F12);
  AwaitPlace("0  0");
  EndUnasked();
}

// The decimal mark of the user's settings, for the time of a test.
class DecimalMark {
 public:
  explicit DecimalMark(const wchar_t* mark) : old_(Now()) { Set(mark); }
  ~DecimalMark() { Set(old_); }
  DecimalMark(const DecimalMark&) = delete;
  DecimalMark& operator=(const DecimalMark&) = delete;

  static std::wstring Now() {
    wchar_t mark[8] = L"";
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, mark, static_cast<int>(std::size(mark)));
    return mark;
  }

 private:
  static void Set(const std::wstring& mark) {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, mark.c_str());
  }

  std::wstring old_;
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
  const ShownDialog zoom = program_->CommandWithDialog(MenuId::Mnu_Zoom);
  zoom.Type(IDC_TEXT2, "1.25");
  zoom.Answer(IDC_COMMAND1);
  program_->AwaitIdle();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Zmm = 1.25"));
  EndWithoutSaving();
}

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
  AwaitPlace("0  0");
  program_->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(program_->MovePointer(120, 90), "0  0");
  Await("the job", [&] { return Jobs().size() == 1; });
  const std::string job = BytesOf(Jobs().front());
  EXPECT_EQ(CountOf(job, "\n%%Page: "), 2);
  EXPECT_EQ(CountOf(job, "%%Title: dial\n"), 1) << job.substr(0, 400);
  EndUnasked();
}

TEST_F(Printing, LeavesNothingOfARunThatFailsOrIsEnded) {
  StartWith("' one");
  program_->SetEditorText("Trait = 0, 0, 10, 10\nTrait = 1/0");
  program_->CommandWithDialog(MenuId::Mnu_Imprimer).Answer(IDOK);
  program_->AwaitIdle();
  program_->SetEditorText(Endless);
  program_->Post(MenuId::Mnu_Imprimer);
  Await("the run", [&] { return program_->IsBusy(); });
  // It ends the run for the screen, too.
  program_->PressKey(VK_ESCAPE);
  program_->AwaitIdle();
  program_->ReleaseKey(VK_ESCAPE);
  EXPECT_TRUE(Jobs().empty());
  EndWithoutSaving();
}

// The system's own dialog, in which the other one of the two printers is chosen.
TEST_F(Printing, GoesToThePrinterThatWasChosen) {
  StartWith("Trait = 0, 0, 10, 10");
  const ShownDialog dialog = program_->CommandWithDialog(MenuId::Mnu_Imprimante);
  constexpr int printersId = 0x473;  // cmb4
  const HWND printers = dialog.Control(printersId);
  const LRESULT present = Send(printers, CB_GETCURSEL);
  Send(printers, CB_SETCURSEL, static_cast<WPARAM>(1 - present));
  Send(dialog.Window(), WM_COMMAND, MAKEWPARAM(printersId, CBN_SELCHANGE),
       reinterpret_cast<LPARAM>(printers));
  dialog.Answer(IDOK);
  program_->AwaitIdle();
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "Imprimante = Vaxel PDF")) << folder_.Read("Vaxel.cfg");
  program_->Command(MenuId::Mnu_Imprimer);
  EXPECT_EQ(program_->Text(MessageId), "printed on Vaxel PDF");
  Await("the job", [&] { return Jobs().size() == 1; });
  // Enter in the preview prints, too.
  program_->CommandWithDialog(MenuId::Mnu_Apercu).Key(VK_RETURN);
  Await("the second job", [&] { return Jobs().size() == 2; });
  program_->AwaitIdle();
  EndUnasked();
}

TEST_F(ProgramTest, InsertsColoursAndHidesTheEditor) {
  StartWith("' one\r\n");
  program_->CommandWithDialog(MenuId::Mnu_Couleur).Answer(IDOK);
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
  static constexpr MenuId ownDialogs[] = {MenuId::Mnu_Zoom, MenuId::Mnu_RefCurseur, MenuId::Mnu_AProposDe,
                                          MenuId::Mnu_Langue, MenuId::Mnu_Patchs};
  const auto dialogs = [this](int count) {
    for (int i = 0; i < count; ++i) {
      const MenuId item = ownDialogs[static_cast<std::size_t>(i) % std::size(ownDialogs)];
      const ShownDialog dialog = program_->CommandWithDialog(item);
      PostMessageW(dialog.Window(), WM_CLOSE, 0, 0);
      dialog.AwaitClosed();
      program_->AwaitIdle();
    }
  };
  const auto runs = [this](int count) {
    for (int i = 0; i < count; ++i) {
      program_->Command(MenuId::Mnu_Visualiser);
      program_->Resize(900 + i % 7 * 30, 600 + i % 5 * 20);
    }
    program_->Resize(1000, 700);
    program_->Command(MenuId::Mnu_Visualiser);
  };
  runs(8);
  dialogs(50);
  // The system keeps some objects for the next time, a handful at a time: what is lost is lost in each batch.
  const auto leastLost = [&](int batches, const std::function<void()>& work) {
    ResourceCount least{INT_MAX, INT_MAX};
    for (int batch = 0; batch < batches; ++batch) {
      const ResourceCount before = program_->CountResources();
      EXPECT_GT(before.GdiObjects, 0);
      EXPECT_GT(before.UserObjects, 5);
      work();
      ResourceCount after = program_->CountResources();
      // What is held until the next idle moment is not lost.
      for (int wait = 0; wait < 20 && after.GdiObjects > before.GdiObjects; ++wait) {
        Sleep(100);
        after = program_->CountResources();
      }
      least.GdiObjects = std::min(least.GdiObjects, after.GdiObjects - before.GdiObjects);
      least.UserObjects = std::min(least.UserObjects, after.UserObjects - before.UserObjects);
    }
    return least;
  };
  const ResourceCount ofRuns = leastLost(4, [&] { runs(50); });
  EXPECT_LE(ofRuns.GdiObjects, 0);
  EXPECT_LE(ofRuns.UserObjects, 0);
  const ResourceCount ofDialogs = leastLost(3, [&] { dialogs(50); });
  EXPECT_LT(ofDialogs.GdiObjects, 10);
  EXPECT_LE(ofDialogs.UserObjects, 0);
  EndUnasked();
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
    folder_.Write("Vaxel.cfg", SettingsWith("English", folder_.NameOf("dial.dat")));
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
