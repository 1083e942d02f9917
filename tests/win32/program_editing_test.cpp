// The real program, driven from outside: what editing does to the text in its control.
#include <windows.h>

#include <string>

#include "tests/win32/program_fixture.h"
#include "win32/dialog_ids.h"

namespace vaxel {
namespace {

TEST_F(ProgramTest, UndoesInSteps) {
  StartWith("");
  program_->TypeIntoEditor("' ab");
  program_->Key(VK_RETURN);
  AwaitEditor("' ab\n");
  program_->TypeIntoEditor("' cd");
  AwaitEditor("' ab\n' cd");
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("' ab\n");
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("");
  program_->Command(MenuId::Mnu_Refaire);
  program_->Command(MenuId::Mnu_Refaire);
  AwaitEditor("' ab\n' cd");
  // What is typed over is there again.
  program_->SelectInEditor(2, 7);
  program_->TypeIntoEditor("xy");
  AwaitEditor("' xycd");
  program_->Command(MenuId::Mnu_Annuler);
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("' ab\n' cd");
  EndWithoutSaving();
}

TEST_F(ProgramTest, EditsLinesInOneStepEach) {
  StartWith("' one\r\n' two\r\n' three");
  program_->SelectInEditor(7, 7);
  program_->PressKey(VK_SHIFT);
  program_->CtrlKey(VK_UP);
  program_->ReleaseKey(VK_SHIFT);
  AwaitEditor("' two\n' one\n' three");
  EXPECT_EQ(program_->Text(Text1Id), "L 1/3");
  program_->CtrlKey('D');
  AwaitEditor("' two\n' two\n' one\n' three");
  program_->Command(MenuId::Mnu_ToutSelectionner);
  program_->PressKey(VK_TAB);
  program_->ReleaseKey(VK_TAB);
  AwaitEditor("  ' two\n  ' two\n  ' one\n  ' three");
  for (int step = 0; step < 3; ++step) program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("' one\n' two\n' three");
  EndWithoutSaving();
}

TEST_F(ProgramTest, FindsAndReplaces) {
  StartWith("' one\r\n' two ONE\r\n' none");
  const ShownDialog search = program_->CommandWithDialog(MenuId::Mnu_Chercher);
  search.Type(IDC_TEXT1, "one");
  search.Type(IDC_TEXT2, "1");
  search.Press(IDC_COMMAND1);
  Await("what was found", [&] { return program_->Text(Text1Id) == "L 1/3"; });
  search.Press(IDC_COMMAND3);
  Await("what the dialog says", [&] { return search.Text(IDC_STATUS) == "Replaced: 3"; });
  search.Answer(IDCANCEL);
  AwaitEditor("' 1\n' two 1\n' n1");
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("' one\n' two ONE\n' none");
  EndWithoutSaving();
}

TEST_F(ProgramTest, LeavesWhatWasCopiedOnTheClipboard) {
  StartWith("' one\r\n' two");
  program_->SelectInEditor(2, 5);
  program_->Command(MenuId::Mnu_Copier);
  EndUnasked();
  Await("the clipboard", [] { return OpenClipboard(nullptr) != FALSE; });
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const auto* const text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : L"nothing";
  EXPECT_STREQ(text, L"one");
  if (data) GlobalUnlock(data);
  CloseClipboard();
}

// A long script comes into the control by and by. Who saves it meanwhile saves all of it.
TEST_F(ProgramTest, HasAllOfALongScriptAtOnce) {
  std::string script = "Stop\r\n";
  constexpr int lines = 10000;
  for (int line = 2; line < lines; ++line) script += "' line " + std::to_string(line) + "\r\n";
  script += "' the end";
  StartWith(script);
  EXPECT_EQ(program_->Text(Text1Id), "L 1/10000");
  program_->TypeIntoEditor("'");
  program_->Command(MenuId::Mnu_EnregistrerS);
  const bool isWhole = program_->EditorText().ends_with("' the end");
  EXPECT_EQ(folder_.Read("dial.dat"), "'" + script);
  EXPECT_FALSE(isWhole) << "the text was there before it was saved: this shows nothing";
  Await("the whole text", [&] { return program_->EditorText().ends_with("' the end"); });
  const ShownDialog line = program_->CommandWithDialog(MenuId::Mnu_AllerLigne);
  line.Type(IDC_TEXT1, "9999");
  line.Answer(IDOK);
  Await("the line", [&] { return program_->Text(Text1Id) == "L 9999/10000"; });
  program_->Command(MenuId::Mnu_SupprimerLignes);
  program_->Command(MenuId::Mnu_EnregistrerS);
  EXPECT_TRUE(folder_.Read("dial.dat").ends_with("' line 9998\r\n' the end"));
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
