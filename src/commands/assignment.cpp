#include "commands/assignment.h"

#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/script_fault.h"

namespace vaxel {

void Assign(RunContext& run, std::string_view name, std::string_view text) {
  if (text.starts_with('=')) {
    const std::string expression = run.Substitute(text.substr(1));
    // Data that carries more than a number, "12 mm", is worth what it begins with, and a slip looks like it.
    const Evaluation value = Evaluate(expression, run.Separators.First);
    if (!value.HasValue) throw ScriptFault(FaultReason::MissingParameter, "1");
    run.RequireSettable(name);
    if (!value.Complete) {
      const bool hasComma = HasDecimalComma(Trim(expression));
      run.Notice(hasComma ? TextId::ValueHasComma : TextId::ValueIsNoExpression,
                 Shorten(Trim(expression), 60), NumberText(value.Value));
    }
    run.Level().Variables.SetNumber(name, value.Value);
  } else if (text.starts_with('<')) {
    run.SetVariable(name, Trim(text.substr(1)));
  } else {
    run.SetVariable(name, Trim(run.Substitute(text)));
  }
}

}  // namespace vaxel
