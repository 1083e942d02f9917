#include "app/graphic_view.h"

#include <algorithm>

namespace vaxel {

void GraphicView::ZoomAt(Point pixel, double factor) {
  const Point fixed = ToDrawing(pixel);
  Scale = std::clamp(Scale * factor, MinScale, MaxScale);
  Offset = {pixel.X - fixed.X * Scale, pixel.Y - fixed.Y * Scale};
}

}  // namespace vaxel
