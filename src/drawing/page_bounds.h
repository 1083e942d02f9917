// How large a page must be for what is drawn on it.
#pragma once

#include <cstddef>
#include <optional>

#include "drawing/operation_box.h"

namespace vaxel {

// The box around everything on a page (from 0), strokes with their widths and texts with all the ink that
// they may have. There is none when nothing is drawn.
std::optional<Box> BoundsOf(const DisplayList& list, std::size_t page);

}  // namespace vaxel
