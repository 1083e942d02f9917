#include "app/run_outcome.h"

namespace vaxel {
namespace {

std::string DurationText(std::chrono::milliseconds duration) {
  constexpr auto longest = std::chrono::seconds(10);
  if (duration < longest) return std::to_string(duration.count()) + " ms";
  return std::to_string(std::chrono::round<std::chrono::seconds>(duration).count()) + " s";
}

}  // namespace

std::string MessageOf(const RunOutcome& outcome, const AppContext& app) {
  if (outcome.End == RunEnd::Completed) {
    const TextId text = outcome.Elements == 1 ? TextId::RunDoneOne : TextId::RunDone;
    return app.Message(text, DurationText(outcome.Took), std::to_string(outcome.Elements));
  }
  if (outcome.End == RunEnd::Empty || outcome.Line == 0) return {};
  return app.Message(TextId::RunStopped, std::to_string(outcome.Line));
}

}  // namespace vaxel
