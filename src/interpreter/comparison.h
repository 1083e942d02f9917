// The conditions of IF and IFT: two sides and between them "<", "<=" or "=<", "=", ">=" or "=>", ">", "<>" or
// "><".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "interpreter/program.h"
#include "interpreter/variables.h"

namespace vaxel {

struct RunContext;

enum class Relation : std::uint8_t { Less, LessOrEqual, Equal, GreaterOrEqual, Greater, Different };

template <class Value>
bool Holds(Relation how, const Value& left, const Value& right) {
  switch (how) {
    case Relation::Less:
      return left < right;
    case Relation::LessOrEqual:
      return left <= right;
    case Relation::Equal:
      return left == right;
    case Relation::GreaterOrEqual:
      return left >= right;
    case Relation::Greater:
      return left > right;
    case Relation::Different:
      break;
  }
  return left != right;
}

// A comparison of numbers whose sides were read once.
class CompiledComparison {
 public:
  // It has no result where the condition cannot be told from its text as it stands. A side that is no
  // expression is noticed.
  void Compile(std::string_view condition, RunContext& run);
  // What IsTrue gives, as long as all variables hold numbers, or sums where one stands alone; else none.
  std::optional<bool> Result(const VariableTable& variables) const {
    if (!isCompiled_) return std::nullopt;
    if (!variables.HoldNumbers(left_.Variables | right_.Variables)) return ResultOfSums(variables);
    const double left = program_.Compute(left_, variables);
    return Holds(how_, left, program_.Compute(right_, variables));
  }

 private:
  std::optional<bool> ResultOfSums(const VariableTable& variables) const;

  bool isCompiled_ = false;
  Relation how_ = Relation::Equal;
  Program program_;
  Expression left_, right_;
};

// Whether a condition holds, between the values of its sides or, as text, between the sides as they stand. An
// empty one does not. A side that has no value is a fault, one that is no expression is noticed.
bool IsTrue(RunContext& run, std::string_view condition, bool asText);

// The parts of "condition GOTO target" or "condition THEN command".
struct Conditional {
  std::string_view Condition;
  bool Jumps = false;     // else what follows is a command
  std::string_view Rest;  // trimmed
};

// Cuts the text at GOTO or THEN. The first of these words counts that stands apart from letters and figures,
// or else the first that is found at all; a text without them may have ALORS for THEN. What follows an
// apostrophe is no such word, but belongs to a command that keeps apostrophes. A text without such a word is
// a fault.
Conditional SplitConditional(std::string_view text);

}  // namespace vaxel
