#include "interpreter/evaluator.h"

#include <array>
#include <cstddef>
#include <memory_resource>

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
  std::array<std::byte, Program::TypicalSize * sizeof(Instruction)>
      buffer;  // NOLINT: what is not written is not read
  std::pmr::monotonic_buffer_resource memory(buffer.data(), buffer.size());
  Program program(memory);
  const Expression expression = program.Add(text, separator);
  result.Complete = expression.IsComplete;
  result.Value = program.Compute(expression);
  return result;
}

}  // namespace vaxel
