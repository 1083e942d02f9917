// The real program, driven from outside: the tool bar, the menus at the pointer, screens of other
// resolutions.
#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include <string>

#include "tests/win32/program_fixture.h"

namespace vaxel {
namespace {

enum Tool : int { RunTool, StopTool };

constexpr char Probe[] = "Trait = 0, 0, 4, 5\n?";
constexpr char ProbeWasRun[] = "Trait = 0, 0, 4, 5\n?  ' 4, 5";

TEST_F(ProgramTest, StopsARunByTheButton) {
  StartWith("' one");
  const HWND bar = program_->Control(ToolBarId);
  const auto canStop = [&] { return Send(bar, TB_ISBUTTONENABLED, StopId) != 0; };
  EXPECT_FALSE(canStop());
  program_->SetEditorText(Endless);
  for (int round = 0; round < 2; ++round) {
    program_->ClickTool(RunTool);
    Await("the run", [&] { return program_->IsBusy(); });
    Await("the button", canStop);
    EXPECT_TRUE(program_->IsBusy());
    program_->ClickTool(StopTool);
    program_->AwaitIdle();
    EXPECT_FALSE(canStop());
  }
  // What stopped that run does not stop another.
  program_->SetEditorText(Probe);
  program_->ClickTool(RunTool);
  AwaitEditor(ProbeWasRun);
  EndWithoutSaving();
}

TEST_F(ProgramTest, GivesTheDrawingItsRoomWhenTheToolBarIsHidden) {
  StartWith("' one");
  const SIZE before = program_->GraphicSize();
  program_->Command(MenuId::Mnu_BarreOutils);
  EXPECT_FALSE(IsWindowVisible(program_->Control(ToolBarId)));
  EXPECT_GT(program_->GraphicSize().cy, before.cy);
  EXPECT_TRUE(HasLine(folder_.Read("Vaxel.cfg"), "BarreOutils = Non"));
  program_->Command(MenuId::Mnu_BarreOutils);
  EXPECT_EQ(program_->GraphicSize().cy, before.cy);
  EndUnasked();
}

TEST_F(ProgramTest, HasMenusAtThePointer) {
  StartWith("Trait = 0, 0, 10, 10");
  const std::string before = program_->MovePointer(120, 90);
  program_->ClickRight(GraphicId, 120, 90);
  program_->ChooseInMenu('c');
  AwaitPlace("0  0");
  program_->PressMenuKey(GraphicId);
  program_->ChooseInMenu('u');
  AwaitPlace(before);
  // The caret goes where the pointer is.
  program_->SetEditorText(Probe);
  EXPECT_EQ(program_->Text(Text1Id), "L 2/2");
  program_->ClickRight(EditorId, 2, 2);
  program_->ChooseInMenu('m');
  AwaitEditor("'" + std::string(Probe));
  EXPECT_EQ(program_->Text(Text1Id), "L 1/2");
  EndWithoutSaving();
}

TEST_F(ProgramTest, IsLaidOutAnewOnAnotherScreen) {
  StartWith("' one");
  const HWND bar = program_->Control(ToolBarId);
  const LRESULT before = Send(bar, TB_GETBUTTONSIZE);
  RECT frame{};
  GetWindowRect(program_->Window(), &frame);
  program_->MoveToScreenOf(192, {frame.left, frame.top, frame.left + 1000, frame.top + 700});
  const LRESULT after = Send(bar, TB_GETBUTTONSIZE);
  EXPECT_EQ(LOWORD(after), 2 * LOWORD(before));
  EXPECT_EQ(HIWORD(after), 2 * HIWORD(before));
  RECT tools{}, editor{}, graphic{};
  GetWindowRect(bar, &tools);
  GetWindowRect(program_->Control(EditorId), &editor);
  GetWindowRect(program_->Control(GraphicId), &graphic);
  EXPECT_EQ(editor.top, tools.bottom);
  EXPECT_EQ(graphic.top, tools.bottom);
  EXPECT_EQ(graphic.left - editor.right, 12);
  GetWindowRect(program_->Window(), &frame);
  EXPECT_EQ(frame.right - frame.left, 1000);
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
