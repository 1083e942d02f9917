// The contours of coloured bands along a scale.
#pragma once

#include <cstdint>
#include <vector>

#include "base/contour.h"
#include "scale/scale_support.h"

namespace vaxel {

// The band of a scale between two places (see ScaleSupport::MarkAt) and two distances outward of the support,
// which are multiplied by GradSide already: a closed contour, relative to the pivot. What is not finite has
// no answer.
struct Sector {
  enum class Form : std::uint8_t {
    Straight,  // four corners
    Band,      // two arcs of the circles on which the marks end, between the rays of the two places
    Ring       // the same, once around
  };
  Form Shape = Form::Straight;
  std::vector<ContourArc> Pieces;
};

Sector SectorBetween(const ScaleSupport& support, double startPlace, double endPlace, double nearDistance,
                     double farDistance);

}  // namespace vaxel
