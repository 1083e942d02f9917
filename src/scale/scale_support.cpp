#include "scale/scale_support.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace vaxel {

double PivotDistance(double offset, double rho, double angleDegrees) {
  const double cosine = std::cos((angleDegrees + 90) * RadiansPerDegree);
  return std::sqrt(offset * offset + rho * rho - 2 * offset * rho * cosine);
}

double ArcSine(double x) {
  if (x == 1) return Pi / 2;
  if (x == -1) return std::numeric_limits<double>::quiet_NaN();
  return std::atan(x / std::sqrt(1 - x * x));
}

SupportKind ScaleSupport::Kind() const {
  if (EndAngle - StartAngle != 0) return SupportKind::Arc;
  return XEnd - XStart != 0 ? SupportKind::Horizontal : SupportKind::Vertical;
}

// The triangle of pivot, arc's centre and point: the direction of the needle's ray, turned by the angle
// under which pivot and centre are seen from the point. It holds also where the point lies below the centre.
double ScaleSupport::CircleDirection(double theta, double radius) const {
  if (CentreOffset == 0) return Pi - theta;
  return Pi - theta - ArcSine(CentreOffset * std::sin(theta + Pi / 2) / radius);
}

double ScaleSupport::CircleRadius(double rho) const {
  return CentreOffset == 0 ? rho : PivotDistance(CentreOffset, rho, StartAngle);
}

void ScaleSupport::SetArc(double startAngle, double endAngle, double radius) {
  StartAngle = startAngle;
  EndAngle = endAngle;
  Radius = radius;
  StartDistance = CentreOffset == 0 ? radius : PivotDistance(CentreOffset, radius, startAngle);
  EndDistance = CentreOffset == 0 ? radius : PivotDistance(CentreOffset, radius, endAngle);
  StartDirection = CircleDirection(startAngle * RadiansPerDegree, StartDistance);
  // The circle is the start's, on which the marks lie too. Where the end's ray misses it there is no mark to
  // end at, and the ray's point at the radius shows the way.
  EndDirection = CircleDirection(endAngle * RadiansPerDegree, StartDistance);
  if (!std::isfinite(EndDirection)) {
    EndDirection = CircleDirection(endAngle * RadiansPerDegree, EndDistance);
  }
  if (StartAngle > EndAngle) std::swap(StartDirection, EndDirection);
}

void ScaleSupport::SetHorizontal(double xStart, double xEnd, double y) {
  XStart = xStart;
  XEnd = xEnd;
  LinePos = y;
  StartAngle = EndAngle = YStart = YEnd = 0;
}

void ScaleSupport::SetVertical(double yStart, double yEnd, double x) {
  YStart = yStart;
  YEnd = yEnd;
  LinePos = x;
  StartAngle = EndAngle = XStart = XEnd = 0;
}

void ScaleSupport::SetPowerLaw(double z) {
  Exponent = static_cast<float>(1 / z);
  LogScale = false;
}

void ScaleSupport::SetLogarithmicLaw(std::int16_t decades, double start, double end) {
  Exponent = 0;
  Decades = decades;
  LogStart = start == 0 ? 1.0F : static_cast<float>(start);
  LogEnd = end == 0 ? 1.0F : static_cast<float>(end);
  if (LogStart == 1.0F && LogEnd == 1.0F && Decades == 0) Decades = 1;
  LogScale = true;
  const double span = (std::log(double{LogEnd}) - std::log(double{LogStart})) / std::log(10.0) + Decades;
  LogSpan = static_cast<float>(span);
}

void ScaleSupport::SetOwnValues(double first, double last, std::shared_ptr<const ValueLaw> law) {
  FirstValue = first;
  LastValue = last;
  Law = std::move(law);
  HasOwnValues = true;
}

void ScaleSupport::SetPerCent() {
  SetOwnValues(0, 100, nullptr);
  HasOwnValues = false;
}

bool ScaleSupport::Reaches(double value) const {
  if (!Law) return std::isfinite(value);
  const auto [low, high] = std::minmax(FirstValue, LastValue);
  constexpr double nothing = 1e-9;
  const double margin = std::isfinite(high - low) ? nothing * (high - low) : 0;
  return value >= low - margin && value <= high + margin;
}

double ScaleSupport::FractionOfReading(double reading) const {
  if (!Law->IsDirect()) return reading;
  return FractionAtPlace(Kind() == SupportKind::Arc ? reading * RadiansPerDegree : reading);
}

double ScaleSupport::ScaleFraction(double value) const {
  if (LogScale) return LogFraction(value);
  if (Law) return FractionOfReading(Law->ReadingOf(value));
  return std::pow((value - FirstValue) / (LastValue - FirstValue), double{Exponent});
}

