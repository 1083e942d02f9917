#include "render/stroke_outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

constexpr double HalfTurn = std::numbers::pi;

// A multiple of 4, so that the outermost points of circles and of level or upright strokes are exact.
int StepsOf(double radius, double sweep, double tolerance) {
  constexpr double most = 25'000;
  const double step = radius > tolerance ? 2 * std::acos(1 - tolerance / radius) : HalfTurn / 2;
  return 4 * static_cast<int>(std::clamp(std::ceil(std::abs(sweep) / step / 4), 1.0, most));
}

}  // namespace

void Contours::Clear() {
  points_.clear();
  ends_.clear();
}

std::span<const Point> Contours::At(std::size_t index) const {
  const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
  return std::span(points_).subspan(begin, ends_[index] - begin);
}

void Contours::AddArc(Point centre, double radiusX, double radiusY, double startAngle, double sweep) {
  const int steps = StepsOf(std::max(radiusX, radiusY), sweep, tolerance_);
  // Turned step by step: a sine and a cosine for every point would take most of the time of a drawing.
  const double turnX = std::cos(sweep / steps), turnY = std::sin(sweep / steps);
  double x = std::cos(startAngle), y = std::sin(startAngle);
  for (int i = 0; i <= steps; ++i) {
    points_.push_back({centre.X + radiusX * x, centre.Y - radiusY * y});
    const double turned = x * turnX - y * turnY;
    y = x * turnY + y * turnX;
    x = turned;
  }
}

void Contours::StrokeSegment(Point from, Point to, double half) {
  const double direction = std::atan2(from.Y - to.Y, to.X - from.X);
  AddArc(to, half, half, direction - HalfTurn / 2, HalfTurn);
  AddArc(from, half, half, direction + HalfTurn / 2, HalfTurn);
  Close();
}

void Contours::StrokePath(std::span<const Point> path, bool closed, double half) {
  for (std::size_t i = 1; i < path.size(); ++i) StrokeSegment(path[i - 1], path[i], half);
  if (!path.empty() && (closed || path.size() == 1)) StrokeSegment(path.back(), path.front(), half);
}

void Contours::StrokeArc(Point centre, double radius, double startAngle, double sweep, double half) {
  // All contours run counter-clockwise, so that they add up where they overlap.
  if (sweep < 0) {
    startAngle += sweep;
    sweep = -sweep;
  }
  const double endAngle = startAngle + sweep;
  const auto at = [&](double angle) {
    return Point{centre.X + radius * std::cos(angle), centre.Y - radius * std::sin(angle)};
  };
  if (radius <= half) {
    // There is no inner side.
    const int steps = StepsOf(radius, sweep, tolerance_);
    for (int i = 0; i < steps; ++i) {
      StrokeSegment(at(startAngle + sweep * i / steps), at(startAngle + sweep * (i + 1) / steps), half);
    }
    return;
  }
  AddArc(centre, radius + half, radius + half, startAngle, sweep);
  AddArc(at(endAngle), half, half, endAngle, HalfTurn);
  AddArc(centre, radius - half, radius - half, endAngle, -sweep);
  AddArc(at(startAngle), half, half, startAngle + HalfTurn, HalfTurn);
  Close();
}

void Contours::StrokeCircle(Point centre, double radius, double half) {
  AddArc(centre, radius + half, radius + half, 0, 2 * HalfTurn);
  Close();
  if (radius <= half) return;
  AddArc(centre, radius - half, radius - half, 0, -2 * HalfTurn);
  Close();
}

}  // namespace vaxel
