// The scales that a run has drawn, for who measures on its drawing.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "base/point.h"
#include "scale/scale_reading.h"
#include "scale/scale_support.h"

namespace vaxel {

struct DrawnScale {
  std::size_t Page = 0;  // from 0
  Point Pivot;           // from the middle of the surface, in its units
  ScaleSupport Support;  // as it was when the next one took its place
};

class DrawnScales {
 public:
  // The first ones: a drawing of more is not made for being read.
  static constexpr std::size_t Most = 1000;

  // Begins a scale, whose support changes until Keep is given it as it was in the end.
  void Begin(std::size_t page, Point pivot);
  void Keep(const ScaleSupport& support);
  void Clear();
  const std::vector<DrawnScale>& All() const { return scales_; }

 private:
  std::vector<DrawnScale> scales_;
  bool isOpen_ = false;
};

// What the nearest scale of a page says at a point, which is counted as their pivots are. One that has a
// value there comes before all that have none; there is no reading where none says anything.
struct NearReading {
  ScaleReading Reading;
  bool IsPerCent = false;  // of the value
};
std::optional<NearReading> ReadNearestScale(std::span<const DrawnScale> scales, std::size_t page,
                                            Point point);

}  // namespace vaxel
