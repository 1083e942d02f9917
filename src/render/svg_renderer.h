// The renderer of SVG.
#pragma once

#include <string>

#include "base/byte_sink.h"
#include "render/renderer.h"

namespace vaxel {

// One page as an SVG document: its size in millimetres, a user unit of 1 mm, one element an operation in the
// order of drawing, each with the script line that drew it in data-line.
class SvgRenderer : public Renderer {
 public:
  explicit SvgRenderer(ByteSink& sink) : sink_(sink) {}

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
  void Number(double value);
  void Attribute(const char* name, double value);
  void XY(Point point);
  void Arc(double radiusX, double radiusY, bool clockwise, Point middle, Point to);
  // What all elements end with.
  void Finish(const Operation& operation, const Fill& inside);
  void Flush();

  ByteSink& sink_;
  std::string text_;
  bool isMirrored_ = false;  // the page being written
};

}  // namespace vaxel
