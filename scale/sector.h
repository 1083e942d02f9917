#pragma once

#include <vector>

#include "geometry/contour.h"
#include "scale/scale_support.h"

namespace vaxel {

// The band of a scale between two places (see ScaleSupport::MarkAt) and two distances outward of the support,
// which are multiplied by GradSide already: a closed contour, relative to the pivot. On an arc its edges are
// arcs of the circles on which the marks end, and its ends the rays of the two places; elsewhere it has four
// corners. What is not finite has no answer.
std::vector<ContourArc> SectorBetween(const ScaleSupport& support, double startPlace, double endPlace,
                                      double nearDistance, double farDistance);

}  // namespace vaxel
