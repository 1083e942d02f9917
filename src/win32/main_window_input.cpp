// The part of the main window that has to do with keys, the pointer and the events of a run.
#include <windows.h>

#include "win32/main_window.h"

namespace vaxel {
namespace {

struct KeyRow {
  WPARAM Virtual;
  Key Meaning;
};

constexpr KeyRow FunctionKeys[] = {{VK_F1, Key::F1}, {VK_F4, Key::F4}, {VK_F6, Key::F6},
                                   {VK_F7, Key::F7}, {VK_F8, Key::F8}, {VK_F12, Key::F12}};
constexpr KeyRow Letters[] = {{'N', Key::N}, {'O', Key::O}, {'P', Key::P}, {'S', Key::S}};

template <std::size_t Count>
std::optional<Key> Find(const KeyRow (&rows)[Count], WPARAM key) {
  for (const KeyRow& row : rows) {
    if (row.Virtual == key) return row.Meaning;
  }
  return std::nullopt;
}

bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

// Together with Alt, which AltGr is besides Ctrl, letters are characters.
std::optional<Key> KeyOf(WPARAM key) {
  if (IsDown(VK_SHIFT)) return key == VK_F1 ? std::nullopt : Find(FunctionKeys, key);
  if (const auto found = Find(FunctionKeys, key)) return found;
  return IsDown(VK_MENU) ? std::nullopt : Find(Letters, key);
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
    const bool isWaiting = shape == PointerShape::Hourglass;
    SetCursor(LoadCursorW(nullptr, isWaiting                      ? IDC_WAIT
                                   : shape == PointerShape::Cross ? IDC_CROSS
                                                                  : IDC_ARROW));
  }
}

void MainWindowWin32::SetWindowEnabled(bool isEnabled) {
  isBusy_ = !isEnabled;
  if (!isEnabled) {
    const HWND focus = GetFocus();
    if (focus && Belongs(focus)) focus_ = focus;
    // A key that was let go in another window.
    if (GetAsyncKeyState(VK_ESCAPE) >= 0) application_->KeyUp(Key::Escape);
  }
  EnableWindow(window_.get(), isEnabled ? TRUE : FALSE);
  if (isEnabled && GetActiveWindow() == window_.get()) SetFocus(focus_);
}

void MainWindowWin32::Activate(bool isActive) {
  if (isActive) {
    SetFocus(IsWindowVisible(focus_) ? focus_ : graphic_.Window());
    return;
  }
  const HWND focus = GetFocus();
  if (focus && Belongs(focus) && focus != window_.get()) focus_ = focus;
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
  if (message.message != WM_KEYDOWN || !IsWindowEnabled(window_.get())) return false;
  const std::optional<Key> key = KeyOf(message.wParam);
  return key && application_->KeyDown(*key);
}

bool MainWindowWin32::IsForAnotherTime(const MSG& message) const {
  return isBusy_ && (IsKey(message.message) || IsMouse(message.message));
}

void MainWindowWin32::Dispatch(MSG& message) {
  if (window_ && Belongs(message.hwnd)) {
    bool isTaken = false;
    if (IsKey(message.message)) Guarded([&] { isTaken = TakesKey(message); });
    if (isTaken || IsForAnotherTime(message)) return;
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
  // The run must see an Escape before the key's end, which may be the next event already.
  const auto isEnding = [this] { return isBusy_ && application_->Context().State.AbortRequested; };
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