double ScaleSupport::ValueAtFraction(double fraction) const {
  if (LogScale) {
    const double whole = Decades * std::log(10.0) + std::log(double{LogEnd} / double{LogStart});
    return double{LogStart} * std::exp(fraction * whole);
  }
  if (!Law) {
    return FirstValue + (LastValue - FirstValue) * std::pow(fraction, 1 / double{Exponent});
  }
  if (!Law->IsDirect()) return Law->ValueOf(fraction);
  const double place = PlaceAtFraction(fraction);
  return Law->ValueOf(Kind() == SupportKind::Arc ? place / RadiansPerDegree : place);
}

double ScaleSupport::FractionAtPlace(double place) const {
  switch (Kind()) {
    case SupportKind::Arc:
      return (place / RadiansPerDegree - StartAngle) / (EndAngle - StartAngle);
    case SupportKind::Horizontal:
      return (place - XStart) / (XEnd - XStart);
    case SupportKind::Vertical:
      break;
  }
  return (place - YStart) / (YEnd - YStart);
}

double ScaleSupport::ValueAtPlace(double place) const {
  return ValueAtFraction(FractionAtPlace(place));
}

double ScaleSupport::LogFraction(double value) const {
  return LogFractionMantissa(value, 0);
}

double ScaleSupport::LogFractionMantissa(double mantissa, int exponent) const {
  const double whole = Decades * std::log(10.0) + std::log(double{LogEnd} / double{LogStart});
  return std::log(mantissa * std::pow(10.0, exponent) / double{LogStart}) / whole;
}

double ScaleSupport::AngleAtFraction(double fraction) const {
  return (StartAngle + (EndAngle - StartAngle) * fraction) * RadiansPerDegree;
}

double ScaleSupport::ScaleAngle(ScaleValue value) const {
  return value.IsDirect ? value.Value * RadiansPerDegree : AngleAtFraction(ScaleFraction(value.Value));
}

double ScaleSupport::PositionAtFraction(double fraction) const {
  return Kind() == SupportKind::Horizontal ? XStart + (XEnd - XStart) * fraction
                                           : YStart + (YEnd - YStart) * fraction;
}

double ScaleSupport::LinePosition(ScaleValue value) const {
  return value.IsDirect ? value.Value : PositionAtFraction(ScaleFraction(value.Value));
}

double ScaleSupport::PlaceOf(ScaleValue value) const {
  return Kind() == SupportKind::Arc ? ScaleAngle(value) : LinePosition(value);
}

double ScaleSupport::PlaceAtFraction(double fraction) const {
  return Kind() == SupportKind::Arc ? AngleAtFraction(fraction) : PositionAtFraction(fraction);
}

Point ScaleSupport::ScalePoint(double theta, double rho) const {
  if (IsStraightArc()) {
    const double height = rho * std::sin(StartAngle * RadiansPerDegree);
    return {-height * std::cos(theta) / std::sin(theta), height};
  }
  if (CentreOffset == 0) return {-rho * std::cos(theta), rho * std::sin(theta)};
  const double distance = CircleRadius(rho);
  const double direction = CircleDirection(theta, distance);
  return {distance * std::cos(direction), distance * std::sin(direction) - CentreOffset};
}

double ScaleSupport::WayTo(double place) const {
  if (Kind() != SupportKind::Arc) return place;
  if (IsStraightArc()) return ScalePoint(place, Radius).X;
  const double radius = CircleRadius(Radius);
  return -radius * CircleDirection(place, radius);
}

ScaleSupport::Mark ScaleSupport::MarkAt(double place, double length) const {
  switch (Kind()) {
    case SupportKind::Arc:
      return {ScalePoint(place, Radius), ScalePoint(place, Radius + length)};
    case SupportKind::Horizontal:
      return {{place, LinePos}, {place, LinePos + length}};
    case SupportKind::Vertical:
      break;
  }
  return {{LinePos, place}, {LinePos + length, place}};
}

double ScaleSupport::RayDirection(double place) const {
  if (Kind() == SupportKind::Arc) return 180 - place / RadiansPerDegree;
  return Kind() == SupportKind::Horizontal ? 90 : 0;
}

double ScaleSupport::OutwardDirection(double place, double length) const {
  if (Kind() != SupportKind::Arc || CentreOffset == 0) return RayDirection(place);
  if (IsStraightArc()) return 90;
  const double distance = CircleRadius(Radius + length);
  return CircleDirection(place, distance) / RadiansPerDegree;
}

}  // namespace vaxel
