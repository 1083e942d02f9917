#include "drawing/sheet_copier.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace vaxel {
namespace {

// A contour whose arcs become parts of ellipses is copied as a polygon that is nowhere farther from it, mm.
constexpr double ChordTolerance = 0.001;

void AppendCorners(const ContourArc& piece, std::vector<Point>& corners) {
  constexpr double mostChords = 5000;
  double chords = 0;
  if (piece.Radius > ChordTolerance) {
    const double widest = 2 * std::acos(1 - ChordTolerance / piece.Radius);
    chords = std::clamp(std::ceil(std::abs(piece.Sweep) / widest), 1.0, mostChords);
  }
  for (double chord = 0; chord <= chords; ++chord) {
    const double angle = piece.StartAngle + (chords > 0 ? piece.Sweep * chord / chords : 0);
    corners.push_back(
        {piece.Centre.X + piece.Radius * std::cos(angle), piece.Centre.Y - piece.Radius * std::sin(angle)});
  }
}

}  // namespace

void SheetCopier::Copy(std::size_t page, Point shift, const SheetWatch& goOn) {
  constexpr std::size_t between = 64;
  shift_ = shift;
  const Page& copied = source_.Pages()[page];
  for (std::size_t i = 0; i < copied.Count; ++i) {
    if (goOn && i % between == 0 && !goOn()) return;
    const Operation& operation = source_.At(copied.First + i);
    std::visit([&](const auto& shape) { Add(operation, shape); }, operation.Figure);
  }
}

void SheetCopier::AddWith(Operation operation, const Shape& shape) {
  operation.Figure = shape;
  sheets_.Add(operation);
}

void SheetCopier::Add(const Operation& operation, LineShape line) {
  AddWith(operation, LineShape{Placed(line.From), Placed(line.To)});
}

void SheetCopier::Add(const Operation& operation, RectangleShape rectangle) {
  rectangle.Corner = Placed(rectangle.Corner);
  rectangle.Opposite = Placed(rectangle.Opposite);
  AddWith(operation, rectangle);
}

// The angles of an ellipse are those of the circle that it was.
void SheetCopier::Add(const Operation& operation, CircleShape circle) {
  circle.Centre = Placed(circle.Centre);
  circle.RadiusX *= factors_.X;
  circle.RadiusY *= factors_.Y;
  AddWith(operation, circle);
}

// Most texts are centred on something: so their middle stays there.
void SheetCopier::Add(const Operation& operation, TextShape text) {
  const auto along = [](double angle) { return Point{std::cos(angle), -std::sin(angle)}; };
  const Point middle = Placed(text.Start + along(text.Angle) * (text.Length / 2));
  if (factors_.X != factors_.Y)
    text.Angle = std::atan2(factors_.Y * std::sin(text.Angle), factors_.X * std::cos(text.Angle));
  text.Start = middle - along(text.Angle) * (text.Length / 2);
  sheets_.AddText(source_.TextOf(text), source_.FaceOf(text), text, operation);
}

void SheetCopier::Add(const Operation& operation, PictureShape picture) {
  const std::shared_ptr<const Picture>& content = source_.SharedPictureOf(picture);
  picture.Corner = Placed(picture.Corner);
  picture.Width *= factors_.X;
  picture.Height *= factors_.Y;
  sheets_.AddPicture(content, picture, operation);
}

void SheetCopier::Add(const Operation& operation, const PolygonShape& polygon) {
  source_.Corners(polygon, corners_);
  if (polygon.Use == PolygonUse::Stroke && corners_.size() == 4) {
    PlaceStroke();
  } else {
    for (Point& corner : corners_) corner = Placed(corner);
  }
  sheets_.AddPolygon(corners_, polygon.Inside, operation, polygon.Use);
}

// A stroke keeps its width, across the way that it takes on the sheet.
void SheetCopier::PlaceStroke() {
  const Point from = (corners_[0] + corners_[1]) * 0.5, to = (corners_[2] + corners_[3]) * 0.5;
  const Point newFrom = Placed(from), newTo = Placed(to);
  const Point way = to - from, newWay = newTo - newFrom;
  const double length = std::hypot(way.X, way.Y), newLength = std::hypot(newWay.X, newWay.Y);
  for (std::size_t i = 0; i < 4; ++i) {
    const Point end = i < 2 ? from : to, newEnd = i < 2 ? newFrom : newTo;
    Point across = corners_[i] - end;
    if (length > 0 && newLength > 0) {
      const double side = (way.X * across.Y - way.Y * across.X) / length;
      across = Point{-newWay.Y, newWay.X} * (side / newLength);
    }
    corners_[i] = newEnd + across;
  }
}

void SheetCopier::Add(const Operation& operation, const ContourShape& contour) {
  source_.Pieces(contour, pieces_);
  if (factors_.X == factors_.Y) {
    for (ContourArc& piece : pieces_) {
      piece.Centre = Placed(piece.Centre);
      piece.Radius *= factors_.X;
    }
    sheets_.AddContour(pieces_, contour.Inside, operation);
    return;
  }
  corners_.clear();
  for (const ContourArc& piece : pieces_) AppendCorners(piece, corners_);
  for (Point& corner : corners_) corner = Placed(corner);
  sheets_.AddPolygon(corners_, contour.Inside, operation);
}

}  // namespace vaxel
