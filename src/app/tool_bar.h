// The tool bar: which commands stand in it, and what its buttons say of themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "app/menu_table.h"
#include "resources/text_id.h"

namespace vaxel {

struct AppContext;

enum class ToolIcon : std::uint8_t { Run, Stop, Fit, Print, Export };

inline constexpr std::size_t ToolIcons = 5;

struct ToolRow {
  ToolIcon Icon;
  MenuId Item;                 // Nowhere for the end of a run, which is no command
  TextId Text = TextId::None;  // None: the caption of the item
};

// From left to right.
std::span<const ToolRow> ToolRows();
// What is shown when the pointer rests on the button, with the key: "Print (Ctrl+P)".
std::string ToolText(const AppContext& app, const ToolRow& row);

}  // namespace vaxel
