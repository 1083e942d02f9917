#include "win32/text_tip.h"

// These need what windows.h declares.
#include <commctrl.h>
#include <uxtheme.h>

#include <string>

#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr int MostWidth = 480;  // 1/96 inch; longer lines are broken

TOOLINFOW ToolOf(HWND owner) {
  TOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
  tool.hwnd = owner;
  tool.uId = reinterpret_cast<UINT_PTR>(owner);
  return tool;
}

// Black or white, whichever is easier to read on a colour; weights as the eye has them (ITU-R BT.601).
COLORREF InkOn(Colour ground) {
  const std::uint32_t light = 299 * RedOf(ground) + 587 * GreenOf(ground) + 114 * BlueOf(ground);
  return light > 140'000 ? Black : White;
}

}  // namespace

TextTip::TextTip(HWND owner)
    : owner_(owner),
      tip_(CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, owner, nullptr, nullptr,
                           nullptr)) {
  TOOLINFOW tool = ToolOf(owner);
  wchar_t nothing[] = L"";
  tool.lpszText = nothing;
  SendMessageW(tip_.get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  // A visual style would not show the ground that is set.
  SetWindowTheme(tip_.get(), L"", L"");
  usualGround_ = static_cast<COLORREF>(SendMessageW(tip_.get(), TTM_GETTIPBKCOLOR, 0, 0));
  usualInk_ = static_cast<COLORREF>(SendMessageW(tip_.get(), TTM_GETTIPTEXTCOLOR, 0, 0));
}

void TextTip::Show(std::string_view text, POINT corner, std::optional<Colour> ground) {
  if (text.empty()) return Hide();
  std::wstring wide = Widen(text);
  TOOLINFOW tool = ToolOf(owner_);
  tool.lpszText = wide.data();
  const auto send = [this](UINT message, WPARAM wParam, LPARAM lParam) {
    SendMessageW(tip_.get(), message, wParam, lParam);
  };
  send(TTM_SETMAXTIPWIDTH, 0, ToPixels(MostWidth, GetDpiForWindow(owner_)));
  send(TTM_SETTIPBKCOLOR, ground ? *ground : usualGround_, 0);
  send(TTM_SETTIPTEXTCOLOR, ground ? InkOn(*ground) : usualInk_, 0);
  send(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  send(TTM_TRACKPOSITION, 0, MAKELPARAM(corner.x, corner.y));
  send(TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  isShown_ = true;
}

void TextTip::Hide() {
  if (!isShown_) return;
  isShown_ = false;
  TOOLINFOW tool = ToolOf(owner_);
  SendMessageW(tip_.get(), TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace vaxel
