#include "tests/win32/program_driver.h"

#include <gtest/gtest.h>
// Need what windows.h declares.
#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

#include "app/win32/control_ids.h"
#include "render/gdi_strings.h"
#include "tests/win32/gdi_objects.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr int BoxTextId = 0xFFFF, OwnBoxTextId = 1000, FileNameId = 0x47C;
constexpr UINT AnswerMilliseconds = 20'000;

// However long the answer takes: it may be a whole run. A window that is closing says nothing.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerMilliseconds, &result) &&
      IsWindow(window))
    throw DriveFailure("a window does not answer the message " + std::to_string(message));
  return static_cast<LRESULT>(result);
}

std::string TextOfWindow(HWND window) {
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

// Windows for which EnumWindows or EnumChildWindows asks.
BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::vector<HWND> ChildrenOf(HWND window) {
  std::vector<HWND> children;
  EnumChildWindows(window, AddWindow, reinterpret_cast<LPARAM>(&children));
  return children;
}

std::wstring ProgramName() {
  const std::string named = Environment("VAXEL_PROGRAM");
  if (!named.empty()) return fs::absolute(Widen(named)).wstring();
  std::wstring own(32768, L'\0');
  own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
  return fs::path(own).replace_filename("Vaxel.exe").wstring();
}

void SendKey(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  if (SendInput(1, &input, sizeof input) != 1) throw DriveFailure("no key can be pressed here");
}

// Bytes in the memory of another process.
class RemoteBytes {
 public:
  RemoteBytes(HANDLE process, std::size_t size)
      : process_(process),
        place_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {
    if (!place_) throw DriveFailure("no memory in the program");
  }
  ~RemoteBytes() { VirtualFreeEx(process_, place_, 0, MEM_RELEASE); }
  RemoteBytes(const RemoteBytes&) = delete;
  RemoteBytes& operator=(const RemoteBytes&) = delete;

  char* At(std::size_t offset = 0) const { return static_cast<char*>(place_) + offset; }
  void Write(const void* bytes, std::size_t size) const {
    WriteProcessMemory(process_, place_, bytes, size, nullptr);
  }
  void Read(std::size_t offset, void* bytes, std::size_t size) const {
    ReadProcessMemory(process_, At(offset), bytes, size, nullptr);
  }

 private:
  HANDLE process_;
  void* place_;
};

}  // namespace

void Await(std::string_view what, const std::function<bool()>& condition,
           std::chrono::milliseconds patience) {
  const auto end = Clock::now() + patience;
  while (!condition()) {
    if (Clock::now() > end) throw DriveFailure("waited in vain for " + std::string(what));
    std::this_thread::sleep_for(3ms);
  }
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw DriveFailure("there is no file " + Narrow(file.wstring()));
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> FilesIn(const fs::path& folder, const std::string& extension) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  return files;
}

TestFolder::TestFolder(const std::string& name)
    : path_(fs::absolute(fs::path(VAXEL_BINARY_DIR) / "program-tests" / name)) {
  fs::remove_all(path_);
  fs::create_directories(path_);
  path_ = fs::canonical(path_);
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  if (!testing::Test::HasFailure()) fs::remove_all(path_, ignored);
}

std::string TestFolder::NameOf(const std::string& file) const {
  return Narrow((path_ / file).wstring());
}

void TestFolder::Write(const std::string& file, std::string_view bytes) const {
  std::ofstream(path_ / file, std::ios::binary) << bytes;
}

std::string ProgramDialog::Caption() const {
  return TextOfWindow(window_);
}

std::string ProgramDialog::Text(int id) const {
  const HWND control = Control(id);
  if (!control) throw DriveFailure("the dialog \"" + Caption() + "\" has no control " + std::to_string(id));
  return TextOfWindow(control);
}

std::string ProgramDialog::Message() const {
  return Text(Control(BoxTextId) ? BoxTextId : OwnBoxTextId);
}

bool ProgramDialog::IsFileDialog() const {
  return Control(FileNameId) != nullptr;
}

