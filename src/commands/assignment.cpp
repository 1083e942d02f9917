#include "commands/assignment.h"

#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/foreign_habits.h"
#include "interpreter/script_fault.h"

namespace vaxel {

double AssignedNumber(RunContext& run, std::string_view expression) {
  const std::string replaced = run.Substitute(expression);
  const std::string_view text = Trim(replaced);
  // Data that carries more than a number, "12 mm", is worth what it begins with, and a slip looks like it.
  const Evaluation value = Evaluate(text, run.Separators.First);
  if (!value.HasValue) throw ScriptFault(FaultReason::MissingParameter, "1");
  if (!value.Complete) {
    const TextId notice = HasDecimalComma(text) ? TextId::ValueHasComma
                          : HasWrongMinus(text) ? TextId::ValueHasWrongMinus
                                                : TextId::ValueIsNoExpression;
    run.Notice(notice, Shorten(text, 60), NumberText(value.Value));
  }
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
