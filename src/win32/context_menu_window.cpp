#include "win32/context_menu_window.h"

#include <windows.h>
// The next one needs what windows.h declares.
#include <richedit.h>

#include <algorithm>

#include "winbase/handles.h"
#include "winbase/wide_text.h"

namespace vaxel {

std::optional<std::size_t> ChooseFromMenu(HWND owner, POINT place, const std::vector<ContextItem>& items) {
  const UniqueMenu menu(CreatePopupMenu());
  for (std::size_t i = 0; i < items.size(); ++i) {
    // 0 is no choice.
    AppendMenuW(menu.get(), static_cast<UINT>(items[i].IsEnabled ? MF_STRING : MF_STRING | MF_GRAYED), i + 1,
                Widen(items[i].Caption).c_str());
    if (items[i].EndsGroup && i + 1 < items.size()) AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
  }
  const auto chosen = static_cast<std::size_t>(TrackPopupMenuEx(
      menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_NONOTIFY, place.x, place.y, owner, nullptr));
  if (chosen == 0) return std::nullopt;
  return chosen - 1;
}

POINT CaretOf(HWND editor) {
  POINT place{};
  RECT client{};
  CHARRANGE selection{};
  SendMessageW(editor, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  SendMessageW(editor, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), selection.cpMax);
  GetClientRect(editor, &client);
  place.x = std::clamp<LONG>(place.x, 0, std::max(0L, client.right - 1));
  place.y = std::clamp<LONG>(place.y, 0, std::max(0L, client.bottom - 1));
  ClientToScreen(editor, &place);
  return place;
}

POINT MiddleOf(HWND window) {
  RECT box{};
  GetWindowRect(window, &box);
  return {(box.left + box.right) / 2, (box.top + box.bottom) / 2};
}

void PutCaretAt(HWND editor, POINT place) {
  ScreenToClient(editor, &place);
  const POINTL pixel = {place.x, place.y};
  const auto at =
      static_cast<LONG>(SendMessageW(editor, EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&pixel)));
  CHARRANGE selection{};
  SendMessageW(editor, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  if (at < 0 || (at >= selection.cpMin && at <= selection.cpMax)) return;
  selection = {at, at};
  SendMessageW(editor, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection));
}

}  // namespace vaxel
