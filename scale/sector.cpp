#include "scale/sector.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

ContourArc EdgeBetween(const ScaleSupport& support, double startPlace, double endPlace, double distance) {
  constexpr double wholeTurn = 2 * std::numbers::pi;
  const double rho = support.Radius + distance;
  const double radius = support.CircleRadius(rho);
  const double start = support.CircleDirection(startPlace, radius);
  const double sweep = support.CircleDirection(endPlace, radius) - start;
  // A negative radius lies on the other side of the centre.
  return {{0, -support.CentreOffset},
          std::abs(radius),
          radius < 0 ? start + Pi : start,
          std::isfinite(sweep) ? std::clamp(sweep, -wholeTurn, wholeTurn) : sweep};
}

}  // namespace

std::vector<ContourArc> SectorBetween(const ScaleSupport& support, double startPlace, double endPlace,
                                      double nearDistance, double farDistance) {
  if (support.Kind() == SupportKind::Arc && !support.IsStraightArc()) {
    return {EdgeBetween(support, startPlace, endPlace, nearDistance),
            EdgeBetween(support, endPlace, startPlace, farDistance)};
  }
  const auto corner = [&](double place, double distance) {
    return ContourArc{support.MarkAt(place, distance).Outer, 0, 0, 0};
  };
  return {corner(startPlace, nearDistance), corner(endPlace, nearDistance), corner(endPlace, farDistance),
          corner(startPlace, farDistance)};
}

}  // namespace vaxel
