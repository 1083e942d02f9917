// What a scale says at a point, for who measures on a drawing.
#pragma once

#include <optional>

#include "base/point.h"
#include "scale/scale_support.h"

namespace vaxel {

struct ScaleReading {
  // On an arc: the scale angle of the needle that points there, in degrees, and the distance from the pivot.
  std::optional<double> AngleDegrees;
  std::optional<double> Radius;
  // What stands at the place that the needle, or the pointer, then shows; none beyond the ends of the scale.
  std::optional<double> Value;
};

// The point is counted from the pivot, in the units of the support.
ScaleReading ReadScaleAt(const ScaleSupport& support, Point point);

}  // namespace vaxel