void ProgramDialog::Type(int id, const std::string& text) const {
  Send(Control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

void ProgramDialog::Check(int id) const {
  Send(Control(id), BM_CLICK);
}

// To the control that has the focus, as from the keyboard.
void ProgramDialog::Key(WORD key) const {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &thread);
  PostMessageW(thread.hwndFocus ? thread.hwndFocus : window_, WM_KEYDOWN, key, 1);
}

void ProgramDialog::Press(int id) const {
  if (!Control(id))
    throw DriveFailure("the dialog \"" + Caption() + "\" has no button " + std::to_string(id));
  PostMessageW(window_, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(Control(id)));
}

void ProgramDialog::Answer(int id) const {
  Press(id);
  AwaitClosed();
}

void ProgramDialog::AnswerFile(const std::string& name) const {
  HWND field = Control(FileNameId);
  if (!field) throw DriveFailure("\"" + Caption() + "\" is no dialog for files");
  for (const HWND child : ChildrenOf(field)) {
    if (lstrcmpiW(ClassOf(child).c_str(), L"Edit") == 0) field = child;
  }
  Send(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(name).c_str()));
  Press(IDOK);
}

void ProgramDialog::AwaitClosed() const {
  Await("the end of a dialog", [this] { return !IsOpen(); });
}

Program::Program(const TestFolder& folder, const std::string& parameters) {
  const std::wstring program = ProgramName();
  std::wstring line = L"\"" + program + L"\"";
  if (!parameters.empty()) line += L" " + Widen(parameters);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.Path().c_str(), &start, &process_))
    throw DriveFailure("cannot start " + Narrow(program));
}

Program::~Program() {
  if (!HasEnded()) {
    TerminateProcess(process_.hProcess, 99);
    WaitForSingleObject(process_.hProcess, 10'000);
  }
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

std::vector<HWND> Program::Windows() const {
  std::vector<HWND> windows;
  EnumWindows(AddWindow, reinterpret_cast<LPARAM>(&windows));
  std::erase_if(windows, [this](HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process != process_.dwProcessId;
  });
  return windows;
}

HWND Program::FindMainWindow() const {
  for (const HWND window : Windows()) {
    if (ClassOf(window) == L"Vaxel") return window;
  }
  return nullptr;
}

std::vector<ProgramDialog> Program::Dialogs() const {
  std::vector<ProgramDialog> dialogs;
  for (const HWND window : Windows()) {
    if (ClassOf(window) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window))
      dialogs.emplace_back(window);
  }
  return dialogs;
}

// For messages: what is on the screen.
std::string Program::Situation() const {
  if (HasEnded()) return "; the program has ended";
  std::string text = "; shown:";
  for (const HWND window : Windows()) {
    if (!IsWindowVisible(window)) continue;
    wchar_t caption[200] = L"";
    GetWindowTextW(window, caption, static_cast<int>(std::size(caption)));
    text += " [" + Narrow(ClassOf(window)) + (IsWindowEnabled(window) ? "" : ", disabled") + ": " +
            Narrow(caption);
    const ProgramDialog dialog(window);
    if (dialog.Control(BoxTextId) || dialog.Control(OwnBoxTextId)) text += " | " + dialog.Message();
    text += "]";
  }
  return text;
}

HWND Program::Control(int id) const {
  const HWND control = GetDlgItem(FindMainWindow(), id);
  if (!control) throw DriveFailure("no control " + std::to_string(id) + Situation());
  return control;
}

ProgramDialog Program::AwaitDialog() const {
  std::vector<ProgramDialog> dialogs;
  try {
    Await("a dialog", [&] {
      if (HasEnded()) throw DriveFailure("no dialog");
      return !(dialogs = Dialogs()).empty();
    });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + Situation());
  }
  return dialogs.front();
}

ProgramDialog Program::AwaitDialog(const std::string& caption) const {
  ProgramDialog dialog(nullptr);
  try {
    Await("the dialog " + caption, [&] {
      if (HasEnded()) throw DriveFailure("no dialog");
      for (const ProgramDialog& open : Dialogs()) {
        if (open.Caption() == caption) dialog = open;
      }
      return dialog.Window() != nullptr;
    });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + Situation());
  }
  return dialog;
}

bool Program::IsBusy() const {
  const HWND window = FindMainWindow();
  return !window || !IsWindowVisible(window) || !IsWindowEnabled(window);
}

// A run enables the window a little before it is over.
void Program::AwaitIdle() const {
  try {
    Await("the end of what the program does", [this] {
      if (HasEnded()) throw DriveFailure("the program has ended");
      if (IsBusy()) return false;
      for (int round = 0; round < 3; ++round) {
        Send(FindMainWindow(), WM_NULL);
        std::this_thread::sleep_for(5ms);
      }
      return !IsBusy();
    });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + Situation());
  }
}

void Program::CommandNumber(int number) const {
  Send(FindMainWindow(), WM_COMMAND, static_cast<WPARAM>(FirstCommandId + number));
}

void Program::OpenRecent(int index) const {
  Send(FindMainWindow(), WM_COMMAND, static_cast<WPARAM>(FirstRecentId + index));
}

