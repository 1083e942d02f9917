// The stepping of a scale: which marks a series of graduations, or a series of values, consists of.
// Both generators give one mark a call and know nothing of how it is drawn.
#pragma once

#include <cstdint>

#include "scale/scale_support.h"

namespace vaxel {

enum class StepResult : std::uint8_t {
  Mark,     // a mark: its fields can be read
  End,      // there are no more
  Overflow  // the index left its 16-bit range
};

// Marks number first, first + 1, … on a scale of count equal intervals of its value.
class LinearGraduation {
 public:
  // A count of 0 means 1. first is rounded after 1 was taken from it, last is truncated; a last of 0 means
  // count.
  LinearGraduation(const ScaleSupport& support, double count, double first, double last);

  StepResult Next();
  std::int16_t Index() const { return static_cast<std::int16_t>(gradIndex_); }
  bool IsLast() const { return gradIndex_ == gradLast_; }
  // The place of the mark, as ScaleSupport::MarkAt takes it.
  double Place() const;

 private:
  const ScaleSupport& support_;
  double gradCount_, gradLast_;
  double gradStep_;
  std::int32_t gradIndex_ = 0;
  bool startInRange_ = true;
};

// A value as mantissa · 10^exponent, the mantissa from 1 to below 10.
struct DecimalSplit {
  float Mantissa = 1;
  int Exponent = 0;
};
// The value must be greater than 0 and finite.
DecimalSplit SplitDecimal(double value);

// How a logarithmic scale is stepped inside each decade.
struct LogStepping {
  static constexpr float SmallestInterval = 0.0001F;

  float LogInterval = 1;    // the mantissa's step, at least SmallestInterval
  float LogRangeEnd = 10;   // the mantissa up to which marks are drawn; negative: the step coarsens beyond it
  float LogRangeStart = 1;  // the mantissa from which marks are drawn
};

// The marks from first to last, both greater than 0 and finite; last itself is a mark when the stepping
// meets it.
class LogGraduation {
 public:
  LogGraduation(const ScaleSupport& support, const LogStepping& stepping, double first, double last);

  StepResult Next();
  float Mantissa() const { return current_.Mantissa; }
  int Exponent() const { return current_.Exponent; }
  // Mantissa · 10^Exponent, as it is written in decimals.
  float Value() const;
  double Place() const;

 private:
  DecimalSplit NextCandidate();
  void BeginDecade(DecimalSplit& candidate);
  void CoarsenStep();

  const ScaleSupport& support_;
  LogStepping stepping_;
  DecimalSplit current_, last_;
  float logStep_ = 0;  // 0 before the first mark
  bool done_ = false;
};

}  // namespace vaxel
