#include "app/rulers.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace vaxel {
namespace {

// Values beyond it could not be told from one another.
constexpr double MostSteps = 1e9;

RulerMarkLength LengthOf(double step) {
  if (std::fmod(step, 10) == 0) return RulerMarkLength::Long;
  return std::fmod(step, 5) == 0 ? RulerMarkLength::Middle : RulerMarkLength::Short;
}

}  // namespace

std::vector<RulerMark> RulerMarks(const RulerScale& scale) {
  const double exponent = std::ceil(std::log10(std::abs(scale.PerPixel) * scale.PixelsPerStep) - 1e-9);
  // Numbers of steps are whole, so that the texts have no trace of rounding.
  const double perStep = std::pow(10, exponent);
  const double first = scale.First / perStep, last = first + scale.LengthPx * scale.PerPixel / perStep;
  if (!(std::abs(first) < MostSteps && std::abs(last) < MostSteps)) return {};
  std::vector<RulerMark> marks;
  for (double step = std::ceil(std::min(first, last)); step <= std::max(first, last); ++step) {
    RulerMark mark{(step - first) * perStep / scale.PerPixel, LengthOf(step), {}};
    if (mark.Length == RulerMarkLength::Long) {
      const int decimals = std::max(0, -1 - static_cast<int>(exponent));
      mark.Text = step == 0 ? "0" : FixedText(step * perStep, decimals);
    }
    marks.push_back(std::move(mark));
  }
  return marks;
}

}  // namespace vaxel
