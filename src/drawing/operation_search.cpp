#include "drawing/operation_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <variant>

namespace vaxel {
namespace {

constexpr double Far = std::numeric_limits<double>::infinity();
// An arc is looked at as straight pieces of at most this many radians.
constexpr double ArcStep = std::numbers::pi / 48;

double DistanceToSegment(Point point, Point from, Point to) {
  const Point way = to - from, seen = point - from;
  const double square = way.X * way.X + way.Y * way.Y;
  const double along = square > 0 ? (seen.X * way.X + seen.Y * way.Y) / square : 0;
  const Point nearest = from + way * std::clamp(along, 0.0, 1.0);
  return std::hypot(point.X - nearest.X, point.Y - nearest.Y);
}

struct Bounds {
  Point Least{Far, Far}, Most{-Far, -Far};

  void Add(Point point, double margin = 0) {
    Least = {std::min(Least.X, point.X - margin), std::min(Least.Y, point.Y - margin)};
    Most = {std::max(Most.X, point.X + margin), std::max(Most.Y, point.Y + margin)};
  }
  bool Holds(Point point, double margin) const {
    return point.X >= Least.X - margin && point.X <= Most.X + margin && point.Y >= Least.Y - margin &&
           point.Y <= Most.Y + margin;
  }
};

void AddArc(Point centre, Point radii, double from, double sweep, std::vector<Point>& points) {
  const auto steps = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / ArcStep)));
  for (int i = 0; i <= steps; ++i) {
    const double angle = from + sweep * i / steps;
    points.push_back({centre.X + radii.X * std::cos(angle), centre.Y - radii.Y * std::sin(angle)});
  }
}

// Texts are hit by a box of about the height of their letters.
void AddTextBox(const TextShape& text, std::vector<Point>& points) {
  constexpr double above = 0.8, below = 0.25;  // of the size of the font
  const Point along = {std::cos(text.Angle), -std::sin(text.Angle)};
  const Point up = {-std::sin(text.Angle), -std::cos(text.Angle)};
  const Point end = text.Start + along * text.Length;
  for (const Point& corner : {text.Start + up * (above * text.Size), end + up * (above * text.Size),
                              end - up * (below * text.Size), text.Start - up * (below * text.Size)}) {
    points.push_back(corner);
  }
}

void AddBox(Point corner, Point opposite, std::vector<Point>& points) {
  for (const Point& point : {corner, Point{opposite.X, corner.Y}, opposite, Point{corner.X, opposite.Y}}) {
    points.push_back(point);
  }
}

// Reads operations one after the other, with memory that is kept.
class Looker {
 public:
  explicit Looker(const DisplayList& list) : list_(list) {}

  // Whether the point may be as near as the margin to the operation; it is quick.
  bool MayReach(const Operation& operation, Point point, double margin) {
    const double reach = margin + operation.Width / 2;
    return std::visit([&](const auto& shape) { return BoundsOf(shape).Holds(point, reach); },
                      operation.Figure);
  }

  // Makes the outline of an operation the one that the others tell of.
  void Outline(const Operation& operation) {
    points_.clear();
    isClosed_ = true;
    isSolid_ = false;
    std::visit([&](const auto& shape) { Read(shape); }, operation.Figure);
  }

  const std::vector<Point>& Points() const { return points_; }
  bool IsClosed() const { return isClosed_; }
  // Whether the figure is filled, or is a box that counts as such.
  bool IsSolid() const { return isSolid_; }

  double DistanceTo(Point point) const {
    double least = Far;
    for (std::size_t i = 1; i < points_.size(); ++i) {
      least = std::min(least, DistanceToSegment(point, points_[i - 1], points_[i]));
    }
    if (!points_.empty() && (isClosed_ || points_.size() == 1)) {
      least = std::min(least, DistanceToSegment(point, points_.back(), points_.front()));
    }
    return least;
  }

  bool Surrounds(Point point) const {
    bool isInside = false;
    for (std::size_t i = 0, j = points_.size() - 1; i < points_.size(); j = i++) {
      const Point a = points_[i], b = points_[j];
      if ((a.Y > point.Y) == (b.Y > point.Y)) continue;
      if (point.X < (b.X - a.X) * (point.Y - a.Y) / (b.Y - a.Y) + a.X) isInside = !isInside;
    }
    return isInside;
  }