void Program::Post(MenuId item) const {
  PostMessageW(FindMainWindow(), WM_COMMAND, static_cast<WPARAM>(FirstCommandId + static_cast<int>(item)), 0);
}

ProgramDialog Program::CommandWithDialog(MenuId item) const {
  Post(item);
  return AwaitDialog();
}

void Program::Close() const {
  PostMessageW(FindMainWindow(), WM_CLOSE, 0, 0);
}

void Program::Key(WORD key) const {
  const HWND editor = Control(EditorId);
  PostMessageW(editor, WM_KEYDOWN, key, 1);
  PostMessageW(editor, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void Program::PressKey(WORD key) const {
  SetForegroundWindow(FindMainWindow());
  SendKey(key, 0);
}

void Program::ReleaseKey(WORD key) const {
  SendKey(key, KEYEVENTF_KEYUP);
}

void Program::CtrlKey(WORD key) const {
  PressKey(VK_CONTROL);
  PressKey(key);
  ReleaseKey(key);
  ReleaseKey(VK_CONTROL);
}

std::string Program::Title() const {
  return TextOfWindow(FindMainWindow());
}

std::string Program::Text(int id) const {
  return TextOfWindow(Control(id));
}

std::string Program::EditorText() const {
  std::string text = Text(EditorId);
  std::erase(text, '\r');
  return text;
}

void Program::SelectInEditor(int begin, int end) const {
  Send(Control(EditorId), EM_SETSEL, static_cast<WPARAM>(begin), end);
}

void Program::TypeIntoEditor(std::string_view text) const {
  for (const wchar_t unit : Widen(text)) Send(Control(EditorId), WM_CHAR, unit, 1);
}

// As pasting over everything does.
void Program::SetEditorText(const std::string& text) const {
  std::wstring wide = Widen(text);
  std::replace(wide.begin(), wide.end(), L'\n', L'\r');
  SelectInEditor(0, -1);
  Send(Control(EditorId), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

std::string Program::ToolTip(int id) const {
  constexpr std::size_t length = 500;
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND;
  tool.hwnd = FindMainWindow();
  tool.uId = reinterpret_cast<UINT_PTR>(Control(id));
  const RemoteBytes memory(process_.hProcess, sizeof tool + length * sizeof(wchar_t));
  tool.lpszText = reinterpret_cast<wchar_t*>(memory.At(sizeof tool));
  for (const HWND window : Windows()) {
    if (ClassOf(window) != TOOLTIPS_CLASSW) continue;
    memory.Write(&tool, sizeof tool);
    Send(window, TTM_GETTEXTW, length, reinterpret_cast<LPARAM>(memory.At()));
    std::wstring text(length, L'\0');
    memory.Read(sizeof tool, text.data(), text.size() * sizeof(wchar_t));
    if (text[0]) return Narrow(text.c_str());
  }
  return {};
}

SIZE Program::GraphicSize() const {
  RECT client{};
  GetClientRect(Control(GraphicId), &client);
  return {client.right, client.bottom};
}

std::string Program::MovePointer(int x, int y) const {
  Send(Control(GraphicId), WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
  return Text(Text2Id);
}

void Program::Resize(int width, int height) const {
  SetWindowPos(FindMainWindow(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Send(FindMainWindow(), WM_NULL);
}

// Where the system does not count for others, of the objects of the user interface the windows are counted
// alone.
ResourceCount Program::CountResources() const {
  ResourceCount count;
  count.GdiObjects = static_cast<int>(GetGuiResources(process_.hProcess, GR_GDIOBJECTS));
  count.UserObjects = static_cast<int>(GetGuiResources(process_.hProcess, GR_USEROBJECTS));
  if (count.GdiObjects == 0) count.GdiObjects = test::GdiObjectCount(process_.hProcess);
  if (count.UserObjects == 0) {
    for (const HWND window : Windows()) count.UserObjects += 1 + static_cast<int>(ChildrenOf(window).size());
  }
  return count;
}

bool Program::HasEnded() const {
  return WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0;
}

int Program::AwaitExit() {
  const auto most = static_cast<DWORD>(std::chrono::milliseconds(Patience).count());
  if (WaitForSingleObject(process_.hProcess, most) != WAIT_OBJECT_0)
    throw DriveFailure("the program does not end" + Situation());
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return static_cast<int>(code);
}

void Program::Kill() {
  TerminateProcess(process_.hProcess, 99);
  AwaitExit();
}

}  // namespace vaxel
