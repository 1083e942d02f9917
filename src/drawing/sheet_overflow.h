// What of a drawing lies beyond its sheet, where no output shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "drawing/display_list.h"

namespace vaxel {

// How far a page's operations reach beyond it, in device millimetres; 0 on a side where none does. The sides
// are those of the sheet as it is shown, mirrored or not.
struct SheetOverflow {
  std::size_t Page = 0;    // from 0
  std::uint32_t Line = 0;  // of the script: the operation that reaches farthest
  double Left = 0, Right = 0, Top = 0, Bottom = 0;
};

// One for each page with something beyond it, strokes with their width. What is less than a few tenths of a
// millimetre is nothing: a frame around the sheet has half its stroke outside. Of a text only what certainly
// has ink counts.
std::vector<SheetOverflow> FindSheetOverflows(const DisplayList& list);

}  // namespace vaxel
