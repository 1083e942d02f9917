#include "win32/theme.h"

#include "winbase/handles.h"
#include "winbase/safe_process.h"

namespace vaxel {
namespace {

constexpr DWORD DarkFrameAttribute = 20;  // since Windows 10 of 2020

bool HasHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// Whether the user wants programs to be dark; systems that know no such wish have no value.
bool WantsDark() {
  DWORD usesLight = 1, bytes = sizeof usesLight;
  RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
               L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &usesLight, &bytes);
  return usesLight == 0;
}

bool IsDarkColour(COLORREF colour) {
  return 2 * GetRValue(colour) + 5 * GetGValue(colour) + GetBValue(colour) < 8 * 128;
}

// A third of the way from one colour to the other.
COLORREF Towards(COLORREF from, COLORREF to) {
  const auto mean = [](int a, int b) { return static_cast<BYTE>((2 * a + b) / 3); };
  return RGB(mean(GetRValue(from), GetRValue(to)), mean(GetGValue(from), GetGValue(to)),
             mean(GetBValue(from), GetBValue(to)));
}

Theme SystemColours() {
  Theme theme{};
  theme.Window = GetSysColor(COLOR_3DFACE);
  theme.Text = GetSysColor(COLOR_BTNTEXT);
  theme.GreyText = GetSysColor(COLOR_GRAYTEXT);
  theme.Field = GetSysColor(COLOR_WINDOW);
  theme.FieldText = GetSysColor(COLOR_WINDOWTEXT);
  theme.Line = GetSysColor(COLOR_3DSHADOW);
  theme.Hot = GetSysColor(COLOR_HIGHLIGHT);
  theme.HotText = GetSysColor(COLOR_HIGHLIGHTTEXT);
  theme.IsDark = IsDarkColour(theme.Field);
  return theme;
}

Theme DarkColours() {
  Theme theme{};
  theme.Window = RGB(43, 43, 43);
  theme.Text = RGB(235, 235, 235);
  theme.GreyText = RGB(125, 125, 125);
  theme.Field = RGB(30, 30, 30);
  theme.FieldText = RGB(222, 222, 222);
  theme.Line = RGB(100, 100, 100);
  theme.Hot = RGB(75, 75, 75);
  theme.HotText = theme.Text;
  theme.IsDark = true;
  return theme;
}

}  // namespace

Theme SystemTheme() {
  Theme theme = SystemColours();
  if (HasHighContrast()) {
    theme.IsHighContrast = true;
    theme.Line = theme.Text;
    return theme;
  }
  if (WantsDark()) return DarkColours();
  theme.Hot = Towards(theme.Window, theme.Hot);
  theme.HotText = theme.Text;
  return theme;
}

bool MayChangeTheme(UINT message) {
  return message == WM_SETTINGCHANGE || message == WM_SYSCOLORCHANGE || message == WM_THEMECHANGED;
}

void DarkenFrame(HWND window, bool isDark) {
  using Setter = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
  const UniqueLibrary library = LoadSystemLibrary(L"dwmapi.dll");
  if (!library) return;
  const FARPROC found = GetProcAddress(library.get(), "DwmSetWindowAttribute");
  const auto set = reinterpret_cast<Setter>(reinterpret_cast<void*>(found));
  const BOOL value = isDark ? TRUE : FALSE;
  if (set) set(window, DarkFrameAttribute, &value, sizeof value);
}

}  // namespace vaxel
