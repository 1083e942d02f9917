#include "tests/win32/dialog_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <climits>
#include <cstddef>
#include <thread>
#include <utility>
#include <vector>

#include "tests/win32/gdi_objects.h"

namespace vaxel {
namespace {

using namespace std::chrono_literals;

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  const LRESULT length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::vector<HWND> OpenDialogs() {
  std::vector<HWND> found;
  const auto add = [](HWND window, LPARAM list) -> BOOL {
    DWORD process = 0;
    wchar_t name[16]{};
    GetWindowThreadProcessId(window, &process);
    GetClassNameW(window, name, 16);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) && std::wstring(name) == L"#32770")
      reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
  };
  EnumWindows(add, reinterpret_cast<LPARAM>(&found));
  return found;
}

template <class Condition>
bool WaitUntil(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + 8s;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(2ms);
  }
  return true;
}

// Hidden ones and controls too.
int CountWindows() {
  int count = 0;
  const auto add = [](HWND window, LPARAM counter) -> BOOL {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const auto addOne = [](HWND, LPARAM total) -> BOOL { return ++*reinterpret_cast<int*>(total), TRUE; };
    if (process != GetCurrentProcessId()) return TRUE;
    EnumChildWindows(window, addOne, counter);
    return addOne(window, counter);
  };
  EnumWindows(add, reinterpret_cast<LPARAM>(&count));
  return count;
}

}  // namespace

std::wstring ShownDialog::Caption() const {
  return TextOf(window_);
}

std::wstring ShownDialog::Text(int id) const {
  return TextOf(Control(id));
}

HWND ShownDialog::FocusWindow() const {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof(thread);
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &thread);
  return thread.hwndFocus;
}

int ShownDialog::Focus() const {
  const HWND focus = FocusWindow();
  return IsChild(window_, focus) ? GetDlgCtrlID(focus) : 0;
}

std::wstring ShownDialog::Selected(int id) const {
  DWORD first = 0, last = 0;
  SendMessageW(Control(id), EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
  return Text(id).substr(first, last - first);
}

void ShownDialog::Type(int id, const std::wstring& text) const {
  SendMessageW(Control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void ShownDialog::Key(WORD key) const {
  const HWND focus = FocusWindow();
  PostMessageW(focus ? focus : window_, WM_KEYDOWN, key, 1);
}

void ShownDialog::AltLetter(wchar_t letter) const {
  const HWND focus = FocusWindow();
  constexpr LPARAM altIsDown = 1L << 29;
  PostMessageW(focus ? focus : window_, WM_SYSCHAR, letter, altIsDown | 1);
}

bool ShownDialog::WaitFocus(int id) const {
  return WaitUntil([&] { return Focus() == id; });
}

bool ShownDialog::WaitClosed() const {
  return WaitUntil([this] { return !IsOpen(); });
}

ShownDialog WaitForDialog(const std::wstring& caption) {
  HWND found = nullptr;
  WaitUntil([&] {
    for (const HWND window : OpenDialogs()) {
      if (caption.empty() || TextOf(window) == caption) found = window;
    }
    return found != nullptr;
  });
  EXPECT_TRUE(found) << "no dialog was shown";
  return ShownDialog(found);
}

void Drive(const std::function<void()>& show, const std::function<void(const ShownDialog&)>& drive) {
  std::atomic<bool> isShown = true;
  std::thread driver([&] {
    const ShownDialog dialog = WaitForDialog();
    if (dialog.Window()) drive(dialog);
    if (WaitUntil([&] { return !isShown; })) return;
    ADD_FAILURE() << "the dialog is still open";
    while (isShown) {
      for (const HWND window : OpenDialogs()) EndDialog(window, IDCANCEL);
      std::this_thread::sleep_for(50ms);
    }
  });
  show();
  isShown = false;
  driver.join();
}

ShowingCost MeasureShowings(const std::function<void()>& show,
                            const std::function<void(const ShownDialog&)>& drive) {
  constexpr int batches = 4;
  const auto users = [] { return static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)); };
  ShowingCost least{.Windows = INT_MAX, .GdiObjects = INT_MAX, .UserObjects = INT_MAX};
  Drive(show, drive);
  for (int batch = 0; batch < batches; ++batch) {
    const ShowingCost before{
        .Windows = CountWindows(), .GdiObjects = test::GdiObjectCount(), .UserObjects = users()};
    for (int i = 0; i < least.Showings; ++i) Drive(show, drive);
    least.Windows = std::min(least.Windows, CountWindows() - before.Windows);
    least.GdiObjects = std::min(least.GdiObjects, test::GdiObjectCount() - before.GdiObjects);
    least.UserObjects = std::min(least.UserObjects, users() - before.UserObjects);
  }
  return least;
}

}  // namespace vaxel
