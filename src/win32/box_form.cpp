#include "win32/box_form.h"

#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>

#include "win32/dialog_ids.h"
#include "win32/input_state.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Nobody reads on, and a control takes seconds for a million characters.
constexpr std::size_t LongestShown = 200000;
constexpr WPARAM CtrlC = 3;  // as a character

HICON IconOf(UINT icon) {
  const auto* const name = icon == MB_ICONERROR      ? IDI_ERROR
                           : icon == MB_ICONQUESTION ? IDI_QUESTION
                                                     : IDI_INFORMATION;
  return LoadIconW(nullptr, name);
}

void CopyToClipboard(HWND window, const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (!memory) return;
  if (void* const place = GlobalLock(memory)) {
    std::memcpy(place, text.c_str(), bytes);
    GlobalUnlock(memory);
  }
  bool isTaken = false;
  if (OpenClipboard(window)) {
    isTaken = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
  }
  if (!isTaken) GlobalFree(memory);
}

// A part that was selected is what the user wants, in a text that scrolls.
bool HasSelection(HWND control) {
  DWORD first = 0, last = 0;
  SendMessageW(control, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
  return first != last;
}

LRESULT CALLBACK CopyingControl(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR text) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(control, CopyingControl, 0);
  const bool isKey = message == WM_KEYDOWN && IsDown(VK_CONTROL) && (wParam == 'C' || wParam == VK_INSERT);
  const bool isCharacter = message == WM_CHAR && wParam == CtrlC;
  if ((isKey || isCharacter) && !HasSelection(control)) {
    if (isKey) CopyToClipboard(control, *reinterpret_cast<const std::wstring*>(text));
    return 0;
  }
  return DefSubclassProc(control, message, wParam, lParam);
}

}  // namespace

std::vector<ButtonSpec> ButtonsOf(const std::vector<int>& ids, const ButtonTexts& texts) {
  std::vector<ButtonSpec> buttons;
  for (const int id : ids) {
    const std::string& text = id == IDOK    ? texts.Ok
                              : id == IDYES ? texts.Yes
                              : id == IDNO  ? texts.No
                                            : texts.Cancel;
    buttons.push_back({id, ControlText(text)});
  }
  return buttons;
}

DialogForm BoxForm(const Box& box, const ButtonTexts& texts, const DialogFont& font) {
  // The form may be copied; the controls know where the text is.
  const auto whole = std::make_shared<const std::wstring>(ControlText(box.Text));
  std::wstring shown = *whole;
  if (shown.size() > LongestShown) shown.replace(LongestShown, std::wstring::npos, L"…");
  DialogBuilder builder(font, ControlText(box.Title), 0);
  builder.AddPicture(IDC_PICTURE);
  builder.AddText(IDC_PROMPT, shown);
  builder.AddButtons(ButtonsOf(box.Buttons, texts), box.Default);
  DialogActions actions;
  actions.OnInit = [whole, icon = box.Icon, buttons = box.Buttons, focus = box.Default](HWND window) {
    SendDlgItemMessageW(window, IDC_PICTURE, STM_SETICON, reinterpret_cast<WPARAM>(IconOf(icon)), 0);
    std::vector<int> controls = buttons;
    controls.push_back(IDC_PROMPT);
    for (const int id : controls) {
      SetWindowSubclass(GetDlgItem(window, id), CopyingControl, 0, reinterpret_cast<DWORD_PTR>(whole.get()));
    }
    MessageBeep(icon);
    return GetDlgItem(window, focus);
  };
  actions.OnPressed = [buttons = box.Buttons](HWND, int id) {
    return id == IDCANCEL || std::find(buttons.begin(), buttons.end(), id) != buttons.end();
  };
  return {builder.Finish(), actions};
}

}  // namespace vaxel
