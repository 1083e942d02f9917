#include "interpreter/program.h"

#include <array>
#include <span>
#include <string>

#include "interpreter/evaluator.h"
#include "interpreter/expression_parser.h"

namespace vaxel {
namespace {

using Code = Instruction::Code;

[[noreturn]] void Fail(FaultReason why) {
  throw ScriptFault(why, why == FaultReason::Nesting ? std::to_string(MaxParentheses) : std::string());
}

// The stack must have room for all values; below is the place before its first one.
double RunCode(std::span<const Instruction> code, double* top, const VariableTable* variables) {
  for (const Instruction& instruction : code) {
    switch (instruction.What) {
      case Code::Number:
        *++top = instruction.Value;
        break;
      case Code::Variable:
        *++top = variables->NumberAt(instruction.Detail);
        break;
      case Code::Negate:
        *top = -*top;
        break;
      case Code::Combine:
        --top;
        *top = Apply(instruction.Op, top[0], top[1]);
        break;
      case Code::Call:
        *top = CallFunction(instruction.Detail, *top);
        break;
      case Code::Round:
        *top = RoundToDecimals(*top, instruction.Detail);
        break;
      case Code::Drop:
        --top;
        break;
      case Code::Fail:
        Fail(instruction.Why);
    }
  }
  return *top;
}

}  // namespace

Expression Program::Add(std::string_view text, std::string_view separator, const ReferenceScope* scope) {
  Expression expression;
  expression.First = static_cast<std::uint32_t>(code_.size());
  ExpressionParser(code_, text, separator, scope).Read(expression);
  expression.Count = static_cast<std::uint32_t>(code_.size()) - expression.First;
  const Instruction* const code = code_.data() + expression.First;
  // Only two operands and one operation have this length and end so.
  expression.IsPair =
      expression.Count == 3 && code[2].What == Code::Combine && code[1].What <= Code::Variable;
  return expression;
}

double Program::ComputeAll(const Expression& expression, const VariableTable* variables) const {
  const std::span code(code_.data() + expression.First, expression.Count);
  std::array<double, 32> few;  // NOLINT: what is not written is not read
  if (expression.StackSize < few.size()) return RunCode(code, few.data(), variables);
  std::vector<double> many(expression.StackSize + std::size_t{1});
  return RunCode(code, many.data(), variables);
}

}  // namespace vaxel
