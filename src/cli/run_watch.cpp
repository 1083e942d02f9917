#include "cli/run_watch.h"

#include <algorithm>
#include <atomic>
#include <csignal>

#ifndef _WIN32
#include <poll.h>
#include <unistd.h>
#endif

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

#ifdef _WIN32
bool RunWatch::AwaitInput() const {
  return !IsInterrupted();  // a read from the console ends with Ctrl+C itself
}
#else
// A Ctrl+C between a look and the beginning of the wait must not be lost: it is held back until then.
bool RunWatch::AwaitInput() const {
  sigset_t interrupt, before;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, &before);
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (!IsInterrupted() && ppoll(&input, 1, nullptr, &before) < 0) {
  }
  sigprocmask(SIG_SETMASK, &before, nullptr);
  return !IsInterrupted();
}
#endif

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
