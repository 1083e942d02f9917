// Colours between their names in a script and their numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "drawing/colour.h"
#include "interpreter/variables.h"

namespace vaxel {

// The colour that a text names, in French or English ("Rouge", "red", "Rouge/Red"), or gives as "RVB 255 128
// 0" or "RGB 255,128,0". Any other text gives none.
std::optional<Colour> ColourValue(std::string_view text, const Separators& separators);

// The colour as a script says it: its French name when it has one, else "RVB 255 128 0".
std::string ColourText(Colour colour);

}  // namespace vaxel
