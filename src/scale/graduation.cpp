#include "scale/graduation.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "base/rounding.h"

namespace vaxel {

LinearGraduation::LinearGraduation(const ScaleSupport& support, double count, double first, double last)
    : support_(support), gradCount_(count), gradLast_(std::trunc(last == 0 ? count : last)) {
  if (gradCount_ == 0) gradCount_ = 1;
  gradStep_ = (support.EndAngle - support.StartAngle) / std::pow(gradCount_, double{support.Exponent});
  const auto before = RoundToInt16(first - 1);
  startInRange_ = before.has_value();
  gradIndex_ = before.value_or(0);
}

StepResult LinearGraduation::Next() {
  if (!startInRange_ || gradIndex_ == INT16_MAX) return StepResult::Overflow;
  ++gradIndex_;
  return gradIndex_ <= gradLast_ ? StepResult::Mark : StepResult::End;
}

double LinearGraduation::Place() const {
  if (support_.Law) {
    const double part = gradIndex_ / gradCount_;
    return support_.PlaceOf({support_.FirstValue + (support_.LastValue - support_.FirstValue) * part});
  }
  const double exponent = double{support_.Exponent};
  if (support_.Kind() == SupportKind::Arc) {
    return (support_.StartAngle + gradStep_ * std::pow(gradIndex_, exponent)) * RadiansPerDegree;
  }
  return support_.PositionAtFraction(std::pow(gradIndex_ / gradCount_, exponent));
}

DecimalSplit SplitDecimal(double value) {
  int exponent = 0;
  for (; value >= 10; ++exponent) value /= 10;
  for (; value < 1; --exponent) value *= 10;
  // In single precision a mantissa just below 10 becomes 10.
  const float mantissa = static_cast<float>(value);
  return mantissa >= 10 ? DecimalSplit{1, exponent + 1} : DecimalSplit{mantissa, exponent};
}

LogGraduation::LogGraduation(const ScaleSupport& support, const LogStepping& stepping, double first,
                             double last)
    : support_(support), stepping_(stepping), current_(SplitDecimal(first)), last_(SplitDecimal(last)) {
  const double interval = double{stepping.LogInterval};
  const bool fromDecadeStart = current_.Mantissa == 1 && interval > 1;
  const double reach = double{current_.Mantissa} + (fromDecadeStart ? interval - 1 : interval) - 0.00001;
  const double multiple = std::trunc(reach / interval) * interval;
  current_.Mantissa = multiple == 0 ? 1.0F : static_cast<float>(multiple);
}

StepResult LogGraduation::Next() {
  const float rangeEnd = std::abs(stepping_.LogRangeEnd);
  while (!done_) {
    current_ = NextCandidate();
    if (current_.Exponent > last_.Exponent ||
        (current_.Exponent == last_.Exponent && current_.Mantissa >= last_.Mantissa)) {
      done_ = true;
      const bool isLast = current_.Exponent == last_.Exponent && current_.Mantissa == last_.Mantissa;
      return isLast ? StepResult::Mark : StepResult::End;
    }
    const bool isFirst = logStep_ == 0;
    if (isFirst) logStep_ = stepping_.LogInterval;
    if (current_.Mantissa < stepping_.LogRangeStart) continue;
    if (current_.Mantissa <= rangeEnd) return StepResult::Mark;
    if (!isFirst) CoarsenStep();
  }
  return StepResult::End;
}

DecimalSplit LogGraduation::NextCandidate() {
  DecimalSplit candidate = current_;
  if (current_.Mantissa == 1 && logStep_ > 1) {
    // Steps of 2 or 5 give 2, 4, 6, 8 or 5, and not 3, 5, 7, 9 or 6.
    candidate.Mantissa = logStep_;
  } else {
    const double sum = double{current_.Mantissa} + double{logStep_};
    candidate.Mantissa = static_cast<float>(std::nearbyint(sum * 10000) / 10000);
  }
  if (candidate.Mantissa >= 10) BeginDecade(candidate);
  if (logStep_ == 5 && candidate.Mantissa == 6) candidate.Mantissa = 5;
  if (logStep_ == 5 && candidate.Mantissa == 9) BeginDecade(candidate);
  if (logStep_ == 2 && candidate.Mantissa == 3) candidate.Mantissa = 2;
  return candidate;
}

void LogGraduation::BeginDecade(DecimalSplit& candidate) {
  logStep_ = stepping_.LogInterval;
  candidate = {1, candidate.Exponent + 1};
}

void LogGraduation::CoarsenStep() {
  if (stepping_.LogRangeEnd >= 0) {
    // This step leads on to the next decade, where the same pattern begins again.
    logStep_ = 10;
    return;
  }
  static constexpr std::array<float, 7> finer = {0.01F, 0.02F, 0.05F, 0.1F, 0.2F, 0.5F, 1.0F};
  const auto* step = std::find(finer.begin(), finer.end(), logStep_);
  if (logStep_ == 1 || logStep_ == 2) {
    logStep_ = 5;
  } else if (step != finer.end()) {
    logStep_ = *(step + 1);
  }
}

float LogGraduation::Value() const {
  return static_cast<float>(ShortestDecimal(current_.Mantissa) * std::pow(10.0, current_.Exponent));
}

double LogGraduation::Place() const {
  return support_.PlaceAtFraction(support_.LogFractionMantissa(double{current_.Mantissa}, current_.Exponent));
}

}  // namespace vaxel
