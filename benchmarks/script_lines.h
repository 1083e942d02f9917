// Scripts of many strokes, and their way into a display list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "drawing/display_list.h"

namespace vaxel {

enum class StrokeEnds : std::uint8_t { Round, Square };

// So many lines "Trait = x0, y0, x1, y1" of plain decimal numbers; with square ends each draws a polygon of
// four corners. The same text every time.
std::string TraitScript(std::size_t lines, StrokeEnds ends);

// Ends the program when the script has a fault: what was measured would be nothing.
void RunInto(DisplayList& list, std::string script);

}  // namespace vaxel
