// How soon the real program's editor answers. Times are measured, not asserted, so nothing runs this by
// itself:
//
//   scripts/wine-with-printer build/windows/bin/program_tests.exe --gtest_also_run_disabled_tests
//     --gtest_filter=*Latency*
#include <windows.h>
// These need what windows.h declares.
#include <richedit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "tests/win32/program_fixture.h"

namespace vaxel {
namespace {

using Clock = std::chrono::steady_clock;

double MsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void TellMs(const char* what, double ms) {
  std::printf("%-40s %8.1f ms\n", what, ms);
  std::fflush(stdout);
}

// What is asked for takes its time from the program.
void WaitUntil(const std::function<bool()>& condition, DWORD pauseMs) {
  const auto start = Clock::now();
  while (!condition() && MsSince(start) < 120'000) Sleep(pauseMs);
}

// Each key is handled wholly before the call comes back; what it has caused beyond that comes in the pause.
void TypeKeys(HWND editor, const char* what, const std::wstring& keys, DWORD pauseMs) {
  std::vector<double> times;
  for (const wchar_t key : keys) {
    const auto start = Clock::now();
    SendMessageW(editor, key == L'\r' ? WM_KEYDOWN : WM_CHAR, key, 1);
    times.push_back(MsSince(start));
    constexpr double stall = 1000;
    if (times.back() > stall) std::printf("key %zu took %.0f ms\n", times.size(), times.back());
    Sleep(pauseMs);
  }
  std::ranges::sort(times);
  std::printf("%-40s %8.1f ms, worst of %zu: %.1f ms\n", what, times[times.size() / 2], times.size(),
              times.back());
  std::fflush(stdout);
}

std::string ScriptOf(int lines) {
  std::string script = "Stop\r\n";
  for (int line = 2; line < lines; ++line)
    script += line % 3 == 0 ? "Trait = 0, 0, 10, 20, Rouge\r\n" : "%Rayon = 40 ' line\r\n";
  return script + "' the end";
}

class EditControl : public testing::TestWithParam<int> {};
class ProgramLatency : public ProgramTest, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Lines, EditControl, testing::Values(5'000, 50'000));
INSTANTIATE_TEST_SUITE_P(Lines, ProgramLatency, testing::Values(5'000, 50'000));

// What the system's control takes by itself for the same text, on which the program cannot be sooner.
TEST_P(EditControl, DISABLED_Latency) {
  ASSERT_TRUE(LoadLibraryW(L"Msftedit.dll"));
  const HWND window = CreateWindowExW(0, L"RICHEDIT50W", L"",
                                      WS_POPUP | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                                          ES_AUTOHSCROLL | ES_AUTOVSCROLL | ES_DISABLENOSCROLL,
                                      0, 0, 500, 700, nullptr, nullptr, nullptr, nullptr);
  SendMessageW(window, EM_SETTARGETDEVICE, 0, 1);
  SendMessageW(window, EM_EXLIMITTEXT, 0, 1 << 28);
  const std::string script = ScriptOf(GetParam());
  const auto start = Clock::now();
  SetWindowTextW(window, std::wstring(script.begin(), script.end()).c_str());
  std::printf("%d lines\n", GetParam());
  TellMs("whole text in a control at once", MsSince(start));
  SendMessageW(window, EM_SETSEL, 0, 0);
  TypeKeys(window, "key of a comment, control alone", L"' abcdefghij klmnopqrst", 20);
  DestroyWindow(window);
}

TEST_P(ProgramLatency, DISABLED_InALongScript) {
  folder_.Write("dial.dat", ScriptOf(GetParam()));
  folder_.Write("Vaxel.cfg", SettingsWith("English", folder_.NameOf("dial.dat")));
  std::printf("%d lines\n", GetParam());
  const auto start = Clock::now();
  program_.emplace(folder_);
  WaitUntil([this] { return program_->Window() && IsWindowVisible(program_->Window()); }, 1);
  const HWND editor = program_->Control(EditorId);
  WaitUntil([this] { return !program_->EditorText().empty(); }, 1);
  TellMs("first lines", MsSince(start));
  WaitUntil([this, editor] { return SendMessageW(editor, EM_GETLINECOUNT, 0, 0) >= GetParam(); }, 500);
  TellMs("whole text in the control", MsSince(start));
  program_->SelectInEditor(0, 0);
  TypeKeys(editor, "key of a comment", L"' abcdefghij klmnopqrst", 20);
  TypeKeys(editor, "key of a keyword, with offers", L"\rCercle", 20);
  TypeKeys(editor, "key, the copy being written meanwhile", std::wstring(150, L'x'), 100);
  const auto saving = Clock::now();
  program_->Command(MenuId::Mnu_EnregistrerS);
  TellMs("saving", MsSince(saving));
  EndUnasked();
}

}  // namespace
}  // namespace vaxel
