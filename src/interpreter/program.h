// Expressions that were read once and are computed as often as they are wanted.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "interpreter/arithmetic.h"
#include "interpreter/script_fault.h"
#include "interpreter/variables.h"

namespace vaxel {

// One step, on a stack of values.
struct Instruction {
  enum class Code : std::uint8_t {
    Number,    // Value
    Variable,  // the number that the variable in the slot Detail holds
    Combine,   // the two last values by Op
    Negate,
    Call,   // the function Detail
    Round,  // to so many decimals as Detail says
    Drop,   // forgets the last value: what it was computed for is no expression
    Fail    // the fault Why, which stands in the text at this place
  };

  bool IsOperand() const { return What == Code::Number || What == Code::Variable; }

  double Value = 0;
  Code What = Code::Number;
  Operator Op =
      Operator::None;  // of an operand: by which the last value is combined with it; None: it is pushed
  std::uint8_t Detail = 0;
  FaultReason Why = FaultReason::None;
};

// One expression of a program.
struct Expression {
  std::uint32_t First = 0, Count = 0;  // its instructions
  VariableTable::Slots Variables = 0;  // each must hold a number when it is computed
  std::uint16_t StackSize = 0;
  bool IsChain = false;  // an operand, and others with which it is combined
  // Whether the whole text was an expression. If not, this is its beginning, 0 when it begins with no number.
  bool IsComplete = true;

  // The slot of the variable that is all of the expression.
  std::optional<std::size_t> AloneVariable() const {
    if (Count != 1 || Variables == 0) return std::nullopt;
    return static_cast<std::size_t>(std::countr_zero(Variables));
  }
};

// The variables whose names an expression may hold. What is neither of these variables nor a number is no
// operand.
struct ReferenceScope {
  const VariableTable& Variables;
  const Separators& Marks;  // at which names end
};

// Instructions one after another. Memory that is given is used first, so that a program which is computed
// once needs no other.
class InstructionList {
 public:
  InstructionList() = default;
  // The memory must live as long.
  explicit InstructionList(std::span<Instruction> memory) : begin_(memory.data()), capacity_(memory.size()) {}
  InstructionList(const InstructionList&) = delete;
  InstructionList& operator=(const InstructionList&) = delete;

  std::size_t Size() const { return size_; }
  Instruction* At(std::size_t index) const { return begin_ + index; }
  Instruction& Last() { return begin_[size_ - 1]; }
  void Add(const Instruction& instruction) {
    if (size_ == capacity_) Grow();
    begin_[size_++] = instruction;
  }
  void Clear() { size_ = 0; }

 private:
  void Grow();

  Instruction* begin_ = nullptr;
  std::size_t size_ = 0, capacity_ = 0;
  std::unique_ptr<Instruction[]> own_;  // NOLINT: a list of its own
};

class Program {
 public:
  Program() = default;
  // The memory is used first and must live as long.
  explicit Program(std::span<Instruction> memory) : code_(memory) {}

  // Adds an expression. Without a scope it must hold no references. With one, its value is that of the text
  // with the references replaced, as long as every variable in it holds a number; a reference of which that
  // cannot be said, as what it brings may become part of a name or a number, makes it incomplete. separator
  // stands between the parameters that NBP counts.
  Expression Add(std::string_view text, std::string_view separator, const ReferenceScope* scope = nullptr);

  // What has no result is a fault.
  double Compute(const Expression& expression, const VariableTable& variables) const {
    if (!expression.IsChain) return ComputeAll(expression, &variables);
    // Most lines of a loop have no other expressions.
    const Instruction* code = code_.At(expression.First);
    const Instruction* const end = code + expression.Count;
    double value = Operand(*code, &variables);
    while (++code != end) value = Apply(code->Op, value, Operand(*code, &variables));
    return value;
  }
  // The same for an expression that was added without a scope.
  double Compute(const Expression& expression) const { return ComputeAll(expression, nullptr); }

  void Clear() { code_.Clear(); }

  // The value of an operand.
  static double Operand(const Instruction& instruction, const VariableTable* variables) {
    return instruction.What == Instruction::Code::Variable ? variables->NumberAt(instruction.Detail)
                                                           : instruction.Value;
  }

 private:
  double ComputeAll(const Expression& expression, const VariableTable* variables) const;

  InstructionList code_;
};

}  // namespace vaxel
