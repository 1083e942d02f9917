#pragma once

#include <string>

namespace vaxel {

// The number with at most 15 significant digits, as few as read back: "." always, no leading blank, no
// "-0", exponents as "E+" or "E-".
std::string NumberText(double value);

// The number rounded to so many decimals (0 to 9), all of them written.
std::string FixedText(double value, int decimals);

}  // namespace vaxel
