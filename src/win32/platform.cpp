#include "win32/platform.h"

#include <windows.h>
// These need what windows.h declares.
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <array>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <utility>

#include "app/script_file.h"
#include "base/files.h"
#include "render/gdi/export.h"
#include "render/gdi/font_families.h"
#include "win32/clipboard.h"
#include "win32/input_state.h"
#include "winbase/gdi_handles.h"
#include "winbase/handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// The longest web address, with its end, that the shell takes.
constexpr DWORD LongestAddress = 2084;

// The name of a process's program; it is empty where that cannot be told.
std::wstring ImageName(HANDLE process) {
  std::wstring name(32768, L'\0');
  auto length = static_cast<DWORD>(name.size());
  if (!QueryFullProcessImageNameW(process, 0, name.data(), &length)) return {};
  name.resize(length);
  return name.substr(name.find_last_of(L'\\') + 1);
}

std::optional<OSVERSIONINFOW> SystemVersion() {
  using Query = LONG(WINAPI*)(OSVERSIONINFOW*);
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  // GetVersionEx tells programs what they were written for.
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
  const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(found));
  if (!query || query(&version) != 0) return std::nullopt;
  return version;
}

std::wstring ProductName() {
  wchar_t name[128] = L"";
  DWORD bytes = sizeof name;
  const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
                                      L"ProductName", RRF_RT_REG_SZ, nullptr, name, &bytes);
  return status == ERROR_SUCCESS && name[0] ? name : L"Windows";
}

bool Open(const std::string& program, const std::string& parameters) {
  const auto status = reinterpret_cast<INT_PTR>(
      ShellExecuteW(nullptr, nullptr, Widen(program).c_str(),
                    parameters.empty() ? nullptr : Widen(parameters).c_str(), nullptr, SW_SHOWNORMAL));
  return status > 32;
}

bool IsAsciiName(const std::string& word) {
  return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
  });
}

// Opens a page at the anchor of a word. The shell loses the anchor on the way from the name of a page to the
// browser, so the browser is started with it. The result is false where there is no anchor or no browser.
bool OpenAtWord(const std::string& page, const std::string& word) {
  if (!IsAsciiName(word)) return false;
  wchar_t browser[MAX_PATH] = L"", address[LongestAddress] = L"";
  DWORD browserLength = MAX_PATH, addressLength = LongestAddress;
  if (AssocQueryStringW(ASSOCF_NOTRUNCATE, ASSOCSTR_EXECUTABLE, L"http", nullptr, browser, &browserLength) !=
          S_OK ||
      UrlCreateFromPathW(Widen(page).c_str(), address, &addressLength, 0) != S_OK)
    return false;
  // Wine's way to the browser outside translates names of files, but no addresses of them.
  if (std::wstring_view(browser).ends_with(L"\\winebrowser.exe")) return false;
  std::string anchor = word;
  for (char& c : anchor) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return Open(Narrow(browser), "\"" + Narrow(address) + "#" + anchor + "\"");
}

}  // namespace

PlatformWin32::PlatformWin32(std::function<bool()> nudgesRightAngles)
    : nudgesRightAngles_(std::move(nudgesRightAngles)) {}

bool PlatformWin32::IsCtrlDown() {
  return IsDown(VK_CONTROL);
}

std::string PlatformWin32::SystemDescription() {
  std::wstring name = ProductName();
  const std::optional<OSVERSIONINFOW> version = SystemVersion();
  if (!version) return Narrow(name);
  // The product's name was not changed for it.
  constexpr DWORD firstBuildOf11 = 22000;
  constexpr std::wstring_view ten = L"Windows 10";
  if (version->dwBuildNumber >= firstBuildOf11 && name.starts_with(ten)) {
    name.replace(0, ten.size(), L"Windows 11");
  }
  if (version->szCSDVersion[0]) name.append(L" ").append(version->szCSDVersion);
  name += L" (" + std::to_wstring(version->dwMajorVersion) + L"." + std::to_wstring(version->dwMinorVersion) +
          L"." + std::to_wstring(version->dwBuildNumber) + L")";
  return Narrow(name);
}

