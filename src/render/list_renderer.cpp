#include "render/list_renderer.h"

#include "base/printable.h"
#include "base/units.h"
#include "render/decimal_text.h"

namespace vaxel {
namespace {

constexpr int Decimals = 3;
constexpr std::size_t FlushSize = 1U << 16;

}  // namespace

void ListRenderer::Put(const char* before, double value) {
  text_ += before;
  AppendFixed(text_, value, Decimals);
}

void ListRenderer::Put(Point point) {
  Put(" ", point.X);
  Put(",", point.Y);
}

void ListRenderer::EndLine() {
  text_ += '\n';
  if (text_.size() < FlushSize) return;
  sink_.Write(text_);
  text_.clear();
}

void ListRenderer::BeginLine(const char* kind, const Operation& operation) {
  (text_ += kind) += ' ';
  AppendFixed(text_, operation.SourceLine, 0);
  text_ += "  ";
  AppendColour(text_, operation.Ink);
}

void ListRenderer::Begin(const char* kind, const Operation& operation, const Fill& inside) {
  BeginLine(kind, operation);
  Put(" ", operation.Width);
  if (inside.Solid) {
    text_ += " fill ";
    AppendColour(text_, inside.Ink);
  }
  text_ += ' ';
}

void ListRenderer::BeginPage(const Page& page, std::size_t number) {
  text_ += "page ";
  AppendFixed(text_, static_cast<double>(number), 0);
  Put("  ", page.Width);
  Put(" x ", page.Height);
  if (page.IsMirrored) text_ += " mirrored";
  EndLine();
}

void ListRenderer::EndPage() {
  sink_.Write(text_);
  text_.clear();
}

void ListRenderer::Line(const Operation& operation, const LineShape& line) {
  Begin("line", operation, {});
  Put(line.From);
  Put(line.To);
  EndLine();
}

void ListRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  Begin("rectangle", operation, rectangle.Inside);
  Put(rectangle.Corner);
  Put(rectangle.Opposite);
  EndLine();
}

void ListRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                           std::span<const Point> corners) {
  Begin("polygon", WithExactWidth(operation, polygon), polygon.Inside);
  for (const Point& corner : corners) Put(corner);
  EndLine();
}

void ListRenderer::Contour(const Operation& operation, const ContourShape& contour,
                           std::span<const ContourArc> pieces) {
  Begin("contour", operation, contour.Inside);
  for (const ContourArc& piece : pieces) {
    text_ += ' ';
    Put(piece.Centre);
    Put(" ", piece.Radius);
    Put(" ", piece.StartAngle * DegreesPerRadian);
    Put(" ", (piece.StartAngle + piece.Sweep) * DegreesPerRadian);
  }
  EndLine();
}

void ListRenderer::Circle(const Operation& operation, const CircleShape& circle) {
  const char* kind = circle.Form == CircleForm::Full  ? "circle"
                     : circle.Form == CircleForm::Arc ? "arc"
                                                      : "pie";
  Begin(kind, operation, circle.Inside);
  Put(circle.Centre);
  Put(" ", circle.RadiusX);
  Put(" ", circle.RadiusY);
  if (circle.Form != CircleForm::Full) {
    Put(" ", circle.StartAngle * DegreesPerRadian);
    Put(" ", circle.EndAngle * DegreesPerRadian);
  }
  if (circle.Butt) text_ += " butt";
  EndLine();
}

void ListRenderer::Text(const Operation& operation, const TextShape& shape, std::string_view text,
                        const FontFace& face) {
  BeginLine("text", operation);
  text_ += ' ';
  Put(shape.Start);
  Put(" ", shape.Angle * DegreesPerRadian);
  Put(" ", shape.Size);
  Put(" ", shape.Length);
  (text_ += "  ") += Printable(face.Name);
  if (face.Bold) text_ += " bold";
  if (face.Italic) text_ += " italic";
  (text_ += ": ") += Printable(text);
  EndLine();
}

void ListRenderer::Image(const Operation& operation, const PictureShape& shape, const Picture& picture) {
  text_ += "picture ";
  AppendFixed(text_, operation.SourceLine, 0);
  text_ += ' ';
  Put(shape.Corner);
  Put(" ", shape.Width);
  Put(" ", shape.Height);
  text_ += "  ";
  AppendFixed(text_, picture.Width, 0);
  text_ += 'x';
  AppendFixed(text_, picture.Height, 0);
  (text_ += ": ") += Printable(picture.Name);
  EndLine();
}

}  // namespace vaxel
