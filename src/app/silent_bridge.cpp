#include "app/silent_bridge.h"

#include <utility>

namespace vaxel {

SilentBridge::SilentBridge(AppContext& app, const EditedScript& script, RunSession& session,
                           std::vector<std::string>& answers, Limits limits)
    : RunBridge(app, script, session, nullptr, answers),
      answers_(answers),
      platform_(app.Platform),
      limits_(std::move(limits)),
      end_(platform_.Now() + limits_.Patience) {}

void SilentBridge::ShowError(const ErrorReport& report) {
  KeepProblem(Problem::Kind::Error, report.FileName, report.LineNumber, report.Text);
}

RunSignal SilentBridge::ProcessPendingEvents() {
  if (limits_.EndsRun && limits_.EndsRun()) {
    wasEnded_ = true;
    return RunSignal::Abort;
  }
  if (platform_.Now() < end_) return RunSignal::GoOn;
  wasTooLong_ = true;
  return RunSignal::TimeUp;
}

Answer SilentBridge::Ask(std::string_view, std::uint32_t, std::string_view, std::string_view proposal) {
  if (asked_ < answers_.size()) return {Answer::Kind::Given, answers_[asked_++]};
  if (limits_.TakesProposals) return {Answer::Kind::Given, std::string(proposal)};
  return {Answer::Kind::Unavailable};
}

}  // namespace vaxel
