// The real program, driven from outside: the drawing in a window that changes, its pages and the status line.
#include <windows.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "tests/win32/program_fixture.h"

namespace vaxel {
namespace {

class ProgramView : public ProgramTest {
 protected:
  // Waits until the middle of the graphic area, which is the script's 0,0, is shown as that.
  void AwaitCentred() {
    const auto isCentred = [this] {
      const SIZE size = program_->GraphicSize();
      double x = NAN, y = NAN;
      std::sscanf(program_->MovePointer(size.cx / 2, size.cy / 2).c_str(), "%lf  %lf", &x, &y);
      return std::abs(x) < 0.2 && std::abs(y) < 0.2;
    };
    Await("the drawing in the middle", isCentred);
  }
  void AwaitWiderThan(LONG width) {
    Await("a wider graphic area", [&] { return program_->GraphicSize().cx > width; });
    program_->AwaitIdle();
  }
  RECT BoxOf(int id) const {
    RECT box{};
    GetWindowRect(program_->Control(id), &box);
    return box;
  }
  void ExpectStatusLineInOrder() const {
    LONG end = BoxOf(Text1Id).left;
    for (const int id : {Text1Id, Text2Id, ZoomId, PageId, ReadingId, MessageId}) {
      const RECT box = BoxOf(id);
      EXPECT_TRUE(IsWindowVisible(program_->Control(id))) << id;
      EXPECT_EQ(box.top, BoxOf(Text1Id).top) << id;
      EXPECT_GE(box.top, BoxOf(GraphicId).bottom) << id;
      if (box.right == box.left) continue;
      EXPECT_GE(box.left, end) << id;
      end = box.right;
    }
  }
};

TEST_F(ProgramView, DrawingStaysInTheMiddleOfItsWindow) {
  StartWith("Trait = 0, 0, 10, 10\r\nNPage\r\nTrait = 0, 0, 20, 20");
  AwaitCentred();
  ExpectStatusLineInOrder();
  const LONG narrow = program_->GraphicSize().cx;
  PostMessageW(program_->Window(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
  Await("the largest window", [this] { return IsZoomed(program_->Window()) != 0; });
  AwaitWiderThan(narrow);
  AwaitCentred();
  ExpectStatusLineInOrder();
  const LONG maximised = program_->GraphicSize().cx;
  program_->Command(MenuId::Mnu_Code);
  AwaitWiderThan(maximised);
  AwaitCentred();
  EXPECT_TRUE(program_->Text(MessageId).starts_with("ran in ")) << program_->Text(MessageId);
  EndUnasked();
}

TEST_F(ProgramView, KeysTurnPagesAndFitThem) {
  StartWith("Trait = 0, 0, 10, 10\r\nNPage\r\nTrait = 0, 0, 20, 20");
  EXPECT_EQ(program_->Text(PageId), "page 2 of 2");
  const auto awaitText = [this](int id, const std::string& text) {
    Await(text, [&] { return program_->Text(id) == text; });
  };
  program_->CtrlKey(VK_PRIOR);
  awaitText(PageId, "page 1 of 2");
  program_->CtrlKey(VK_NEXT);
  awaitText(PageId, "page 2 of 2");
  EXPECT_EQ(program_->Text(ZoomId), "100%");
  program_->CtrlKey('0');
  Await("another zoom", [this] { return program_->Text(ZoomId) != "100%"; });
  program_->CtrlKey('1');
  awaitText(ZoomId, "100%");
  program_->AwaitIdle();
  // A click on the status line leaves the keys where they were.
  const auto focus = [this] {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program_->Window(), nullptr), &info);
    return info.hwndFocus;
  };
  const HWND before = focus();
  SendMessageW(program_->Control(Text1Id), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  SendMessageW(program_->Control(Text1Id), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
  EXPECT_EQ(focus(), before);
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