 private:
  static Bounds BoundsOf(const LineShape& shape) {
    Bounds bounds;
    bounds.Add(shape.From);
    bounds.Add(shape.To);
    return bounds;
  }
  static Bounds BoundsOf(const RectangleShape& shape) {
    Bounds bounds;
    bounds.Add(shape.Corner);
    bounds.Add(shape.Opposite);
    return bounds;
  }
  Bounds BoundsOf(const PolygonShape& shape) {
    Bounds bounds;
    for (const Point& corner : list_.Corners(shape, corners_)) bounds.Add(corner);
    return bounds;
  }
  Bounds BoundsOf(const ContourShape& shape) {
    Bounds bounds;
    for (const ContourArc& piece : list_.Pieces(shape, pieces_)) bounds.Add(piece.Centre, piece.Radius);
    return bounds;
  }
  static Bounds BoundsOf(const CircleShape& shape) {
    Bounds bounds;
    bounds.Add(shape.Centre - Point{shape.RadiusX, shape.RadiusY});
    bounds.Add(shape.Centre + Point{shape.RadiusX, shape.RadiusY});
    return bounds;
  }
  static Bounds BoundsOf(const TextShape& shape) {
    Bounds bounds;
    bounds.Add(shape.Start, shape.Length + shape.Size);
    return bounds;
  }
  static Bounds BoundsOf(const PictureShape& shape) {
    Bounds bounds;
    bounds.Add(shape.Corner);
    bounds.Add(shape.Corner + Point{shape.Width, shape.Height});
    return bounds;
  }

  void Read(const LineShape& shape) {
    points_ = {shape.From, shape.To};
    isClosed_ = false;
  }
  void Read(const RectangleShape& shape) {
    AddBox(shape.Corner, shape.Opposite, points_);
    isSolid_ = shape.Inside.Solid != 0;
  }
  void Read(const PolygonShape& shape) {
    const auto corners = list_.Corners(shape, corners_);
    points_.assign(corners.begin(), corners.end());
    isSolid_ = shape.Inside.Solid != 0;
  }
  void Read(const ContourShape& shape) {
    for (const ContourArc& piece : list_.Pieces(shape, pieces_)) {
      AddArc(piece.Centre, {piece.Radius, piece.Radius}, piece.StartAngle, piece.Sweep, points_);
    }
    isSolid_ = shape.Inside.Solid != 0;
  }
  void Read(const CircleShape& shape) {
    const bool isFull = shape.Form == CircleForm::Full;
    const double sweep = isFull ? 2 * std::numbers::pi : shape.EndAngle - shape.StartAngle;
    AddArc(shape.Centre, {shape.RadiusX, shape.RadiusY}, isFull ? 0 : shape.StartAngle, sweep, points_);
    if (shape.Form == CircleForm::Pie) points_.push_back(shape.Centre);
    isClosed_ = shape.Form != CircleForm::Arc;
    isSolid_ = shape.Inside.Solid != 0;
  }
  void Read(const TextShape& shape) {
    AddTextBox(shape, points_);
    isSolid_ = true;
  }
  void Read(const PictureShape& shape) {
    AddBox(shape.Corner, shape.Corner + Point{shape.Width, shape.Height}, points_);
    isSolid_ = true;
  }

  const DisplayList& list_;
  std::vector<Point> corners_, points_;
  std::vector<ContourArc> pieces_;
  bool isClosed_ = true, isSolid_ = false;
};

// Whether the inside of a figure is what someone points at: of a text, and of a stroke that is drawn as a
// figure.
bool IsMeantByItsInside(const Operation& operation) {
  const auto* const polygon = std::get_if<PolygonShape>(&operation.Figure);
  return std::holds_alternative<TextShape>(operation.Figure) ||
         (polygon && polygon->Use == PolygonUse::Stroke);
}

}  // namespace

std::optional<FoundOperation> OperationAt(const DisplayList& list, std::size_t page, Point point,
                                          double tolerance) {
  if (page >= list.Pages().size()) return std::nullopt;
  const std::size_t first = list.Pages()[page].First, count = list.Pages()[page].Count;
  Looker looker(list);
  std::optional<FoundOperation> found;
  // A stroke right at the point is at 0; a figure that merely lies there comes behind all strokes nearby.
  double best = Far;
  for (std::size_t i = first + count; i-- > first && best > 0;) {
    const Operation& operation = list.At(i);
    if (!looker.MayReach(operation, point, tolerance)) continue;
    looker.Outline(operation);
    const bool isUnder = looker.IsSolid() && looker.Surrounds(point);
    const double inside = IsMeantByItsInside(operation) ? 0 : tolerance;
    const double distance = isUnder ? inside : std::max(0.0, looker.DistanceTo(point) - operation.Width / 2);
    if (distance > tolerance) continue;
    if (distance < best) {
      best = distance;
      found = FoundOperation{i, operation.SourceLine};
    }
    if (isUnder) break;  // it hides the rest
  }
  return found;
}

std::vector<OperationOutline> OutlinesOfLine(const DisplayList& list, std::size_t page, std::uint32_t line,
                                             std::size_t most) {
  std::vector<OperationOutline> outlines;
  if (page >= list.Pages().size()) return outlines;
  const std::size_t first = list.Pages()[page].First, count = list.Pages()[page].Count;
  Looker looker(list);
  for (std::size_t i = first; i < first + count && outlines.size() < most; ++i) {
    const Operation& operation = list.At(i);
    if (operation.SourceLine != line) continue;
    looker.Outline(operation);
    outlines.push_back({looker.Points(), looker.IsClosed(), operation.Width});
  }
  return outlines;
}

}  // namespace vaxel
