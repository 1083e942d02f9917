// Words for what a drawing has beyond its sheet.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/display_list.h"
#include "resources/string_table.h"

namespace vaxel {

struct SheetNotice {
  std::uint32_t LineNumber = 0;  // of the main script
  std::string Text;
};

// A notice for each page with something beyond it, in the language with this base: how many millimetres on
// which sides.
std::vector<SheetNotice> SheetNotices(const DisplayList& list, const StringTable& strings, int languageBase);

}  // namespace vaxel
