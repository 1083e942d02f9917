#include "scale/sector.h"

#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

constexpr double FullCircle = 2 * std::numbers::pi;
// Radians: the rounded constants must not keep a scale of 360 degrees from being a ring.
constexpr double TurnMargin = 1e-6;

ContourArc EdgeBetween(const ScaleSupport& support, double startPlace, double endPlace, double distance) {
  const double radius = support.CircleRadius(support.Radius + distance);
  const double start = support.CircleDirection(startPlace, radius);
  const double sweep = support.CircleDirection(endPlace, radius) - start;
  // A negative radius lies on the other side of the centre.
  return {{0, -support.CentreOffset},
          std::abs(radius),
          radius < 0 ? start + Pi : start,
          std::abs(sweep) > FullCircle ? std::copysign(FullCircle, sweep) : sweep};
}

}  // namespace

Sector SectorBetween(const ScaleSupport& support, double startPlace, double endPlace, double nearDistance,
                     double farDistance) {
  if (support.Kind() == SupportKind::Arc && !support.IsStraightArc()) {
    // Beyond a turn the band would cover itself.
    const double sweep = endPlace - startPlace;
    const bool isRing = std::abs(sweep) >= FullCircle - TurnMargin;
    const double end = isRing ? startPlace + std::copysign(FullCircle, sweep) : endPlace;
    return {isRing ? Sector::Form::Ring : Sector::Form::Band,
            {EdgeBetween(support, startPlace, end, nearDistance),
             EdgeBetween(support, end, startPlace, farDistance)}};
  }
  const auto corner = [&](double place, double distance) {
    return ContourArc{support.MarkAt(place, distance).Outer, 0, 0, 0};
  };
  return {Sector::Form::Straight,
          {corner(startPlace, nearDistance), corner(endPlace, nearDistance), corner(endPlace, farDistance),
           corner(startPlace, farDistance)}};
}

}  // namespace vaxel
