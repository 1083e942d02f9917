#include "tests/win32/shown_dialog.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <thread>

#include "winbase/wide_text.h"

namespace vaxel {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int BoxTextId = 0xFFFF, OwnBoxTextId = 1000, FileNameId = 0x47C;

// For EnumWindows and EnumChildWindows.
BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

}  // namespace

std::chrono::milliseconds Patience() {
  constexpr int usual = 15;
  const char* const wanted = std::getenv("VAXEL_TEST_PATIENCE");
  return std::chrono::seconds(wanted ? std::max(std::atoi(wanted), usual) : usual);
}

void Await(std::string_view what, const std::function<bool()>& condition,
           std::chrono::milliseconds patience) {
  const auto end = Clock::now() + patience;
  while (!condition()) {
    if (Clock::now() > end) throw DriveFailure("waited in vain for " + std::string(what));
    std::this_thread::sleep_for(3ms);
  }
}

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR result = 0;
  const auto most = static_cast<UINT>((Patience() + 5s).count());
  if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, most, &result) && IsWindow(window))
    throw DriveFailure("a window does not answer the message " + std::to_string(message));
  return static_cast<LRESULT>(result);
}

void SetTextOf(HWND window, const std::wstring& text) {
  Send(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return Narrow(text);
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

std::vector<HWND> WindowsOf(DWORD process) {
  std::vector<HWND> windows;
  EnumWindows(AddWindow, reinterpret_cast<LPARAM>(&windows));
  std::erase_if(windows, [process](HWND window) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    return owner != process;
  });
  return windows;
}

std::vector<HWND> ChildrenOf(HWND window) {
  std::vector<HWND> children;
  EnumChildWindows(window, AddWindow, reinterpret_cast<LPARAM>(&children));
  return children;
}

HWND ShownDialog::Control(int id) const {
  const HWND control = GetDlgItem(window_, id);
  if (!control) throw DriveFailure("the dialog \"" + Caption() + "\" has no control " + std::to_string(id));
  return control;
}

bool ShownDialog::IsMessageBox() const {
  return GetDlgItem(window_, BoxTextId) || GetDlgItem(window_, OwnBoxTextId);
}

bool ShownDialog::IsFileDialog() const {
  return GetDlgItem(window_, FileNameId) != nullptr;
}

std::string ShownDialog::Selected(int id) const {
  DWORD first = 0, last = 0;
  Send(Control(id), EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
  return Narrow(Widen(Text(id)).substr(first, last - first));
}

std::string ShownDialog::Message() const {
  return Text(GetDlgItem(window_, BoxTextId) ? BoxTextId : OwnBoxTextId);
}

// The field lies in the control that the dialogs have for the name.
HWND ShownDialog::NameField() const {
  HWND field = Control(FileNameId);
  for (const HWND child : ChildrenOf(field)) {
    if (lstrcmpiW(ClassOf(child).c_str(), L"Edit") == 0) field = child;
  }
  return field;
}

std::string ShownDialog::FileName() const {
  return TextOf(NameField());
}

HWND ShownDialog::FocusWindow() const {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &thread);
  return thread.hwndFocus ? thread.hwndFocus : window_;
}

int ShownDialog::Focus() const {
  const HWND focus = FocusWindow();
  return IsChild(window_, focus) ? GetDlgCtrlID(focus) : 0;
}

void ShownDialog::Type(int id, const std::string& text) const {
  SetTextOf(Control(id), Widen(text));
}

void ShownDialog::Key(WORD key) const {
  PostMessageW(FocusWindow(), WM_KEYDOWN, key, 1);
}

// The control asks for the state of the keyboard, which posted messages leave alone.
void ShownDialog::CtrlKey(WORD key) const {
  const HWND focus = FocusWindow();
  const DWORD thread = GetWindowThreadProcessId(focus, nullptr), own = GetCurrentThreadId();
  AttachThreadInput(own, thread, TRUE);
  BYTE before[256]{}, held[256]{};
  GetKeyboardState(before);
  std::copy(std::begin(before), std::end(before), std::begin(held));
  held[VK_CONTROL] = 0x80;
  SetKeyboardState(held);
  Send(focus, WM_KEYDOWN, key, 1);
  SetKeyboardState(before);
  AttachThreadInput(own, thread, FALSE);
}

void ShownDialog::AltLetter(wchar_t letter) const {
  constexpr LPARAM altIsDown = 1L << 29;
  PostMessageW(FocusWindow(), WM_SYSCHAR, letter, altIsDown | 1);
}

void ShownDialog::Press(int id) const {
  PostMessageW(window_, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(Control(id)));
}

void ShownDialog::Answer(int id) const {
  Press(id);
  AwaitClosed();
}

void ShownDialog::AnswerFile(const std::string& name) const {
  SetTextOf(NameField(), Widen(name));
  Press(IDOK);
}

void ShownDialog::AwaitFocus(int id) const {
  Await("the focus on " + std::to_string(id), [&] { return Focus() == id; });
}

void ShownDialog::AwaitClosed() const {
  Await("the end of a dialog", [this] { return !IsOpen(); });
}

std::optional<ShownDialog> FindDialog(DWORD process, const std::string& caption) {
  for (const HWND window : WindowsOf(process)) {
    const ShownDialog dialog(window);
    if (ClassOf(window) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window) &&
        (caption.empty() || dialog.Caption() == caption))
      return dialog;
  }
  return std::nullopt;
}

}  // namespace vaxel
