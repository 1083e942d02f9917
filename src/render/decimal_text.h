// Numbers and colours as the text outputs write them.
#pragma once

#include <string>

#include "drawing/colour.h"

namespace vaxel {

// Appends the number rounded to so many decimals (0 to 6), with "." in any locale and never "-0". Fixed
// writes them all, short leaves out the zeros at their end. The number is below 1e12 in magnitude.
void AppendFixed(std::string& text, double value, int decimals);
void AppendShort(std::string& text, double value, int decimals);

// "#rrggbb".
void AppendColour(std::string& text, Colour colour);

}  // namespace vaxel
