#include "scale/drawn_scales.h"

#include <cmath>
#include <limits>

namespace vaxel {
namespace {

// How far the point lies from the support, where the needle points to it.
double DistanceTo(const ScaleSupport& support, const ScaleReading& reading, Point point) {
  if (support.Kind() != SupportKind::Arc) {
    const bool isLevel = support.Kind() == SupportKind::Horizontal;
    return std::abs((isLevel ? point.Y : point.X) - support.LinePos);
  }
  const Point on = support.ScalePoint(reading.AngleDegrees.value_or(0) * RadiansPerDegree, support.Radius);
  return std::hypot(point.X - on.X, point.Y - on.Y);
}

}  // namespace

void DrawnScales::Begin(std::size_t page, Point pivot) {
  isOpen_ = scales_.size() < Most;
  if (isOpen_) scales_.push_back({page, pivot, {}});
}

void DrawnScales::Keep(const ScaleSupport& support) {
  if (isOpen_) scales_.back().Support = support;
  isOpen_ = false;
}

void DrawnScales::Clear() {
  scales_.clear();
  isOpen_ = false;
}

std::optional<NearReading> ReadNearestScale(std::span<const DrawnScale> scales, std::size_t page,
                                            Point point) {
  std::optional<NearReading> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (const DrawnScale& scale : scales) {
    if (scale.Page != page) continue;
    const Point fromPivot = point - scale.Pivot;
    const ScaleReading reading = ReadScaleAt(scale.Support, fromPivot);
    if (!reading.Value && !reading.AngleDegrees) continue;
    const bool hasBetter = nearest && nearest->Reading.Value && !reading.Value;
    const bool isBetter = nearest && !nearest->Reading.Value && reading.Value;
    const double distance = DistanceTo(scale.Support, reading, fromPivot);
    if (hasBetter || (!isBetter && !(distance < least))) continue;
    least = distance;
    nearest = NearReading{reading, !scale.Support.HasOwnValues};
  }
  return nearest;
}

}  // namespace vaxel
