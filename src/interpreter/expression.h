#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter/arithmetic.h"
#include "interpreter/variables.h"

namespace vaxel {

// An expression that was read once. Its value is the one that the text has with its references replaced, as
// long as every variable in it holds a number; a reference to a system variable, or one that is not an
// operand, cannot be prepared.
class Expression {
 public:
  // None for what is not an expression throughout. Separators other than these make names end elsewhere.
  static std::optional<Expression> Prepare(std::string_view text, const Separators& separators);

  // None when a variable is unknown or holds no number. A fault as for the text.
  std::optional<double> Value(const VariableTable& variables) {
    return IsReady(variables) ? std::optional(Compute(variables)) : std::nullopt;
  }
  // The two halves of it, for several expressions that must all be ready before one is computed.
  bool IsReady(const VariableTable& variables) {
    for (ReferenceSlot& reference : references_) {
      if (reference.Slot == VariableTable::MaxVariables) reference.Slot = variables.SlotOf(reference.Name);
      if (reference.Slot == VariableTable::MaxVariables || !variables.HoldsNumber(reference.Slot))
        return false;
    }
    return true;
  }
  double Compute(const VariableTable& variables) const {
    // One operand, or an operation on two, is what most lines of a loop have.
    if (program_.size() == 1) return Operand(program_[0], variables);
    if (!isPair_) return ComputeAll(variables);
    return Apply(program_[2].Op, Operand(program_[0], variables), Operand(program_[1], variables));
  }
  bool HasReferences() const { return !references_.empty(); }

 private:
  friend class ExpressionWriter;

  enum class Code : std::uint8_t { Number, Reference, Negate, Combine, Call, Round };
  struct Instruction {
    double Value = 0;  // of a number
    Code What = Code::Number;
    Operator Op = Operator::None;
    std::uint8_t Detail = 0;  // the reference, the function or the decimals
  };
  struct ReferenceSlot {
    std::string Name;
    std::size_t Slot = VariableTable::MaxVariables;  // when it is not known yet
  };

  double ComputeAll(const VariableTable& variables) const;
  double Operand(const Instruction& instruction, const VariableTable& variables) const {
    return instruction.What == Code::Number ? instruction.Value
                                            : variables.NumberAt(references_[instruction.Detail].Slot);
  }

  bool isPair_ = false;  // two operands and what combines them
  std::vector<Instruction> program_;
  std::vector<ReferenceSlot> references_;
};

}  // namespace vaxel
