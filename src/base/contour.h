// The pieces of closed contours, as figures are computed, drawn and kept.
#pragma once

#include "base/point.h"

namespace vaxel {

// One piece of a closed contour: an arc of a circle, or, with a radius of 0, a corner. The end of each piece
// is joined to the start of the next, and of the last to the first, by a straight line.
struct ContourArc {
  Point Centre;
  double Radius = 0;      // not negative
  double StartAngle = 0;  // radians, 0 to the right, counter-clockwise
  double Sweep = 0;       // radians, at most a whole turn; negative: clockwise
};

}  // namespace vaxel
