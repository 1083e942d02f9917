#include "scale/scale_reading.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

// In the degrees by which angles are computed, which are rounded: an end of a scale beyond a turn would
// otherwise be missed.
constexpr double WholeTurn = 2 * std::numbers::pi / RadiansPerDegree;

// The angle of the same direction that is nearest to the middle of the scale.
double NearTheScale(const ScaleSupport& support, double angleDegrees) {
  const double middle = (support.StartAngle + support.EndAngle) / 2;
  return angleDegrees + WholeTurn * std::round((middle - angleDegrees) / WholeTurn);
}

// The value at a place that lies between the ends, but for what arithmetic leaves.
std::optional<double> ValueBetween(const ScaleSupport& support, double place, double start, double end) {
  constexpr double nothing = 1e-9;
  const double fraction = (place - start) / (end - start);
  if (!(fraction >= -nothing && fraction <= 1 + nothing)) return std::nullopt;
  const double value = support.ValueAtPlace(start + (end - start) * std::clamp(fraction, 0.0, 1.0));
  return std::isnan(value) ? std::nullopt : std::optional(value);
}

}  // namespace

ScaleReading ReadScaleAt(const ScaleSupport& support, Point point) {
  ScaleReading reading;
  switch (support.Kind()) {
    case SupportKind::Arc: {
      // A negative radius lies on the other side of the pivot.
      const Point seen = support.Radius < 0 ? point * -1 : point;
      const double angle = NearTheScale(support, std::atan2(seen.Y, -seen.X) / RadiansPerDegree);
      reading.AngleDegrees = angle;
      reading.Radius = std::hypot(point.X, point.Y);
      reading.Value = ValueBetween(support, angle * RadiansPerDegree, support.StartAngle * RadiansPerDegree,
                                   support.EndAngle * RadiansPerDegree);
      break;
    }
    case SupportKind::Horizontal:
      reading.Value = ValueBetween(support, point.X, support.XStart, support.XEnd);
      break;
    case SupportKind::Vertical:
      reading.Value = ValueBetween(support, point.Y, support.YStart, support.YEnd);
      break;
  }
  return reading;
}

}  // namespace vaxel
