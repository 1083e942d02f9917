#include "cli/run_watch.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/temporary_files.h"
#include "cli/options.h"

#ifndef _WIN32
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace vaxel {
namespace {

// A signal's handler reaches nothing but what lives as long as the program.
std::atomic<bool> isInterrupted = false, isTimeUp = false, isWriting = false;

// What a library's end is told with: nothing can be put together then.
std::string& AbortLine() {
  static std::string line;
  return line;
}

#ifndef _WIN32
[[noreturn]] void EndProgram(ExitStatus status) {
  RemoveTemporaryFiles();
  std::_Exit(static_cast<int>(status));
}
#endif

void Interrupt(int) {
  isInterrupted = true;
#ifndef _WIN32
  if (isWriting) EndProgram(ExitStatus::Interrupted);
#endif
}

#ifdef _WIN32

void HandleSignals() {
  std::signal(SIGINT, Interrupt);
}

#else

// The signal then does what it does to every program.
void CleanUp(int signal) {
  RemoveTemporaryFiles();
  std::raise(signal);
}

void TellAbort(int) {
  const std::string& line = AbortLine();
  [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
  EndProgram(ExitStatus::FileFailed);
}

struct FaultActions {
  struct sigaction Segment, Bus;
};

// What a fault of the memory did before.
FaultActions& Faults() {
  static FaultActions actions;
  return actions;
}

// Some libraries fall over memory that they did not get. Whether that is so is seen by asking for some; any
// other fault comes again when this returns, and does what it would have done.
void TellFault(int signal) {
  constexpr std::size_t plenty = std::size_t{64} << 20;
  void* const room = mmap(nullptr, plenty, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (room == MAP_FAILED) TellAbort(signal);
  munmap(room, plenty);
  sigaction(signal, signal == SIGBUS ? &Faults().Bus : &Faults().Segment, nullptr);
}

void HandleSignals() {
  // Nothing is restarted, so that a question that waits for its answer ends, too.
  struct sigaction action {};
  action.sa_handler = Interrupt;
  sigaction(SIGINT, &action, nullptr);
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  action.sa_handler = TellAbort;
  for (const int signal : {SIGABRT, SIGTRAP}) sigaction(signal, &action, nullptr);
  action.sa_handler = CleanUp;
  struct sigaction fault {};
  fault.sa_handler = TellFault;
  sigaction(SIGSEGV, &fault, &Faults().Segment);
  sigaction(SIGBUS, &fault, &Faults().Bus);
  for (const int signal : {SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
    struct sigaction present {};
    // Who started the program may have it outlive its terminal.
    if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
      sigaction(signal, &action, nullptr);
  }
}

#endif

}  // namespace

RunWatch::RunWatch(std::optional<double> maxSeconds, std::string_view abortText) {
  AbortLine().assign("vaxel-render: ").append(abortText).append("\n");
  isInterrupted = isTimeUp = isWriting = false;
  HandleSignals();
  if (!maxSeconds) return;
  const SignalsHeld held;  // in the thread for good: they are for the one that may wait for an answer
  clock_ = std::jthread(
      [this, seconds = *maxSeconds](const std::stop_token& isOver) { AwaitTimeUp(isOver, seconds); });
}

void RunWatch::AwaitTimeUp(const std::stop_token& isOver, double seconds) {
  constexpr double longest = 1e8;  // years, which every clock can count
  const auto time = std::chrono::duration<double>(std::min(seconds, longest));
  std::unique_lock lock(mutex_);
  if (over_.wait_for(lock, isOver, time, [] { return false; }) || isOver.stop_requested()) return;
  isTimeUp = true;
#ifndef _WIN32
  if (!tellTimeUp_) return;
  tellTimeUp_();
  EndProgram(ExitStatus::ScriptFailed);
#endif
}

RunSignal RunWatch::Signal() const {
  if (IsInterrupted()) return RunSignal::Abort;
  return isTimeUp.load(std::memory_order_relaxed) ? RunSignal::TimeUp : RunSignal::GoOn;
}

bool RunWatch::IsInterrupted() const {
  return isInterrupted.load(std::memory_order_relaxed);
}

void RunWatch::BeginWriting(std::function<void()> tellTimeUp) {
  const std::lock_guard lock(mutex_);
  tellTimeUp_ = std::move(tellTimeUp);
  isWriting = true;
}

void RunWatch::EndWriting() {
  const std::lock_guard lock(mutex_);
  isWriting = false;
  tellTimeUp_ = nullptr;
}

#ifdef _WIN32
bool RunWatch::AwaitInput() const {
  return Signal() == RunSignal::GoOn;  // a read from the console ends with Ctrl+C itself
}
#else
// A Ctrl+C between a look and the beginning of the wait must not be lost: it is held back until then.
bool RunWatch::AwaitInput() const {
  constexpr timespec betweenLooks{0, 100'000'000};
  sigset_t interrupt, before;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, &before);
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (Signal() == RunSignal::GoOn && ppoll(&input, 1, &betweenLooks, &before) <= 0) {
  }
  sigprocmask(SIG_SETMASK, &before, nullptr);
  return Signal() == RunSignal::GoOn;
}
#endif

}  // namespace vaxel
