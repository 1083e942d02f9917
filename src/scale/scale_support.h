// The support of a scale: the arc that the tip of the needle sweeps, or a straight line along which a
// pointer moves, and the law that gives each scale value its place on it.
//
// Pure arithmetic in millimetres of the drawing, relative to the needle's pivot. A scale angle is measured
// as one reads a meter: 0 to the left of the pivot, 90 degrees straight up, 180 to the right. A result that
// is not finite says that the arithmetic has no answer (a logarithm of a value that is not positive, a
// division by zero, an arc sine out of range); whoever asked reports it.
#pragma once

#include <cstdint>
#include <memory>

#include "base/point.h"
#include "scale/value_law.h"

namespace vaxel {

enum class SupportKind : std::uint8_t { Arc, Horizontal, Vertical };

// A scale value as a script writes it.
struct ScaleValue {
  double Value = 0;       // per cent of the scale, or the scale's own value where it has values of its own
  bool IsDirect = false;  // written with "°": the scale angle in degrees, or mm from the pivot on a line
};

class ScaleSupport {
 public:
  // A centre further away than this makes the arc a straight line.
  static constexpr double StraightOffset = 10000;

  double StartAngle = 0, EndAngle = 0;        // scale angles of the arc's ends, degrees
  double Radius = 0;                          // distance from the pivot to the arc along the start direction
  double XStart = 0, XEnd = 0;                // ends of a horizontal line
  double YStart = 0, YEnd = 0;                // ends of a vertical line
  double LinePos = 0;                         // y of a horizontal line, x of a vertical one
  double CentreOffset = 0;                    // how far the arc's centre lies below the pivot
  double StartDistance = 0, EndDistance = 0;  // from the arc's centre to the points at Radius on its end rays
  // The directions in which the ends of the arc, which lies on the circle through its start, are seen from
  // that centre; drawing radians.
  double StartDirection = 0, EndDirection = 0;
  float Exponent = 1;  // of the power law; 0 while the scale is logarithmic
  bool LogScale = false;
  std::int16_t Decades = 0;
  float LogStart = 1, LogEnd = 1;
  float LogSpan = 0;   // decades that the whole support spans
  float GradSide = 1;  // +1 or −1: the side of graduations and distances
  // The values at the ends of the scale, one of which may be infinite, and the law between them; without one
  // it is the power law. A logarithmic scale does not use them.
  double FirstValue = 0, LastValue = 100;
  std::shared_ptr<const ValueLaw> Law;
  bool HasOwnValues = false;  // else they are per cent

  // The kind follows from the fields: it is the first that has a length, of the arc, the horizontal line and
  // the vertical one.
  SupportKind Kind() const;
  bool IsStraightArc() const { return CentreOffset >= StraightOffset; }

  void SetArc(double startAngle, double endAngle, double radius);
  void SetHorizontal(double xStart, double xEnd, double y);
  void SetVertical(double yStart, double yEnd, double x);
  // Values v are placed at (v / 100) to the power of 1 / z, own ones at the like fraction of their range.
  void SetPowerLaw(double z);
  // A start or an end of 0 means 1; 0 decades with both 1 mean one decade.
  void SetLogarithmicLaw(std::int16_t decades, double start, double end);
  // The scale gets values of its own, which differ, or again per cent.
  void SetOwnValues(double first, double last, std::shared_ptr<const ValueLaw> law);
  void SetPerCent();
  // Whether a value has a place: a law ends where its range does, but for what arithmetic leaves.
  bool Reaches(double value) const;

  // The fraction of the support, 0 at its start, 1 at its end, not clamped.
  double ScaleFraction(double value) const;
  double LogFraction(double value) const;
  // The same for mantissa · 10^exponent.
  double LogFractionMantissa(double mantissa, int exponent) const;
  // The inverses: the value at a fraction, and at a place (see MarkAt).
  double ValueAtFraction(double fraction) const;
  double ValueAtPlace(double place) const;

  // The scale angle in radians at which a value lies on the arc.
  double ScaleAngle(ScaleValue value) const;
  double AngleAtFraction(double fraction) const;
  // The coordinate along a straight support.
  double LinePosition(ScaleValue value) const;
  double PositionAtFraction(double fraction) const;
  // The point of the arc at scale angle theta (radians) on the circle that meets the start ray at distance
  // rho from the pivot.
  Point ScalePoint(double theta, double rho) const;
  // The radius, about the arc's centre, of that circle, and the drawing direction in radians in which the ray
  // of scale angle theta (radians) meets a circle of such a radius.
  double CircleRadius(double rho) const;
  double CircleDirection(double theta, double radius) const;
  // One graduation of the given length, already multiplied by GradSide: from the support outward.
  // The place is a scale angle in radians on an arc, a coordinate along a straight support.
  struct Mark {
    Point Inner, Outer;
  };
  Mark MarkAt(double place, double length) const;
  // Drawing directions in degrees at such a place: of the needle's ray, and of the perpendicular to the
  // support (through the end of a mark of that length), both outward. On a straight support they are one.
  double RayDirection(double place) const;
  double OutwardDirection(double place, double length) const;
  // The place of a value, and of a fraction, on whichever support is current.
  double PlaceOf(ScaleValue value) const;
  double PlaceAtFraction(double fraction) const;
  // How far along the support a place lies, in millimetres from some point of it.
  double WayTo(double place) const;

 private:
  double FractionOfReading(double reading) const;
  double FractionAtPlace(double place) const;
};

// Distance from the arc's centre, which lies offset below the pivot, to the point at distance rho from the
// pivot on the ray of a scale angle in degrees.
double PivotDistance(double offset, double rho, double angleDegrees);

// It is atan(x / √(1 − x²)), and π/2 for 1. The result is not finite for −1 and beyond ±1.
double ArcSine(double x);

}  // namespace vaxel