std::string PlatformWin32::LanguageCode() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
  LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name, LOCALE_NAME_MAX_LENGTH, 0);
  return Narrow(name);
}

std::string PlatformWin32::Today() {
  wchar_t date[80] = L"";
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date,
                  static_cast<int>(std::size(date)), nullptr);
  return Narrow(date);
}

std::uint32_t PlatformWin32::ProcessId() {
  return GetCurrentProcessId();
}

bool PlatformWin32::IsRunning(std::uint32_t processId) {
  const UniqueProcess process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, processId));
  // One that has ended is kept as long as someone looks at it.
  if (!process || WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0) return false;
  return lstrcmpiW(ImageName(process.get()).c_str(), ImageName(GetCurrentProcess()).c_str()) == 0;
}

void PlatformWin32::SetWorkingFolder(const std::string& folder) {
  SetCurrentDirectoryW(Widen(folder).c_str());
}

std::string PlatformWin32::UserDataFolder() {
  wchar_t* found = nullptr;
  std::string folder;
  if (SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &found) == S_OK)
    folder = Narrow(found) + "\\Vaxel\\";
  CoTaskMemFree(found);
  return folder;
}

bool PlatformWin32::CanWriteIn(const std::string& folder) {
  return vaxel::CanWriteIn(folder);
}

std::string PlatformWin32::TimeForNames() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u.%02u", unsigned{now.wYear},
                unsigned{now.wMonth}, unsigned{now.wDay}, unsigned{now.wHour}, unsigned{now.wMinute});
  return text.data();
}

std::vector<std::string> PlatformWin32::FontNames() {
  return FontFamilies(UniqueDc(CreateCompatibleDC(nullptr)).get());
}

// Windows has had no viewer for such files of its own since Vista.
bool PlatformWin32::OpenHelp(const std::string& helpFile, const std::string& word) {
  wchar_t viewer[MAX_PATH] = L"";
  const DWORD found = SearchPathW(nullptr, L"winhlp32.exe", nullptr, MAX_PATH, viewer, nullptr);
  if (FileExists(helpFile) && found > 0 && found < MAX_PATH) {
    const std::string quoted = "\"" + helpFile + "\"";
    return Open(Narrow(viewer), word.empty() ? quoted : "-k " + word + " " + quoted);
  }
  // The manual has a page named after each help file, in that one's language.
  const std::string_view named = NameWithoutFolder(helpFile);
  const std::string stem(named.substr(0, named.rfind('.')));
  for (const std::string& manual : {stem, std::string("manual")}) {
    const std::string name = ProgramFolder() + "docs\\" + manual + ".html";
    if (FileExists(name)) return OpenAtWord(name, word) || Open(name, {});
  }
  return false;
}

Result<> PlatformWin32::WritePng(const DisplayList& drawing, std::size_t page, double dpi, ByteSink& sink) {
  return WriteGdiPng(drawing, page, dpi, {&decoder_, nudgesRightAngles_()}, sink);
}

Result<> PlatformWin32::WriteEmf(const DisplayList& drawing, std::size_t page, ByteSink& sink) {
  return vaxel::WriteEmf(drawing, page, {&decoder_, nudgesRightAngles_()}, sink);
}

bool PlatformWin32::CopyPicture(const std::string& emf, const std::string& png) {
  return CopyToClipboard(emf, png);
}

std::string ProgramFolder() {
  std::wstring name(32768, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return std::string(FolderOf(Narrow(name)));
}

std::string WorkingFolder() {
  std::wstring name(32768, L'\0');
  name.resize(GetCurrentDirectoryW(static_cast<DWORD>(name.size()), name.data()));
  return Narrow(name);
}

}  // namespace vaxel
