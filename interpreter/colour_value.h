#pragma once

#include <optional>
#include <string_view>

#include "drawing/colour.h"
#include "interpreter/variables.h"

namespace vaxel {

// The colour that a text names, in French or English ("Rouge", "red", "Rouge/Red"), or gives as "RVB 255 128
// 0" or "RGB 255,128,0"; none for any other text.
std::optional<Colour> ColourValue(std::string_view text, const Separators& separators);

}  // namespace vaxel
