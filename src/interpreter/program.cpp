#include "interpreter/program.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "interpreter/evaluator.h"
#include "interpreter/expression_parser.h"

namespace vaxel {
namespace {

using Code = Instruction::Code;

[[noreturn]] void Fail(FaultReason why) {
  throw ScriptFault(why, why == FaultReason::Nesting ? std::to_string(MaxParentheses) : std::string());
}

// The stack must have room for one value more than there are at a time: the last one is kept apart.
double RunCode(std::span<const Instruction> code, double* stack, const VariableTable* variables) {
  double last = 0;
  for (const Instruction& instruction : code) {
    switch (instruction.What) {
      case Code::Number:
      case Code::Variable: {
        const double operand = Program::Operand(instruction, variables);
        if (instruction.Op == Operator::None) {
          *stack++ = last;
          last = operand;
        } else {
          last = Apply(instruction.Op, last, operand);
        }
        break;
      }
      case Code::Combine:
        last = Apply(instruction.Op, *--stack, last);
        break;
      case Code::Negate:
        last = -last;
        break;
      case Code::Call:
        last = CallFunction(instruction.Detail, last);
        break;
      case Code::Round:
        last = RoundToDecimals(last, instruction.Detail);
        break;
      case Code::Drop:
        last = *--stack;
        break;
      case Code::Fail:
        Fail(instruction.Why);
    }
  }
  return last;
}

bool IsChain(std::span<const Instruction> code) {
  return code[0].IsOperand() && std::all_of(code.begin() + 1, code.end(), [](const Instruction& other) {
           return other.IsOperand() && other.Op != Operator::None;
         });
}

}  // namespace

void InstructionList::Grow() {
  constexpr std::size_t few = 4;
  capacity_ = std::max(few, 2 * capacity_);
  auto larger = std::make_unique<Instruction[]>(capacity_);  // NOLINT: see own_
  std::copy_n(begin_, size_, larger.get());
  own_ = std::move(larger);
  begin_ = own_.get();
}

Expression Program::Add(std::string_view text, std::string_view separator, const ReferenceScope* scope) {
  Expression expression;
  expression.First = static_cast<std::uint32_t>(code_.Size());
  ReadExpression(code_, text, separator, scope, expression);
  expression.Count = static_cast<std::uint32_t>(code_.Size()) - expression.First;
  expression.IsChain = IsChain({code_.At(expression.First), expression.Count});
  return expression;
}

double Program::ComputeAll(const Expression& expression, const VariableTable* variables) const {
  const std::span code(code_.At(expression.First), expression.Count);
  std::array<double, 32> few;  // NOLINT: what is not written is not read
  if (expression.StackSize < few.size()) return RunCode(code, few.data(), variables);
  std::vector<double> many(expression.StackSize + std::size_t{1});
  return RunCode(code, many.data(), variables);
}

}  // namespace vaxel
