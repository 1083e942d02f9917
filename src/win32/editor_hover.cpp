// The part of the script editor that says what the word at the pointer is.
#include <windows.h>
#include <windowsx.h>

#include "win32/editor.h"
#include "win32/menu_bar.h"
#include "win32/pixels.h"

namespace vaxel {

// The text stays while the pointer stays on the word and nothing else is done.
void EditorWin32::FollowPointer(UINT message, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE: {
      TRACKMOUSEEVENT track = {sizeof track, TME_HOVER | TME_LEAVE, window_, HOVER_DEFAULT};
      TrackMouseEvent(&track);
      if (!tip_->IsShown()) return;
      const POINTL pixel = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      const auto place = static_cast<LONG>(text_.Send(EM_CHARFROMPOS, 0, &pixel));
      if (place < explained_.cpMin || place >= explained_.cpMax) tip_->Hide();
      return;
    }
    case WM_MOUSEHOVER:
      return ExplainWordAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    case WM_MOUSELEAVE:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MOUSEWHEEL:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_KILLFOCUS:
      return tip_->Hide();
    default:
      return;
  }
}

// The control names a place for any pixel, also for one far from the text.
void EditorWin32::ExplainWordAt(POINT pixel) {
  if (!application_ || tip_->IsShown() || IsMenuOpen()) return;
  const POINTL asked = {pixel.x, pixel.y};
  const auto place = static_cast<LONG>(text_.Send(EM_CHARFROMPOS, 0, &asked));
  const auto help = application_->WordAt(static_cast<std::size_t>(place));
  if (!help) return;
  explained_ = {static_cast<LONG>(help->Word.Begin), static_cast<LONG>(help->Word.End)};
  const RECT begin = LineBox(help->Word.Begin), end = LineBox(help->Word.End);
  POINT onScreen = pixel;
  ClientToScreen(window_, &onScreen);
  const bool isOnWord = onScreen.y >= begin.top && onScreen.y < begin.bottom && onScreen.x >= begin.left &&
                        (end.top != begin.top || onScreen.x < end.left);
  constexpr int gap = 4;  // 1/96 inch, between word and text
  const LONG below = begin.bottom + ToPixels(gap, GetDpiForWindow(window_));
  if (isOnWord) tip_->Show(help->Text, {begin.left, below}, help->Sample);
}

}  // namespace vaxel
