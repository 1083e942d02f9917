// Constants between units of length and of angle.
#pragma once

#include <numbers>

namespace vaxel {

inline constexpr double MillimetresPerInch = 25.4;

// This constant is exact, for what outputs write: positions are computed with the rounded constants of
// base/point.h.
inline constexpr double DegreesPerRadian = 180 / std::numbers::pi;

}  // namespace vaxel
