// Ends the work of vaxel-render early: by Ctrl+C, by a limit of time, or by the system.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string_view>
#include <thread>

#include "interpreter/run_host.h"

namespace vaxel {

// Tells a run, and the writing of its outputs, to end when Ctrl+C was pressed or its time is up. There is one
// at a time. While it lives a program that the system ends leaves no temporary file.
class RunWatch {
 public:
  // From now on Ctrl+C does not end the process. The time is that of all runs together, of the writing too.
  // abortText is what a library says nothing of that gives up, or falls, for want of memory: the program then
  // ends with this line and the status of a failure, instead of the signal.
  RunWatch(std::optional<double> maxSeconds, std::string_view abortText);

  // The call is cheap enough for every line: it looks at no clock.
  RunSignal Signal() const;
  bool IsInterrupted() const;
  // Waits until standard input has something to read, or its end. The result is false when Ctrl+C was pressed
  // before, or the time is up.
  bool AwaitInput() const;

  // What libraries do to write an output cannot ask. Between the two calls the program is ended by the signal
  // itself, with the status that belongs to it and without its temporary files; tellTimeUp, which runs on
  // another thread, says then why. Not so on Windows, where no such library is used.
  void BeginWriting(std::function<void()> tellTimeUp);
  void EndWriting();

 private:
  void AwaitTimeUp(const std::stop_token& isOver, double seconds);

  std::mutex mutex_;  // of what is below
  std::condition_variable_any over_;
  std::function<void()> tellTimeUp_;  // while outputs are written
  std::jthread clock_;                // must end first
};

}  // namespace vaxel
