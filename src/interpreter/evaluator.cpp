#include "interpreter/evaluator.h"

#include <array>

#include "base/text.h"
#include "interpreter/program.h"

namespace vaxel {

Evaluation Evaluate(std::string_view text, std::string_view separator) {
  text = Trim(text);
  if (text.empty()) return {};
  Evaluation result;
  result.HasValue = true;
  const bool isNegative = text.front() == '-';
  const std::string_view digits = text.substr(isNegative ? 1 : 0);
  if (!digits.empty() && ReadUnsignedNumber(digits, result.Value) == digits.size()) {
    RequireFinite(result.Value);
    if (isNegative) result.Value = -result.Value;
    return result;
  }
  // This is enough for all but the longest expressions.
  std::array<Instruction, 8> memory;
  Program program(memory);
  const Expression expression = program.Add(text, separator);
  result.Complete = expression.IsComplete;
  result.Value = program.Compute(expression);
  return result;
}

}  // namespace vaxel
