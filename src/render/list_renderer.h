// The renderer of the list format.
#pragma once

#include <string>

#include "base/byte_sink.h"
#include "render/renderer.h"

namespace vaxel {

// The display list as text, one operation a line, for tests and for comparing two versions of a dial. Numbers
// are device millimetres and degrees with 3 decimals, "." in any locale:
//
//   page 1  200.000 x 200.000
//   line 12  #ff0000 0.265  100.000,90.000 110.000,90.000
//
// After the kind stand the script line, the stroke's colour and width and, where the figure is filled,
// "fill" with the colour of its inside. A circle is its centre, its two radii and, for a part of it, the
// angles from which and to which it runs counter-clockwise. A text has no stroke: after its colour stand the
// start of its baseline, the baseline's angle, the size of the font, the baseline's length, the font's name
// and style, ": " and the text to the end of the line. Texts and names stand as Printable writes them.
class ListRenderer : public Renderer {
 public:
  explicit ListRenderer(ByteSink& sink) : sink_(sink) {}

  void BeginPage(const Page& page, std::size_t number) override;
  void EndPage() override;
  void Line(const Operation& operation, const LineShape& line) override;
  void Rectangle(const Operation& operation, const RectangleShape& rectangle) override;
  void Polygon(const Operation& operation, const PolygonShape& polygon,
               std::span<const Point> corners) override;
  void Contour(const Operation& operation, const ContourShape& contour,
               std::span<const ContourArc> pieces) override;
  void Circle(const Operation& operation, const CircleShape& circle) override;
  void Text(const Operation& operation, const TextShape& shape, std::string_view text,
            const FontFace& face) override;
  void Image(const Operation& operation, const PictureShape& shape, const Picture& picture) override;

 private:
  void BeginLine(const char* kind, const Operation& operation);
  void Begin(const char* kind, const Operation& operation, const Fill& inside);
  void Put(const char* before, double value);
  void Put(Point point);
  void EndLine();

  ByteSink& sink_;
  std::string text_;
};

}  // namespace vaxel
