// The menus that appear at the pointer: what has a key or is often wanted there.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "app/menu_table.h"
#include "resources/text_id.h"

namespace vaxel {

enum class ContextPlace : std::uint8_t { Editor, Drawing };

struct ContextRow {
  ContextPlace Place;
  MenuId Item;
  TextId Caption = TextId::None;  // None: that of the menu bar
  bool WithCtrl = false;          // runs what the item's key runs with Ctrl
  bool EndsGroup = false;         // a line follows it
};

// One entry of such a menu, as it is at the moment.
struct ContextItem {
  MenuId Item;
  bool WithCtrl = false;
  std::string Caption{};  // with its key after a TAB
  bool IsEnabled = true;
  bool EndsGroup = false;
};

// In their order, of all places.
std::span<const ContextRow> ContextRows();

// The items come from several menus, whose letters repeat. Each keeps its letter when no item before it has
// the same; else it gets a letter of its caption, the first ones of words before the rest. When none is free,
// another item moves to a second one of its own; who finds none at all has none.
void GiveOwnLetters(std::span<ContextItem> items);

}  // namespace vaxel
