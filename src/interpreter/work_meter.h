// Counts what a run does between two questions to its host whether it goes on.
#pragma once

#include <cstddef>

#include "interpreter/run_host.h"

namespace vaxel {

// Work is counted in bytes of text that are read, put in or stored; whatever else takes time counts as so
// many. So the host is asked after a few ordinary lines, after each long text and within what takes much of
// it, and no clock is needed to see that nothing goes on for long without a question.
class WorkMeter {
 public:
  static constexpr std::size_t Line = 4096;              // what a line costs beside its texts
  static constexpr std::size_t Reference = 256;          // what one reference to a variable costs
  static constexpr std::size_t MostBetween = 16 * Line;  // after which the host is asked

  // The host must outlive it.
  explicit WorkMeter(RunHost& host) : host_(host) {}
  void Reset() { done_ = before_ = 0; }

  // Adds work, and asks where that makes it much. It throws what Ask does.
  void Add(std::size_t bytes) {
    if ((done_ += bytes) >= MostBetween) Ask();
  }
  // Lets the host handle events. A run that is to end is ended by a RunEnded, or by the fault of a time that
  // is up.
  void Ask();
  // All work since Reset.
  std::size_t Total() const { return before_ + done_; }

 private:
  RunHost& host_;
  std::size_t before_ = 0, done_ = 0;  // the last question, and since
};

}  // namespace vaxel
