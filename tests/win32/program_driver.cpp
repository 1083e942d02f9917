#include "tests/win32/program_driver.h"

// Need what windows.h declares.
#include <commctrl.h>
#include <psapi.h>
#include <richedit.h>
#include <shlobj.h>
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "winbase/wide_text.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

// The objects of GDI that a process has, from the table that GDI keeps of them: GetGuiResources finds none
// under Wine.
int GdiObjectCount(HANDLE process) {
  struct Entry {
    void* Object;
    USHORT Process, Reserved;
    USHORT Unique;
    UCHAR Type, Flags;
    void* User;
  };
  constexpr std::size_t tableInBlock = 0xF8;
  constexpr std::size_t entries = 0x4000;
  PROCESS_BASIC_INFORMATION information{};
  NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr);
  const char* const block = reinterpret_cast<const char*>(information.PebBaseAddress);
  const char* table = nullptr;
  std::vector<Entry> objects(entries);
  ReadProcessMemory(process, block + tableInBlock, &table, sizeof table, nullptr);
  ReadProcessMemory(process, table, objects.data(), entries * sizeof(Entry), nullptr);
  const auto owner = static_cast<USHORT>(GetProcessId(process));
  int count = 0;
  for (const Entry& object : objects) {
    // Wine's table is the process's own.
    const bool isIts = object.Process == 0 || object.Process == owner;
    if (isIts && (object.Type & 0x7F) != 0) ++count;
  }
  return count;
}

// The handles that a process has, from the system's table of all: GetProcessHandleCount finds none under
// Wine.
int HandleCount(DWORD process) {
  struct Entry {
    void* Object;
    ULONG_PTR Process, Handle;
    ULONG Access;
    USHORT Trace, Type;
    ULONG Attributes, Reserved;
  };
  struct Table {
    ULONG_PTR Count, Reserved;
  };
  // The headers do not know this kind of information.
  using Query = NTSTATUS WINAPI(int kind, void* bytes, ULONG size, ULONG* needed);
  constexpr int allHandles = 64;
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation");
  auto* const query = reinterpret_cast<Query*>(reinterpret_cast<void*>(address));
  std::vector<std::byte> bytes(1 << 20);
  if (!query || query(allHandles, bytes.data(), static_cast<ULONG>(bytes.size()), nullptr) != 0)
    throw DriveFailure("the handles of the system cannot be counted");
  const auto* const table = reinterpret_cast<const Table*>(bytes.data());
  const auto* const entries = reinterpret_cast<const Entry*>(bytes.data() + sizeof(Table));
  return static_cast<int>(std::count_if(entries, entries + table->Count,
                                        [&](const Entry& entry) { return entry.Process == process; }));
}

}  // namespace

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

std::vector<fs::path> FilesIn(const fs::path& folder, const std::string& extension) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  return files;
}

RunningProgram::RunningProgram(const test::TestFolder& folder) {
  const std::wstring program = ProgramName();
  std::wstring line = L"\"" + program + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.Path().c_str(), &start, &process_))
    throw DriveFailure("cannot start " + Narrow(program));
}

