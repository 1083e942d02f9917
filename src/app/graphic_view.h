// How the window shows the drawing: enlarged and moved without running the script again.
#pragma once

#include "base/point.h"

namespace vaxel {

struct GraphicView {
  static constexpr double MinScale = 0.05, MaxScale = 200;

  // A pixel of the drawing as the run made it lies at Offset + Scale * pixel in the graphic area.
  double Scale = 1;
  Point Offset;

  bool IsDefault() const { return Scale == 1 && Offset.X == 0 && Offset.Y == 0; }
  Point ToDrawing(Point pixel) const { return {(pixel.X - Offset.X) / Scale, (pixel.Y - Offset.Y) / Scale}; }
  // Enlarges by the factor; what is at the pixel stays there.
  void ZoomAt(Point pixel, double factor);
  void Move(Point byPixels) { Offset = Offset + byPixels; }
};

}  // namespace vaxel
