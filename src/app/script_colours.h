// The colours of a script's lines in the editor.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "app/script_tokens.h"
#include "drawing/colour.h"

namespace vaxel {

// Offsets in UTF-16 units from the line's start, as the platform's editors count.
struct ColouredRange {
  std::size_t Begin = 0, End = 0;
  Colour Ink = Black;
};

// The ranges that are not in the ink of plain text, in order.
std::vector<ColouredRange> ColoursOfLine(std::string_view line, const LineContext& context = {},
                                         bool isDark = false);

// The first colour that a line names; none where it names none.
std::optional<Colour> ColourNamedIn(std::string_view line);

}  // namespace vaxel
