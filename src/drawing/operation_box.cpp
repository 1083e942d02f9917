#include "drawing/operation_box.h"

#include <algorithm>
#include <numbers>
#include <string>
#include <utility>
#include <variant>

namespace vaxel {
namespace {

// How far a text reaches from its baseline and beyond its two ends, in parts of the size of its font.
struct TextReach {
  double Up, Down, Beyond;
};
// The height of most letters.
constexpr TextReach CertainReach = {0.45, 0, 0};
// The ascents and descents of common faces, and the overhang of their slanted letters.
constexpr TextReach PossibleReach = {1, 0.3, 0.15};

// The ends of an arc and those of its quarters within it; angles grow counter-clockwise, y downward.
void AddArc(Box& box, Point centre, Point radii, double start, double end) {
  constexpr double quarter = std::numbers::pi / 2;
  const auto add = [&](double angle) {
    box.Add({centre.X + radii.X * std::cos(angle), centre.Y - radii.Y * std::sin(angle)});
  };
  if (start > end) std::swap(start, end);
  add(start);
  add(end);
  const double last = std::min(end, start + 4 * quarter);
  for (double angle = std::ceil(start / quarter) * quarter; angle < last; angle += quarter) add(angle);
}

}  // namespace

void Box::Add(const Point& point) {
  Left = std::min(Left, point.X);
  Right = std::max(Right, point.X);
  Top = std::min(Top, point.Y);
  Bottom = std::max(Bottom, point.Y);
}

void Box::Unite(const Box& other) {
  Left = std::min(Left, other.Left);
  Right = std::max(Right, other.Right);
  Top = std::min(Top, other.Top);
  Bottom = std::max(Bottom, other.Bottom);
}

void Box::Grow(double by) {
  Left -= by;
  Right += by;
  Top -= by;
  Bottom += by;
}

Box BoxMaker::Of(const Operation& operation) {
  box_ = {};
  std::visit([this](const auto& shape) { Add(shape); }, operation.Figure);
  box_.Grow(operation.Width / 2);
  return box_;
}

void BoxMaker::Add(const LineShape& line) {
  box_.Add(line.From);
  box_.Add(line.To);
}

void BoxMaker::Add(const RectangleShape& rectangle) {
  box_.Add(rectangle.Corner);
  box_.Add(rectangle.Opposite);
}

void BoxMaker::Add(const PolygonShape& polygon) {
  for (const Point& corner : list_.Corners(polygon, corners_)) box_.Add(corner);
}

void BoxMaker::Add(const ContourShape& contour) {
  for (const ContourArc& piece : list_.Pieces(contour, pieces_)) {
    AddArc(box_, piece.Centre, {piece.Radius, piece.Radius}, piece.StartAngle,
           piece.StartAngle + piece.Sweep);
  }
}

void BoxMaker::Add(const CircleShape& circle) {
  const bool isFull = circle.Form == CircleForm::Full;
  if (circle.Form == CircleForm::Pie) box_.Add(circle.Centre);
  AddArc(box_, circle.Centre, {circle.RadiusX, circle.RadiusY}, isFull ? 0 : circle.StartAngle,
         isFull ? 2 * std::numbers::pi : circle.EndAngle);
}

void BoxMaker::Add(const TextShape& text) {
  if (list_.TextOf(text).find_first_not_of(' ') == std::string::npos) return;
  const TextReach& reach = ink_ == TextInk::Certain ? CertainReach : PossibleReach;
  const Point along = {std::cos(text.Angle), -std::sin(text.Angle)};
  const Point up = {-std::sin(text.Angle), -std::cos(text.Angle)};
  const Point start = text.Start - along * (text.Size * reach.Beyond);
  const Point end = text.Start + along * (text.Length + text.Size * reach.Beyond);
  for (const Point& corner : {start, end}) {
    box_.Add(corner + up * (text.Size * reach.Up));
    box_.Add(corner - up * (text.Size * reach.Down));
  }
}

void BoxMaker::Add(const PictureShape& picture) {
  box_.Add(picture.Corner);
  box_.Add(picture.Corner + Point{picture.Width, picture.Height});
}

}  // namespace vaxel
