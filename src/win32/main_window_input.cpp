// The part of the main window that has to do with keys, the pointer and the events of a run.
#include <windows.h>
// The next one needs what windows.h declares.
#include <windowsx.h>

#include <optional>
#include <utility>

#include "win32/context_menu_window.h"
#include "win32/input_state.h"
#include "win32/main_window.h"

namespace vaxel {
namespace {

// Milliseconds of a run after which it can be stopped by a button.
constexpr ULONGLONG BeforeStop = 300;

// Together with Alt, which AltGr is besides Ctrl, letters and digits are characters.
Key KeyOf(WPARAM key) {
  if (key == VK_UP) return Key::Up;
  if (key == VK_DOWN) return Key::Down;
  if (key == VK_TAB) return Key::Tab;
  if (key == VK_RETURN) return Key::Return;
  if (key == VK_SPACE) return Key::Space;
  if (key >= VK_F1 && key <= VK_F12) return static_cast<Key>(static_cast<WPARAM>(Key::F1) + key - VK_F1);
  if (key == VK_PRIOR) return Key::PageUp;
  if (key == VK_NEXT) return Key::PageDown;
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) key += '0' - VK_NUMPAD0;
  const bool isSign = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
  return isSign && !IsDown(VK_MENU) ? static_cast<Key>(key) : Key::None;
}

bool IsKey(UINT message) {
  return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}

bool IsMouse(UINT message) {
  return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

}  // namespace

void MainWindowWin32::SetPointer(PointerShape shape) {
  pointer_ = shape;
  graphic_.SetPointer(shape);
  POINT pointer{};
  GetCursorPos(&pointer);
  if (shape == PointerShape::Hourglass || Belongs(WindowFromPoint(pointer))) {
    SetCursor(CursorOf(shape));
  }
}

// A disabled window gets no clicks: the system asks it for the pointer's shape, and says which button has
// asked for it.
void MainWindowWin32::PressedDuringRun(UINT message) {
  POINT pointer{};
  GetCursorPos(&pointer);
  const bool isStop = tools_.IsOverStop(pointer);
  if (isStop && (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)) {
    isStopped_ = true;
    application_->KeyDown(Key::Escape);
  }
  if (isStop) {
    SetCursor(CursorOf(PointerShape::Normal));
  } else {
    SetPointer(pointer_);
  }
}

// Both areas get their menus here, before they make something of the same keys and buttons.
bool MainWindowWin32::AsksForContextMenu(const MSG& message) {
  if (!HasContextMenu(message.hwnd)) return false;
  constexpr POINT nowhere = {-1, -1};
  switch (message.message) {
    case WM_RBUTTONDOWN:
      return true;
    case WM_RBUTTONUP: {
      POINT place = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
      ClientToScreen(message.hwnd, &place);
      ShowContextMenu(message.hwnd, place);
      return true;
    }
    case WM_KEYUP:
      if (message.wParam != VK_APPS) return false;
      ShowContextMenu(message.hwnd, nowhere);
      return true;
    case WM_SYSKEYDOWN:
      if (message.wParam != VK_F10 || !IsDown(VK_SHIFT)) return false;
      ShowContextMenu(message.hwnd, nowhere);
      return true;
    default:
      return false;
  }
}

// The place is on the screen; -1, -1 when the keyboard has asked for it.
void MainWindowWin32::ShowContextMenu(HWND area, POINT place) {
  const bool isEditor = area == editor_.Window();
  if (isBusy_) return;
  SetFocus(area);
  if (place.x == -1 && place.y == -1) {
    place = isEditor ? CaretOf(area) : MiddleOf(area);
  } else if (isEditor) {
    PutCaretAt(area, place);
  }
  const auto items = application_->ContextMenu(isEditor ? ContextPlace::Editor : ContextPlace::Drawing);
  if (const auto chosen = ChooseFromMenu(window_.get(), place, items)) application_->Choose(items[*chosen]);
}

void MainWindowWin32::SetWindowEnabled(bool isEnabled) {
  isBusy_ = !isEnabled;
  if (isEnabled) {
    tools_.SetStopEnabled(false);
    // Stop is let go when the run has ended.
    if (std::exchange(isStopped_, false)) application_->KeyUp(Key::Escape);
  } else {
    busySince_ = GetTickCount64();
    const HWND focus = GetFocus();
    if (focus && Belongs(focus)) focus_ = focus;
    // The key may have been let go in another window.
    if (GetAsyncKeyState(VK_ESCAPE) >= 0) application_->KeyUp(Key::Escape);
  }
  EnableWindow(window_.get(), isEnabled ? TRUE : FALSE);
  if (isEnabled && GetActiveWindow() == window_.get()) SetFocus(focus_);
}

void MainWindowWin32::Activate(bool isActive) {
  if (isActive) {
    SetFocus(IsWindowVisible(focus_) ? focus_ : graphic_.Window());
    // A dialog that closes activates the window, too, in the midst of the command that has shown it.
    PostMessageW(window_.get(), ActivatedMessage, 0, 0);
    return;
  }
  const HWND focus = GetFocus();
  if (focus && Belongs(focus) && focus != window_.get()) focus_ = focus;
  application_->Aid().HideOffers();
  application_->KeyUp(Key::Escape);
}

// Whether the key is the application's.
bool MainWindowWin32::TakesKey(const MSG& message) {
  const bool isDown = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  const bool isUp = message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
  if (message.wParam == VK_ESCAPE && (isDown || isUp)) {
    // Without a focus, as in a disabled window, all keys come as those of the system.
    if (isDown) application_->KeyDown(Key::Escape);
    if (isUp) application_->KeyUp(Key::Escape);
    return true;
  }
  if (!IsWindowEnabled(window_.get())) return false;
  if (message.message == WM_SYSKEYDOWN) return TakesAltKey(message);
  if (message.message != WM_KEYDOWN) return false;
  const bool isOfLines =
      application_->Aid().HasOffers() || (message.hwnd == editor_.Window() && editor_.HasLinesSelected());
  if (message.wParam == VK_TAB && !isOfLines) return false;
  return application_->KeyDown(KeyOf(message.wParam), IsDown(VK_SHIFT));
}

// All other keys with Alt are the system's.
bool MainWindowWin32::TakesAltKey(const MSG& message) {
  const bool isArrow = message.wParam == VK_UP || message.wParam == VK_DOWN;
  if (!isArrow || message.hwnd != editor_.Window() || !IsDown(VK_MENU)) return false;
  if (!application_->KeyDown(KeyOf(message.wParam), IsDown(VK_SHIFT), true)) return false;
  // Else the system would take Alt for having been pressed alone, and open the menu when it is let go.
  DefWindowProcW(window_.get(), message.message, message.wParam, message.lParam);
  return true;
}

bool MainWindowWin32::IsForAnotherTime(const MSG& message) const {
  return isBusy_ && (IsKey(message.message) || IsMouse(message.message));
}

void MainWindowWin32::Dispatch(MSG& message) {
  if (window_ && Belongs(message.hwnd)) {
    bool isTaken = false;
    if (IsKey(message.message)) Guarded([&] { isTaken = TakesKey(message); });
    if (isTaken || IsForAnotherTime(message)) return;
    bool isMenu = false;
    Guarded([&] { isMenu = AsksForContextMenu(message); });
    if (isMenu) return;
    // The wheel is for what lies under the pointer.
    if (message.message == WM_MOUSEWHEEL) {
      const HWND under = WindowFromPoint(message.pt);
      if (under && Belongs(under)) message.hwnd = under;
    }
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void MainWindowWin32::ProcessEvents() {
  MSG message{};
  // In a run that is over at once a button would only flash.
  if (isBusy_ && GetTickCount64() - busySince_ >= BeforeStop) tools_.SetStopEnabled(true);
  // The run must see an Escape before the key's end, which may be the next event already.
  const auto isEnding = [this] { return isBusy_ && application_->Runs().IsAbortRequested(); };
  while (!isEnding() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
    Dispatch(message);
  }
}

int MainWindowWin32::RunMessages() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
  return static_cast<int>(message.wParam);
}

}  // namespace vaxel
