// The renderer of PDF and PNG.
#pragma once

#include <cairo.h>

#include <memory>

#include "render/cairo/pictures.h"
#include "render/cairo/text.h"
#include "render/renderer.h"

namespace vaxel {

// Draws pages on a Cairo context whose unit is a millimetre. Where the resolution is so high that Cairo
// cannot count to the end of a figure, a line is cut, a polygon bent and a circle left out far outside the
// page.
class CairoRenderer : public Renderer {
 public:
  // Both must outlive the renderer; without a decoder there can be no pictures. Thinner strokes are widened
  // to leastWidth, mm.
  CairoRenderer(cairo_t* context, PictureDecoder* decoder, double leastWidth = 0);

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

  // What has come of the drawing so far.
  WriteResult Written() const;

 private:
  void Mirror();
  void SetInk(Colour colour);
  void SetEnds(cairo_line_cap_t ends, cairo_line_join_t joins);
  void Paint(const Operation& operation, const Fill& inside);

  cairo_t* context_;
  double leastWidth_;
  double pageWidth_ = 0;
  bool isMirrored_ = false;           // the page being drawn
  double reach_;                      // mm from the origin
  std::unique_ptr<CairoText> texts_;  // made for the first text
  CairoPictures pictures_;
  Result<> outcome_;
};

}  // namespace vaxel
