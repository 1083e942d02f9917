#include "commands/assignment.h"

#include <string>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {

double AssignedNumber(const RunContext& run, std::string_view expression) {
  // Data that carries more than a number, "12 mm", is worth what it begins with.
  const Evaluation value = Evaluate(run.Substitute(expression), run.Separators.First);
  if (!value.HasValue) throw ScriptFault(FaultReason::MissingParameter, "1");
  return value.Value;
}

void Assign(RunContext& run, std::string_view name, std::string_view text) {
  if (text.starts_with('=')) {
    const double value = AssignedNumber(run, text.substr(1));
    run.Level().Variables.SetNumber(run.SettableName(name), value);
  } else if (text.starts_with('<')) {
    run.SetVariable(name, TrimText(text.substr(1)));
  } else {
    run.SetVariable(name, TrimText(run.Substitute(text)));
  }
}

}  // namespace vaxel
