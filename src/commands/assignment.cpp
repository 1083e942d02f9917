#include "commands/assignment.h"

#include <string>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {

void Assign(RunContext& run, std::string_view name, std::string_view text) {
  if (text.starts_with('=')) {
    const std::string expression = run.Substitute(text.substr(1));
    // Data that carries more than a number, "12 mm", is worth what it begins with.
    const Evaluation value = Evaluate(expression, run.Separators.First);
    if (!value.HasValue) throw ScriptFault(FaultReason::MissingParameter, "1");
    run.Level().Variables.SetNumber(run.SettableName(name), value.Value);
  } else if (text.starts_with('<')) {
    run.SetVariable(name, TrimText(text.substr(1)));
  } else {
    run.SetVariable(name, TrimText(run.Substitute(text)));
  }
}

}  // namespace vaxel
