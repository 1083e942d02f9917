// The outlines of strokes with round ends and joins, to be filled.
// Lengths are in one unit, that of the points; y runs downward, angles are radians, counter-clockwise as the
// reader sees them.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "base/point.h"
#include "drawing/display_list.h"

namespace vaxel {

// Polygons that are filled together, by the non-zero rule. Kept for their memory.
class Contours {
 public:
  // How far the straight sides that stand for curves may lie from them; above 0.
  void SetTolerance(double tolerance) { tolerance_ = tolerance; }

  void Clear();
  std::size_t Count() const { return ends_.size(); }
  std::span<const Point> At(std::size_t index) const;

  // Points of the polygon being made, which Close ends.
  void Add(Point point) { points_.push_back(point); }
  void AddArc(Point centre, double radiusX, double radiusY, double startAngle, double sweep);
  void Close() { ends_.push_back(points_.size()); }

  // Strokes of twice this half width.
  void StrokeSegment(Point from, Point to, double half);
  // The segments between the points, and when it is closed the one from the last to the first.
  void StrokePath(std::span<const Point> path, bool closed, double half);
  // sweep: at most a whole turn.
  void StrokeArc(Point centre, double radius, double startAngle, double sweep, double half);
  void StrokeCircle(Point centre, double radius, double half);

 private:
  double tolerance_ = 0.01;
  std::vector<Point> points_;
  std::vector<std::size_t> ends_;
};

}  // namespace vaxel
