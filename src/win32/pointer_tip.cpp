#include "win32/pointer_tip.h"

#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include <string>
#include <utility>

#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr int Beside = 14, Widest = 480;

TTTOOLINFOW ToolOf(HWND owner) {
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
  tool.hwnd = owner;
  tool.uId = reinterpret_cast<UINT_PTR>(owner);
  return tool;
}

}  // namespace

PointerTip::PointerTip(HINSTANCE instance, HWND owner)
    : owner_(owner),
      tip_(CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, owner, nullptr, instance,
                           nullptr)) {
  TTTOOLINFOW tool = ToolOf(owner);
  tool.lpszText = const_cast<wchar_t*>(L"");
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void PointerTip::Show(std::string_view text) {
  if (text.empty()) return Hide();
  std::wstring wide = Widen(text);
  TTTOOLINFOW tool = ToolOf(owner_);
  tool.lpszText = wide.data();
  const UINT dpi = GetDpiForWindow(owner_);
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, ToPixels(Widest, dpi));
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  POINT pointer{};
  GetCursorPos(&pointer);
  const int beside = ToPixels(Beside, dpi);
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(pointer.x + beside, pointer.y + beside));
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  isShown_ = true;
}

void PointerTip::Hide() {
  if (!std::exchange(isShown_, false)) return;
  TTTOOLINFOW tool = ToolOf(owner_);
  SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace vaxel
