#include "commands/assignment.h"

#include <string>

#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {

void Assign(RunContext& run, std::string_view name, std::string_view text) {
  if (text.starts_with('=')) {
    const std::string expression = run.Substitute(text.substr(1));
    const auto value = StrictValue(expression, run.Separators);
    if (!value) throw ScriptFault(FaultReason::MissingParameter, "1");
    run.RequireSettable(name);
    run.Level().Variables.SetNumber(name, *value);
  } else if (text.starts_with('<')) {
    run.SetVariable(name, Trim(text.substr(1)));
  } else {
    run.SetVariable(name, Trim(run.Substitute(text)));
  }
}

}  // namespace vaxel
