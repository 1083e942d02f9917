#pragma once

#include <cstddef>

namespace vaxel {

// Counts what the program holds on the heap, as the allocator deals it out: each block with its rounding up
// and its header. Nothing is counted outside the life of a meter, so that timed code is not slowed. One meter
// at a time, on one thread.
class HeapMeter {
 public:
  HeapMeter();
  ~HeapMeter();
  HeapMeter(const HeapMeter&) = delete;
  HeapMeter& operator=(const HeapMeter&) = delete;

  // Bytes held beyond those at the meter's start: now, and at most so far.
  double Held() const;
  double Peak() const;
};

}  // namespace vaxel
