#include "drawing/sheet_overflow.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <variant>

namespace vaxel {
namespace {

constexpr double LeastOverflow = 0.3;
// The height of most letters, in parts of the size.
constexpr double LetterHeight = 0.45;

struct Box {
  double Left = INFINITY, Right = -INFINITY, Top = INFINITY, Bottom = -INFINITY;

  void Add(const Point& point) {
    Left = std::min(Left, point.X);
    Right = std::max(Right, point.X);
    Top = std::min(Top, point.Y);
    Bottom = std::max(Bottom, point.Y);
  }
  void Grow(double by) {
    Left -= by;
    Right += by;
    Top -= by;
    Bottom += by;
  }
};

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

// The box of an operation's lines and areas, without the width of its stroke.
class BoxMaker {
 public:
  BoxMaker(const DisplayList& list, Box& box) : list_(list), box_(box) {}

  void operator()(const LineShape& line) {
    box_.Add(line.From);
    box_.Add(line.To);
  }
  void operator()(const RectangleShape& rectangle) {
    box_.Add(rectangle.Corner);
    box_.Add(rectangle.Opposite);
  }
  void operator()(const PolygonShape& polygon) {
    for (const Point& corner : list_.Corners(polygon, corners_)) box_.Add(corner);
  }
  void operator()(const ContourShape& contour) {
    for (const ContourArc& piece : list_.Pieces(contour, pieces_)) {
      AddArc(box_, piece.Centre, {piece.Radius, piece.Radius}, piece.StartAngle,
             piece.StartAngle + piece.Sweep);
    }
  }
  void operator()(const CircleShape& circle) {
    const bool isFull = circle.Form == CircleForm::Full;
    if (circle.Form == CircleForm::Pie) box_.Add(circle.Centre);
    AddArc(box_, circle.Centre, {circle.RadiusX, circle.RadiusY}, isFull ? 0 : circle.StartAngle,
           isFull ? 2 * std::numbers::pi : circle.EndAngle);
  }
  void operator()(const TextShape& text) {
    if (list_.TextOf(text).find_first_not_of(' ') == std::string::npos) return;
    const Point along = {std::cos(text.Angle), -std::sin(text.Angle)};
    const Point up = Point{-std::sin(text.Angle), -std::cos(text.Angle)} * (text.Size * LetterHeight);
    const Point end = text.Start + along * text.Length;
    for (const Point& corner : {text.Start, end, text.Start + up, end + up}) box_.Add(corner);
  }
  void operator()(const PictureShape& picture) {
    box_.Add(picture.Corner);
    box_.Add(picture.Corner + Point{picture.Width, picture.Height});
  }

 private:
  const DisplayList& list_;
  Box& box_;
  std::vector<Point> corners_;
  std::vector<ContourArc> pieces_;
};

// Most operations of large drawings are strokes within the sheet, which can be told at a glance.
bool IsStrokeWithin(const Operation& operation, const Page& page) {
  const auto* const line = std::get_if<LineShape>(&operation.Figure);
  if (!line) return false;
  const double margin = LeastOverflow - operation.Width / 2;
  const auto isWithin = [&](const Point& point) {
    return point.X >= -margin && point.X <= page.Width + margin && point.Y >= -margin &&
           point.Y <= page.Height + margin;
  };
  return isWithin(line->From) && isWithin(line->To);
}

SheetOverflow OverflowOf(const DisplayList& list, const Page& page) {
  SheetOverflow all;
  double farthest = LeastOverflow;
  Box box;
  BoxMaker maker(list, box);
  const auto take = [](double& side, double reach) {
    if (reach > LeastOverflow) side = std::max(side, reach);
  };
  for (std::size_t i = page.First; i < page.First + page.Count; ++i) {
    const Operation& operation = list.At(i);
    if (IsStrokeWithin(operation, page)) continue;
    box = {};
    std::visit(maker, operation.Figure);
    box.Grow(operation.Width / 2);
    const double left = -box.Left, right = box.Right - page.Width;
    const double top = -box.Top, bottom = box.Bottom - page.Height;
    const double reach = std::max({left, right, top, bottom});
    if (!(reach > LeastOverflow)) continue;
    take(all.Left, left);
    take(all.Right, right);
    take(all.Top, top);
    take(all.Bottom, bottom);
    if (reach <= farthest) continue;
    farthest = reach;
    all.Line = operation.SourceLine;
  }
  return all;
}

}  // namespace

std::vector<SheetOverflow> FindSheetOverflows(const DisplayList& list) {
  std::vector<SheetOverflow> overflows;
  for (std::size_t page = 0; page < list.Pages().size(); ++page) {
    SheetOverflow overflow = OverflowOf(list, list.Pages()[page]);
    overflow.Page = page;
    if (overflow.Left + overflow.Right + overflow.Top + overflow.Bottom > 0) overflows.push_back(overflow);
  }
  return overflows;
}

}  // namespace vaxel
