// From millimetres to the pixels of a device.
#pragma once

#include "base/point.h"
#include "base/units.h"

namespace vaxel {

// Where device millimetres come to lie: pixel = millimetre * PixelsPerMm + Offset.
struct DeviceTransform {
  double PixelsPerMmX = 96 / MillimetresPerInch, PixelsPerMmY = 96 / MillimetresPerInch;
  // Above 0; below it across where a renderer takes mirrored pages so.
  double OffsetX = 0, OffsetY = 0;

  Point At(Point millimetres) const {
    return {millimetres.X * PixelsPerMmX + OffsetX, millimetres.Y * PixelsPerMmY + OffsetY};
  }
  // Everything drawn that many times as large.
  DeviceTransform Enlarged(double factor) const {
    return {PixelsPerMmX * factor, PixelsPerMmY * factor, OffsetX * factor, OffsetY * factor};
  }
};

}  // namespace vaxel
