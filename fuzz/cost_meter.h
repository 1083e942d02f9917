// What a piece of work costs.
#pragma once

#include <cstddef>

namespace vaxel::fuzz {

// One meter at a time. Memory is counted in builds with the address sanitizer alone, else it is 0.
class CostMeter {
 public:
  CostMeter();
  ~CostMeter();
  CostMeter(const CostMeter&) = delete;
  CostMeter& operator=(const CostMeter&) = delete;

  // Of the processor, since the meter's start.
  double Seconds() const;
  // The most bytes that were held at once beyond those at the meter's start.
  std::size_t PeakBytes() const;

 private:
  double start_;
};

}  // namespace vaxel::fuzz
