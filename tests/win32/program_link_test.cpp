// The real program, driven from outside: the drawing and the lines of its script, held together while a
// person writes a dial.
#include <windows.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "tests/win32/program_fixture.h"

namespace vaxel {
namespace {

class ProgramLink : public ProgramTest {
 protected:
  // A place in millimetres from the middle of the graphic area, y upward, as its message has it.
  LPARAM At(double x, double y) const {
    const SIZE size = program_->GraphicSize();
    double middle = NAN, right = NAN;
    std::sscanf(program_->MovePointer(size.cx / 2, size.cy / 2).c_str(), "%lf", &middle);
    std::sscanf(program_->MovePointer(size.cx / 2 + 100, size.cy / 2).c_str(), "%lf", &right);
    const double perMm = 100 / (right - middle);
    return MAKELPARAM(std::lround(size.cx / 2 + x * perMm), std::lround(size.cy / 2 - y * perMm));
  }
  void Drag(double x, double y, double toX, double toY, WPARAM held) const {
    const LPARAM from = At(x, y), to = At(toX, toY);
    const HWND area = program_->Control(GraphicId);
    SendMessageW(area, WM_MOUSEMOVE, held, from);
    SendMessageW(area, WM_LBUTTONDOWN, MK_LBUTTON | held, from);
    if (to != from) SendMessageW(area, WM_MOUSEMOVE, MK_LBUTTON | held, to);
    dragged_ = program_->Text(ReadingId);
    SendMessageW(area, WM_LBUTTONUP, held, to);
  }
  void Click(double x, double y, WPARAM held = 0) const { Drag(x, y, x, y, held); }
  void AwaitLine(const std::string& text) const {
    Await(text, [&] { return program_->Text(Text1Id) == text; });
  }
  // Until what is drawn there leads to that line.
  void AwaitElement(double x, double y, const std::string& line) const {
    Await("an element of " + line, [&] {
      Click(x, y);
      return program_->Text(Text1Id) == line;
    });
  }
  void AwaitMessage(const std::string& beginning) const {
    Await(beginning, [&] { return program_->Text(MessageId).starts_with(beginning); });
  }
  void AltKey(WORD key) const {
    program_->PressKey(VK_MENU);
    program_->PressKey(key);
    program_->ReleaseKey(key);
    program_->ReleaseKey(VK_MENU);
  }
  // Where the keys go.
  HWND Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program_->Window(), nullptr), &info);
    return info.hwndFocus;
  }
  void TypeLine(const std::string& text) const {
    program_->TypeIntoEditor(text);
    program_->PressKey(VK_RETURN);
    program_->ReleaseKey(VK_RETURN);
    Await("another line", [&] { return program_->EditorText().ends_with('\n'); });
  }

  mutable std::string dragged_;  // what was measured at the end of the last drag
};

TEST_F(ProgramLink, TypesADialAsAPersonWould) {
  StartWith("");
  program_->Command(MenuId::Mnu_DessinDirect);
  // A keyword is completed.
  program_->TypeIntoEditor("ar");
  program_->PressKey(VK_TAB);
  program_->ReleaseKey(VK_TAB);
  AwaitEditor("Arc = ");
  TypeLine("0, 180, 40");
  TypeLine("grad = 10, 5");
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\n");
  AwaitMessage("ran in");
  // A mistake is told, what was drawn stays, and the repair is drawn.
  program_->TypeIntoEditor("Cercel = 0, 0, 50");
  Await("the message of the mistake", [&] { return !program_->Text(MessageId).starts_with("ran in"); });
  Click(-6.26, 39.51);  // between two marks
  AwaitLine("L 1/3");
  program_->SelectInEditor(34, 36);
  program_->TypeIntoEditor("le");
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\nCercle = 0, 0, 50");
  AwaitMessage("ran in");
  // It is undone and done again, each time in the drawing too.
  program_->Command(MenuId::Mnu_Annuler);
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\nCercel = 0, 0, 50");
  Await("the mistake again", [&] { return !program_->Text(MessageId).starts_with("ran in"); });
  program_->Command(MenuId::Mnu_Refaire);
  program_->Command(MenuId::Mnu_Refaire);
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\nCercle = 0, 0, 50");
  AwaitMessage("ran in");
  // The picture leads to its lines, and the keys go there.
  AwaitElement(0, 43, "L 2/3");
  Click(0, 53);  // there is nothing yet
  AwaitLine("L 2/3");
  AwaitElement(0, -50, "L 3/3");
  EXPECT_EQ(Focus(), program_->Control(EditorId));
  // A number is turned, and the circle with it: three keys, one step.
  const int end = static_cast<int>(program_->EditorText().size());
  program_->SelectInEditor(end, end);
  for (int key = 0; key < 3; ++key) AltKey(VK_UP);
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\nCercle = 0, 0, 53");
  program_->SelectInEditor(0, 0);
  AwaitElement(0, -53, "L 3/3");
  program_->Command(MenuId::Mnu_Annuler);
  AwaitEditor("Arc = 0, 180, 40\nGrad = 10, 5\nCercle = 0, 0, 50");
  AwaitElement(-6.26, 39.51, "L 1/3");
  AwaitElement(0, -50, "L 3/3");
  EndWithoutSaving();
}

TEST_F(ProgramLink, MeasuresAndMovesWithoutClicking) {
  StartWith("Arc = 0, 180, 40\r\nTrait = -30, -20, 30, -20");
  Click(0, -20);
  AwaitLine("L 2/2");
  program_->SelectInEditor(0, 0);
  Drag(-30, -20, 30, -20, MK_SHIFT);
  constexpr double pixel = 25.4 / 96;
  double distance = 0, direction = -1;
  EXPECT_EQ(std::sscanf(dragged_.c_str(), "distance %lf, direction %lf°", &distance, &direction), 2)
      << dragged_;
  EXPECT_NEAR(distance, 60, 2 * pixel);
  EXPECT_EQ(direction, 0);
  AwaitLine("L 1/2");
  const LPARAM top = At(0, 30);
  program_->MovePointer(LOWORD(top), HIWORD(top));
  double value = 0, angle = 0, radius = 0;
  const std::string reading = program_->Text(ReadingId);
  EXPECT_EQ(std::sscanf(reading.c_str(), "value %lf %%, angle %lf°, radius %lf", &value, &angle, &radius), 3)
      << reading;
  EXPECT_NEAR(value, 50, 0.5);
  EXPECT_NEAR(angle, 90, 1);
  EXPECT_NEAR(radius, 30, 2 * pixel);
  // A drag moves the drawing, and is no click.
  Drag(0, -20, 20, -20, 0);
  AwaitLine("L 1/2");
  AwaitElement(45, -20, "L 2/2");
  EndUnasked();
}

TEST_F(ProgramLink, OpensTheFileThatDrewWhatWasClicked) {
  folder_.Write("part.dat", "' a part\r\n\r\nTrait = -30, 20, 30, 20");
  StartWith("' whole\r\nFichier = part.dat");
  Click(0, 20);
  AwaitLine("L 2/2");
  const HWND area = program_->Control(GraphicId);
  const LPARAM place = At(0, 20);
  PostMessageW(area, WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, place);
  PostMessageW(area, WM_LBUTTONUP, MK_CONTROL, place);
  AwaitLine("L 3/3");
  program_->AwaitIdle();
  EXPECT_EQ(program_->Title(), TitleWith(Language::English, folder_.NameOf("part.dat")));
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
