// Numbers as texts: for scripts, for files and for the user.
#pragma once

#include <string>

namespace vaxel {

// The number with at most 15 significant digits, as few as read back: it has "." always, no leading blank, no
// "-0", and exponents as "E+" or "E-".
std::string NumberText(double value);
// The number that this text reads back as.
double AsWritten(double value);

// The number with the fewest digits that read back as the same 32-bit value, otherwise like a double.
std::string FloatText(float value);
// The decimal number that these digits say.
double ShortestDecimal(float value);

// A length in millimetres without the remainder that computing it may leave, far below anything that can be
// drawn.
std::string CoordinateText(double value);

// The number rounded to so many decimals (0 to 9), all of them written.
std::string FixedText(double value, int decimals);

}  // namespace vaxel
