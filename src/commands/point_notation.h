// How commands read points.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/point.h"
#include "interpreter/parameters.h"
#include "interpreter/run_context.h"

namespace vaxel {

// What an empty coordinate means.
enum class EmptyCoordinate : std::uint8_t { Fault, Reference };

// The point that the parameters n and n + 1 give: "x[R], y[R]", R meaning relative to the reference, or
// "Direction°, Length" from the reference, 0° to the right, counter-clockwise. Anything else is a fault.
Point ReadPoint(const Parameters& parameters, std::size_t n, Point reference,
                EmptyCoordinate empty = EmptyCoordinate::Fault);

// The point that the parameters n and n + 1 give from the current point, whose coordinates stand for empty
// ones. It is in surface coordinates.
Point ReadPlace(const RunContext& run, const Parameters& parameters, std::size_t n);

// Such a point from the parameters 1 and 2, and one from 3 and 4 that is counted from it in the same way.
struct TwoPlaces {
  Point First, Second;
};
TwoPlaces ReadTwoPlaces(const RunContext& run, const Parameters& parameters);

}  // namespace vaxel