RunningProgram::~RunningProgram() {
  if (!HasEnded()) {
    TerminateProcess(process_.hProcess, 99);
    WaitForSingleObject(process_.hProcess, 10'000);
  }
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

HWND RunningProgram::Window() const {
  for (const HWND window : Windows()) {
    if (ClassOf(window) == L"Vaxel") return window;
  }
  return nullptr;
}

// For messages: what is on the screen.
std::string RunningProgram::Situation() const {
  if (HasEnded()) return "; the program has ended";
  std::string text = "; shown:";
  for (const HWND window : Windows()) {
    if (!IsWindowVisible(window)) continue;
    wchar_t caption[200] = L"";
    GetWindowTextW(window, caption, static_cast<int>(std::size(caption)));
    text += " [" + Narrow(ClassOf(window)) + (IsWindowEnabled(window) ? "" : ", disabled") + ": " +
            Narrow(caption);
    const ShownDialog dialog(window);
    if (dialog.IsMessageBox()) text += " | " + dialog.Message();
    text += "]";
  }
  return text;
}

HWND RunningProgram::Control(int id) const {
  const HWND control = GetDlgItem(Window(), id);
  if (!control) throw DriveFailure("no control " + std::to_string(id) + Situation());
  return control;
}

void RunningProgram::AwaitHere(std::string_view what, const std::function<bool()>& condition) const {
  try {
    Await(what, [&] {
      if (HasEnded()) throw DriveFailure("in vain for " + std::string(what));
      return condition();
    });
  } catch (const DriveFailure& failure) {
    throw DriveFailure(failure.what() + Situation());
  }
}

ShownDialog RunningProgram::AwaitDialog(const std::string& caption) const {
  std::optional<ShownDialog> found;
  AwaitHere("the dialog " + caption,
            [&] { return (found = FindDialog(process_.dwProcessId, caption)).has_value(); });
  return *found;
}

bool RunningProgram::IsBusy() const {
  const HWND window = Window();
  return !window || !IsWindowVisible(window) || !IsWindowEnabled(window);
}

// A run enables the window a little before it is over.
void RunningProgram::AwaitIdle() const {
  AwaitHere("the end of what the program does", [this] {
    if (IsBusy()) return false;
    for (auto round = 3 * Patience() / 15s; round > 0; --round) {
      Send(Window(), WM_NULL);
      std::this_thread::sleep_for(5ms);
    }
    return !IsBusy();
  });
}

void RunningProgram::CommandNumber(int number) const {
  Send(Window(), WM_COMMAND, static_cast<WPARAM>(number));
}

// The names must lie in memory of the program, which then frees them: it cannot, and so much is lost each
// time.
void RunningProgram::Drop(const std::string& file) const {
  const std::wstring names = Widen(file) + std::wstring(2, L'\0');
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.fWide = TRUE;
  std::string bytes(reinterpret_cast<const char*>(&head), sizeof head);
  bytes.append(reinterpret_cast<const char*>(names.data()), names.size() * sizeof(wchar_t));
  void* const there =
      VirtualAllocEx(process_.hProcess, nullptr, bytes.size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (!there || !WriteProcessMemory(process_.hProcess, there, bytes.data(), bytes.size(), nullptr))
    throw DriveFailure("no file can be dropped here");
  PostMessageW(Window(), WM_DROPFILES, reinterpret_cast<WPARAM>(there), 0);
}

void RunningProgram::Post(MenuId item) const {
  PostMessageW(Window(), WM_COMMAND, static_cast<WPARAM>(FirstCommandId + static_cast<int>(item)), 0);
}

ShownDialog RunningProgram::CommandWithDialog(MenuId item) const {
  Post(item);
  return AwaitDialog();
}

void RunningProgram::Close() const {
  PostMessageW(Window(), WM_CLOSE, 0, 0);
}

void RunningProgram::Key(WORD key) const {
  const HWND editor = Control(EditorId);
  PostMessageW(editor, WM_KEYDOWN, key, 1);
  PostMessageW(editor, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void RunningProgram::PressKey(WORD key) const {
  SetForegroundWindow(Window());
  SendKey(key, 0);
}

void RunningProgram::ReleaseKey(WORD key) const {
  SendKey(key, KEYEVENTF_KEYUP);
}

void RunningProgram::CtrlKey(WORD key) const {
  PressKey(VK_CONTROL);
  PressKey(key);
  ReleaseKey(key);
  ReleaseKey(VK_CONTROL);
}

std::string RunningProgram::Title() const {
  return TextOf(Window());
}

std::string RunningProgram::Text(int id) const {
  return TextOf(Control(id));
}

std::string RunningProgram::EditorText() const {
  std::string text = Text(EditorId);
  std::erase(text, '\r');
  return text;
}

void RunningProgram::SelectInEditor(int begin, int end) const {
  Send(Control(EditorId), EM_SETSEL, static_cast<WPARAM>(begin), end);
}

void RunningProgram::TypeIntoEditor(std::string_view text) const {
  for (const wchar_t unit : Widen(text)) Send(Control(EditorId), WM_CHAR, unit, 1);
}

// As pasting over everything does.
void RunningProgram::SetEditorText(const std::string& text) const {
  std::wstring wide = Widen(text);
  std::replace(wide.begin(), wide.end(), L'\n', L'\r');
  SelectInEditor(0, -1);
  Send(Control(EditorId), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

// The question and its answer lie in the memory of the program, which ends soon.
std::string RunningProgram::ToolTip(int id) const {
  struct Question {
    TTTOOLINFOW Tool;
    wchar_t Text[500];
  } question{};
  auto* const there = static_cast<Question*>(
      VirtualAllocEx(process_.hProcess, nullptr, sizeof question, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
  question.Tool.cbSize = sizeof question.Tool;
  question.Tool.uFlags = TTF_IDISHWND;
  question.Tool.hwnd = Window();
  question.Tool.uId = reinterpret_cast<UINT_PTR>(Control(id));
  question.Tool.lpszText = there->Text;
  WriteProcessMemory(process_.hProcess, there, &question, sizeof question, nullptr);
  for (const HWND window : Windows()) {
    if (ClassOf(window) == TOOLTIPS_CLASSW)
      Send(window, TTM_GETTEXTW, std::size(question.Text), reinterpret_cast<LPARAM>(&there->Tool));
  }
  ReadProcessMemory(process_.hProcess, there, &question, sizeof question, nullptr);
  return Narrow(question.Text);
}

SIZE RunningProgram::GraphicSize() const {
  RECT client{};
  GetClientRect(Control(GraphicId), &client);
  return {client.right, client.bottom};
}

std::string RunningProgram::MovePointer(int x, int y) const {
  Send(Control(GraphicId), WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
  return Text(Text2Id);
}

void RunningProgram::Resize(int width, int height) const {
  SetWindowPos(Window(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Send(Window(), WM_NULL);
}

void RunningProgram::ClickTool(int button) const {
  const HWND bar = Control(ToolBarId);
  const LRESULT size = Send(bar, TB_GETBUTTONSIZE);
  RECT frame{};
  GetWindowRect(bar, &frame);
  SetCursorPos(frame.left + LOWORD(size) * button + LOWORD(size) / 2, frame.top + HIWORD(size) / 2);
  INPUT clicks[2]{};
  for (INPUT& click : clicks) click.type = INPUT_MOUSE;
  clicks[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
  clicks[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
  if (SendInput(2, clicks, sizeof(INPUT)) != 2) throw DriveFailure("no button can be pressed here");
}

void RunningProgram::ClickRight(int areaId, int x, int y) const {
  PostMessageW(Control(areaId), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
  PostMessageW(Control(areaId), WM_RBUTTONUP, 0, MAKELPARAM(x, y));
}

void RunningProgram::PressMenuKey(int areaId) const {
  PostMessageW(Control(areaId), WM_KEYDOWN, VK_APPS, 1);
  PostMessageW(Control(areaId), WM_KEYUP, VK_APPS, static_cast<LPARAM>(0xC0000001));
}

void RunningProgram::ChooseInMenu(char letter) const {
  HWND menu = nullptr;
  AwaitHere("a menu", [&] {
    for (const HWND window : Windows()) {
      if (ClassOf(window) == L"#32768" && IsWindowVisible(window)) menu = window;
    }
    return menu != nullptr;
  });
  PostMessageW(Window(), WM_CHAR, static_cast<WPARAM>(letter), 1);
  AwaitHere("the end of the menu", [&] { return !IsWindow(menu) || !IsWindowVisible(menu); });
}

void RunningProgram::MoveToScreenOf(UINT dpi, const RECT& frame) const {
  void* const there =
      VirtualAllocEx(process_.hProcess, nullptr, sizeof frame, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  WriteProcessMemory(process_.hProcess, there, &frame, sizeof frame, nullptr);
  Send(Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(there));
}

// Where the system does not count for others, of the objects of the user interface the windows are counted
// alone.
ResourceCount RunningProgram::CountResources() const {
  ResourceCount count;
  count.GdiObjects = static_cast<int>(GetGuiResources(process_.hProcess, GR_GDIOBJECTS));
  count.UserObjects = static_cast<int>(GetGuiResources(process_.hProcess, GR_USEROBJECTS));
  if (count.GdiObjects == 0) count.GdiObjects = GdiObjectCount(process_.hProcess);
  if (count.UserObjects == 0) {
    for (const HWND window : Windows()) count.UserObjects += 1 + static_cast<int>(ChildrenOf(window).size());
  }
  count.Handles = HandleCount(process_.dwProcessId);
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(process_.hProcess, &memory, sizeof memory);
  count.Kilobytes = static_cast<int>(memory.PagefileUsage / 1024);
  return count;
}

bool RunningProgram::HasEnded() const {
  return WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0;
}

int RunningProgram::AwaitExit() {
  const auto most = static_cast<DWORD>(Patience().count());
  if (WaitForSingleObject(process_.hProcess, most) != WAIT_OBJECT_0)
    throw DriveFailure("the program does not end" + Situation());
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return static_cast<int>(code);
}

void RunningProgram::Kill() {
  TerminateProcess(process_.hProcess, 99);
  AwaitExit();
}

}  // namespace vaxel
