// A run of which nobody notices anything but what it draws and finds wrong.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "app/problem_list.h"
#include "app/run_bridge.h"

namespace vaxel {

// Questions get the answers that are given, in their order, and then what the script proposes, where that is
// allowed; boxes are passed over; comments are not written.
class SilentBridge : public RunBridge {
 public:
  struct Limits {
    std::chrono::milliseconds Patience;  // after which the run is ended
    bool TakesProposals = false;         // else a question without an answer ends the run
    std::function<bool()> EndsRun = {};  // asked from time to time; null: never
  };

  // All must outlive it.
  SilentBridge(AppContext& app, const EditedScript& script, RunSession& session,
               std::vector<std::string>& answers, Limits limits);

  void ShowError(const ErrorReport& report) override;
  RunSignal ProcessPendingEvents() override;
  void WriteComment(std::string_view, std::uint32_t, std::string_view) override {}
  bool Confirm(BoxKind, std::string_view, std::uint32_t, std::string_view, std::string_view) override {
    return true;
  }
  Answer Ask(std::string_view, std::uint32_t, std::string_view, std::string_view proposal) override;

  bool WasEnded() const { return wasEnded_; }
  bool WasTooLong() const { return wasTooLong_; }

 private:
  const std::vector<std::string>& answers_;
  Platform& platform_;
  Limits limits_;
  std::chrono::steady_clock::time_point end_;
  std::size_t asked_ = 0;
  bool wasEnded_ = false, wasTooLong_ = false;
};

}  // namespace vaxel
