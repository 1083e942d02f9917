// Ends the runs of vaxel-render early: by Ctrl+C or by a limit of time.
#pragma once

#include <chrono>
#include <optional>

#include "interpreter/run_host.h"

namespace vaxel {

// Tells a run to end when Ctrl+C was pressed or its time is up. There is one at a time.
class RunWatch {
 public:
  // From now on Ctrl+C does not end the process. The time is that of all runs together.
  explicit RunWatch(std::optional<double> maxSeconds);

  // The call is cheap enough for every line.
  RunSignal Signal() {
    if (IsInterrupted()) return RunSignal::Abort;
    return maxSeconds_ && ++calls_ >= stride_ && IsTimeUp() ? RunSignal::TimeUp : RunSignal::GoOn;
  }
  bool IsInterrupted() const;
  // Waits until standard input has something to read, or its end. The result is false when Ctrl+C was pressed
  // before.
  bool AwaitInput() const;

 private:
  using Clock = std::chrono::steady_clock;

  bool IsTimeUp();

  std::optional<double> maxSeconds_;
  Clock::time_point start_ = Clock::now(), last_ = start_;
  int calls_ = 0;
  int stride_ = 1;  // calls between looks at the clock
};

}  // namespace vaxel
