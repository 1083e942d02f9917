#include "drawing/sheet_pen.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <utility>

#include "base/text.h"
#include "drawing/standard_faces.h"
#include "drawing/text_layout.h"

namespace vaxel {
namespace {

const FontFace& Face() {
  static const FontFace face{"Arial"};
  return face;
}

Operation InkStroke(double width, const Shape& shape) {
  return {width, Black, 0, shape};
}

}  // namespace

void SheetPen::Line(Point from, Point to, double width) {
  list_.Add(InkStroke(width, LineShape{from, to}));
}

void SheetPen::Rectangle(Point corner, Point opposite, double width) {
  list_.Add(InkStroke(width, RectangleShape{corner, opposite}));
}

void SheetPen::Circle(Point centre, double radius, double width) {
  CircleShape circle;
  circle.Centre = centre;
  circle.RadiusX = circle.RadiusY = radius;
  list_.Add(InkStroke(width, circle));
}

double SheetPen::LengthOf(const std::string& text) {
  const std::optional<double> known = StandardFace(Face())->Width(text);
  StandInMeasurer standIn;
  TextMeasurer& measurer = measurer_ ? *measurer_ : standIn;
  return TextSize * (known ? *known : measurer.Width(Face(), text));
}

void SheetPen::Text(Point point, At at, std::string text, bool isTurned, double most) {
  text = DrawableText(text);
  for (std::size_t bytes = text.size(); bytes > 0 && LengthOf(text) > most;) {
    bytes = bytes > 200 ? 200 : bytes - 1;
    text = Shorten(text, bytes);
  }
  if (text.empty() || LengthOf(text) > most) return;
  TextShape shape;
  shape.Size = TextSize;
  shape.Length = LengthOf(text);
  shape.Angle = isTurned ? std::numbers::pi / 2 : 0;
  const double back = at == At::Start ? 0 : at == At::Middle ? shape.Length / 2 : shape.Length;
  shape.Start = point - (isTurned ? Point{0, -back} : Point{back, 0});
  list_.AddText(std::move(text), Face(), shape, {0, Black, 0, {}});
}

}  // namespace vaxel
