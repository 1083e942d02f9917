#include "cli/run_watch.h"

#include <algorithm>
#include <atomic>
#include <csignal>

namespace vaxel {
namespace {

// A signal's handler reaches nothing but what lives as long as the program.
std::atomic<bool>& Interrupted() {
  static std::atomic<bool> interrupted = false;
  return interrupted;
}

}  // namespace

RunWatch::RunWatch(std::optional<double> maxSeconds) : maxSeconds_(maxSeconds) {
  Interrupted() = false;
  const auto handler = [](int) { Interrupted() = true; };
#ifdef _WIN32
  std::signal(SIGINT, handler);
#else
  // Nothing is restarted, so that a question that waits for its answer ends, too.
  struct sigaction action {};
  action.sa_handler = handler;
  sigaction(SIGINT, &action, nullptr);
#endif
}

bool RunWatch::IsInterrupted() const {
  return Interrupted().load(std::memory_order_relaxed);
}

// Looks often enough to notice within some milliseconds, and no more often: a look takes longer than a line.
// Lines may become slow at any time, so that even after quick ones few pass without a look.
bool RunWatch::IsTimeUp() {
  constexpr int longestStride = 64;
  const Clock::time_point now = Clock::now();
  const bool quick = now - last_ < std::chrono::milliseconds(1);
  stride_ = quick ? std::min(2 * stride_, longestStride) : std::max(stride_ / 2, 1);
  last_ = now;
  calls_ = 0;
  return std::chrono::duration<double>(now - start_).count() > *maxSeconds_;
}

}  // namespace vaxel
