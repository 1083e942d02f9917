// Rounds numbers to the 16-bit integers in which scripts and settings hold some of them.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

namespace vaxel {

// The nearest 16-bit integer; halves go to the even neighbour. There is none when the value lies outside that
// type.
inline std::optional<std::int16_t> RoundToInt16(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) return std::nullopt;
  return static_cast<std::int16_t>(rounded);
}

}  // namespace vaxel
