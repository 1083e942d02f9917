// The pictures on the buttons of the tool bar, drawn in any size.
#pragma once

#include <cstdint>
#include <vector>

#include "app/tool_bar.h"
#include "drawing/colour.h"

namespace vaxel {

// The pixels of a square picture, 0xAARRGGBB row by row from the upper-left corner. side: above 0.
std::vector<std::uint32_t> ToolPicture(ToolIcon icon, int side, Colour ink, Colour ground);

}  // namespace vaxel
