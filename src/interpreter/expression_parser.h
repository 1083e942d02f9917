#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "interpreter/program.h"

namespace vaxel {

// Reads the text of an expression into instructions, operands before what is done with them. Where the text
// is no expression it stops: the instructions then give the value of what was read so far. A fault in the
// text becomes an instruction, so that those of computations before it come first.
class ExpressionParser {
 public:
  ExpressionParser(std::pmr::vector<Instruction>& code, std::string_view text, std::string_view separator,
                   const ReferenceScope* scope)
      : code_(code), text_(text), separator_(separator), scope_(scope) {}

  // Appends the instructions; of the expression it sets whether it is complete, its variables and its stack.
  void Read(Expression& expression);

 private:
  // Each leaves one value more on the stack when it returns true.
  bool Sequence();
  bool Operand();
  bool UnsignedOperand();
  bool Number();
  bool Reference();
  bool Group();
  bool FunctionCall();
  bool RoundCall(std::size_t end);
  bool CountCall(std::size_t open);

  Operator ReadOperator();
  std::size_t MatchingParenthesis(std::size_t open) const;
  char Here() const { return position_ < text_.size() ? text_[position_] : '\0'; }
  void SkipBlanks();

  void Push(const Instruction& instruction);
  void Combine(Operator op);
  void Negate();
  void DropTo(std::size_t depth);
  bool Fail(FaultReason why);

  std::pmr::vector<Instruction>& code_;
  std::string_view text_;
  std::string_view separator_;
  const ReferenceScope* scope_;
  VariableTable::Slots variables_ = 0;
  std::size_t position_ = 0;
  std::size_t depth_ = 0, deepest_ = 0;  // of the stack
  int nesting_ = 0;
  bool isMalformed_ = false;
  bool hasFailed_ = false;  // nothing behind that place counts
};

}  // namespace vaxel
