// The menus of the main window on Windows.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/menu_table.h"
#include "winbase/handles.h"

namespace vaxel {

// The menus of the table, and the recent files at the end of the first one. The window that has it must give
// it up before it ends.
class MenuBar {
 public:
  MenuBar();

  HMENU Handle() const { return bar_.get(); }
  void SetCaption(MenuId item, std::string_view caption);
  void SetChecked(MenuId item, bool isChecked);
  void SetItemEnabled(MenuId item, bool isEnabled);
  void SetRecentFiles(const std::vector<std::string>& names);

 private:
  struct ItemPlace {
    HMENU Menu = nullptr;
    UINT Position = 0;
  };
  const ItemPlace& PlaceOf(MenuId item) const { return places_[static_cast<std::size_t>(item)]; }

  UniqueMenu bar_;
  HMENU files_ = nullptr;
  int fileItems_ = 0;  // without the recent ones
  std::array<ItemPlace, MenuItems> places_{};
};

// Whether one of the program's menus is open, the one at the pointer too. Resting on what it covers means
// nothing.
bool IsMenuOpen();

}  // namespace vaxel
