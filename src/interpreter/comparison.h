// Conditions of IF and IFT.
#pragma once

#include <cstdint>
#include <string_view>

#include "interpreter/variables.h"

namespace vaxel {

enum class Relation : std::uint8_t { Less, LessOrEqual, Equal, GreaterOrEqual, Greater, Different };

struct Comparison {
  std::string_view Left, Right;  // trimmed
  Relation How = Relation::Equal;
};

// Splits a condition that is not empty at its last operator: "<", "<=" or "=<", "=", ">=" or "=>", ">", "<>"
// or
// "><". A fault when it has none, or one of two equal signs.
Comparison SplitComparison(std::string_view condition);

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

// Whether a condition holds, between the values of its sides or, as text, between the sides as they stand. An
// empty one does not. A side without a value is a fault.
bool IsTrue(std::string_view condition, bool asText, const Separators& separators);

// The parts of "condition GOTO target" or "condition THEN command".
struct Conditional {
  std::string_view Condition;
  bool Jumps = false;     // else what follows is a command
  std::string_view Rest;  // trimmed
};

// The first of the words counts that stands apart from letters and figures, or else that is found at all.
// What stands behind an apostrophe is no such word, but belongs to a command that keeps apostrophes. A fault
// when there is none.
Conditional SplitConditional(std::string_view text);

}  // namespace vaxel
