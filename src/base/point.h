// Points, and the constants with which their positions are computed.
#pragma once

namespace vaxel {

// A point or a vector. The unit is named where one is kept.
struct Point {
  double X = 0;
  double Y = 0;

  friend bool operator==(const Point&, const Point&) = default;
  friend Point operator+(Point a, Point b) { return {a.X + b.X, a.Y + b.Y}; }
  friend Point operator-(Point a, Point b) { return {a.X - b.X, a.Y - b.Y}; }
  friend Point operator*(Point a, double factor) { return {a.X * factor, a.Y * factor}; }
};

// The constants with which all positions are computed. They are rounded on purpose: existing scripts were
// drawn with these values and must come out at the same place.
inline constexpr double RadiansPerDegree = 0.017453293;
inline constexpr double Pi = 3.14159265358979;

}  // namespace vaxel
