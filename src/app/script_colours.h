// The colours of a script's lines in the editor.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "drawing/colour.h"

namespace vaxel {

// Offsets in UTF-16 units from the line's start, as the platform's editors count.
struct ColouredRange {
  std::size_t Begin = 0, End = 0;
  Colour Ink = Black;
};

// The ranges that are not black, in order: known keywords, labels and variables that are assigned to at the
// line's start, the keywords after THEN, GOTO and THEN themselves, and comments.
std::vector<ColouredRange> ColoursOfLine(std::string_view line);

}  // namespace vaxel
