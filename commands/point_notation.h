#pragma once

#include <cstddef>
#include <cstdint>

#include "geometry/point.h"
#include "interpreter/parameters.h"

namespace vaxel {

// What an empty coordinate means.
enum class EmptyCoordinate : std::uint8_t { Fault, Reference };

// The point that the parameters n and n + 1 give: "x[R], y[R]", R meaning relative to the reference, or
// "Direction°, Length" from the reference, 0° to the right, counter-clockwise. A fault for anything else.
Point ReadPoint(const Parameters& parameters, std::size_t n, Point reference,
                EmptyCoordinate empty = EmptyCoordinate::Fault);

}  // namespace vaxel
