#include "win32/menu_bar.h"

#include "win32/control_ids.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Long names are shown by their beginning and their end.
std::wstring RecentCaption(std::size_t index, const std::string& name) {
  constexpr std::size_t mostShown = 60, beginning = 15;
  std::wstring shown = Widen(name);
  if (shown.size() > mostShown) shown.replace(beginning, shown.size() - mostShown, L"…");
  std::wstring caption = L"&" + std::to_wstring(index + 1) + L"  ";
  for (wchar_t unit : shown) caption.append(unit == L'&' ? 2 : 1, unit);
  return caption;
}

}  // namespace

MenuBar::MenuBar() : bar_(CreateMenu()) {
  std::array<HMENU, MenuItems> popups{};
  for (const MenuRow& row : MenuRows()) {
    if (row.Place == MenuId::Nowhere) continue;
    const auto index = static_cast<std::size_t>(row.Item);
    const HMENU menu = row.Place == MenuId::Bar ? bar_.get() : popups[static_cast<std::size_t>(row.Place)];
    places_[index] = {menu, static_cast<UINT>(GetMenuItemCount(menu))};
    if (IsPopup(row.Item)) {
      popups[index] = CreatePopupMenu();
      AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popups[index]), L"");
    } else {
      AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(FirstCommandId) + index, L"");
    }
    if (!row.Separator.empty()) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  }
  files_ = popups[static_cast<std::size_t>(MenuId::Mnu_Fichier)];
  fileItems_ = GetMenuItemCount(files_);
}

void MenuBar::SetCaption(MenuId item, std::string_view caption) {
  std::wstring text = Widen(caption);
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING;
  info.dwTypeData = text.data();
  const ItemPlace& place = PlaceOf(item);
  SetMenuItemInfoW(place.Menu, place.Position, TRUE, &info);
}

void MenuBar::SetChecked(MenuId item, bool isChecked) {
  const ItemPlace& place = PlaceOf(item);
  CheckMenuItem(place.Menu, place.Position,
                MF_BYPOSITION | static_cast<UINT>(isChecked ? MF_CHECKED : MF_UNCHECKED));
}

void MenuBar::SetItemEnabled(MenuId item, bool isEnabled) {
  const ItemPlace& place = PlaceOf(item);
  EnableMenuItem(place.Menu, place.Position,
                 MF_BYPOSITION | static_cast<UINT>(isEnabled ? MF_ENABLED : MF_GRAYED));
}

void MenuBar::SetRecentFiles(const std::vector<std::string>& names) {
  while (GetMenuItemCount(files_) > fileItems_) {
    DeleteMenu(files_, static_cast<UINT>(fileItems_), MF_BYPOSITION);
  }
  if (!names.empty()) AppendMenuW(files_, MF_SEPARATOR, 0, nullptr);
  for (std::size_t i = 0; i < names.size(); ++i) {
    AppendMenuW(files_, MF_STRING, static_cast<UINT_PTR>(FirstRecentId) + i,
                RecentCaption(i, names[i]).c_str());
  }
}

bool IsMenuOpen() {
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  return GetGUIThreadInfo(GetCurrentThreadId(), &thread) &&
         (thread.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0;
}

}  // namespace vaxel
