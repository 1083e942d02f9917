#include "app/graphic_view.h"

#include <algorithm>

namespace vaxel {

void GraphicView::ZoomAt(Point pixel, double factor) {
  const Point fixed = ToDrawing(pixel);
  Scale = std::clamp(Scale * factor, MinScale, MaxScale);
  Offset = pixel - fixed * Scale;
}

PagePlace PlaceOf(const GraphicView& view, const Page& page, const GraphicArea& area) {
  const double scale = view.Scale / area.PixelMm;
  const Point pageMiddle = Point{page.Width, page.Height} * 0.5;
  return {scale, area.MiddlePx() + view.Offset - pageMiddle * scale};
}

}  // namespace vaxel
