// Menus at the pointer on Windows, and where they appear when keys ask for them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <vector>

#include "app/context_menu.h"

namespace vaxel {

// Shows the menu at a place of the screen until something is chosen; there is none when it was left.
std::optional<std::size_t> ChooseFromMenu(HWND owner, POINT place, const std::vector<ContextItem>& items);

// Places of the screen: below the caret of an editor that has the keys, as far as it can be seen, and the
// middle of a window.
POINT CaretOf(HWND editor);
POINT MiddleOf(HWND window);

// Puts the caret of a rich edit control where the pointer is, unless that is in what is selected: the menu is
// for what lies under the pointer.
void PutCaretAt(HWND editor, POINT place);

}  // namespace vaxel
