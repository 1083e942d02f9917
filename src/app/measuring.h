// What is told of the place under the pointer beside its coordinates, in the language of messages.
#pragma once

#include <string>

#include "app/app_context.h"
#include "base/point.h"
#include "scale/drawn_scales.h"

namespace vaxel {

// "value 37.5 %, angle 84.2°, radius 40": without what the reading does not have. perPixel: drawing units of
// a pixel, which say how many decimals are worth telling.
std::string ReadingText(const AppContext& app, const NearReading& near, double perPixel);

// "distance 12.3, direction 45°" of a way in drawing units, y upward. A way of nothing has no direction.
std::string MeasureText(const AppContext& app, Point way, double perPixel);

}  // namespace vaxel
