#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/text.h"
#include "interpreter/arithmetic.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"

namespace vaxel {

inline bool IsFunctionLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Reads an expression and hands what it finds to an algebra, operands first: to one that computes values, or
// to one that notes down what is to be computed. An algebra has a type Value and the functions
//
//   Value Number(double), Negative(Value), Combined(Operator, Value left, Value right),
//   Value Called(function, Value), Rounded(Value, decimals)
//   bool Reference(std::string_view text, std::size_t& length, Value&)   whether the text begins with a
//   reference
//
// Where the text is not an expression the parser stops and keeps the value read so far.
template <class Algebra>
class ExpressionParser {
 public:
  using Value = typename Algebra::Value;

  // separator stands between the parameters that NBP counts.
  ExpressionParser(Algebra& algebra, std::string_view text, std::string_view separator)
      : algebra_(algebra), text_(text), separator_(separator) {}

  // Whether the whole text was an expression.
  bool Read(Value& value) { return Sequence(value) && !malformed_ && AtEnd(); }

 private:
  bool AtEnd() {
    SkipBlanks();
    return position_ == text_.size();
  }
  char Here() const { return position_ < text_.size() ? text_[position_] : '\0'; }
  void SkipBlanks() {
    while (Here() == ' ') ++position_;
  }

  // Operands and operators up to what continues them no more. Returns false, with the value of what could be
  // read, when an operand is missing. Pending operators bind tighter and tighter, so that five places
  // suffice.
  bool Sequence(Value& value) {
    struct Pending {
      Operator Op;
      Value Left;
    };
    std::array<Pending, 5> pending{};
    std::size_t depth = 0;
    if (!Operand(value)) {
      value = algebra_.Number(0);
      return false;
    }
    const auto reduce = [&](int binding) {
      for (; depth > 0 && BindingOf(pending[depth - 1].Op) >= binding; --depth) {
        value = algebra_.Combined(pending[depth - 1].Op, pending[depth - 1].Left, value);
      }
    };
    for (;;) {
      const std::size_t before = position_;
      const Operator op = ReadOperator();
      // Before the next operand is read: an operation is handed on when its operands are the last that were.
      reduce(op == Operator::None ? 0 : BindingOf(op));
      if (op == Operator::None) return true;
      Value right{};
      if (!Operand(right)) {
        position_ = before;
        reduce(0);
        return false;
      }
      pending[depth++] = {op, value};
      value = right;
    }
  }

  Operator ReadOperator() {
    SkipBlanks();
    if (EqualIgnoringCase(text_.substr(position_, 3), "MOD")) {
      position_ += 3;
      return Operator::Modulo;
    }
    ++position_;
    switch (position_ <= text_.size() ? text_[position_ - 1] : '\0') {
      case '^':
        return Operator::Power;
      case '/':
        return Operator::Divide;
      case '*':
        return Operator::Times;
      case '+':
        return Operator::Plus;
      case '-':
        return Operator::Minus;
      default:
        --position_;
        return Operator::None;
    }
  }

  bool Operand(Value& value) {
    bool negative = false;
    SkipBlanks();
    for (; Here() == '-' || Here() == '+'; SkipBlanks()) {
      if (Here() == '-') negative = !negative;
      ++position_;
    }
    if (!UnsignedOperand(value)) return false;
    if (negative) value = algebra_.Negative(value);
    return true;
  }

  bool UnsignedOperand(Value& value) {
    if (Here() == '(') return Group(value);
    if (IsFunctionLetter(Here())) return FunctionCall(value);
    std::size_t length = 0;
    if (Here() == '%' && algebra_.Reference(text_.substr(position_), length, value)) {
      position_ += length;
      return true;
    }
    double number = 0;
    length = ReadUnsignedNumber(text_.substr(position_), number);
    position_ += length;
    value = algebra_.Number(RequireFinite(number));
    return length > 0;
  }

  // What stands behind a readable beginning of a group is passed over, as behind that of a whole text.
  bool Group(Value& value) {
    if (++depth_ > MaxParentheses) throw ScriptFault(FaultReason::Nesting, std::to_string(MaxParentheses));
    const std::size_t open = position_++;
    const std::size_t begin = position_;
    const bool complete = Sequence(value);
    SkipBlanks();
    --depth_;
    if (complete && Here() == ')') {
      ++position_;
      return true;
    }
    malformed_ = true;
    if (position_ == begin) return false;
    const std::size_t close = MatchingParenthesis(open);
    if (close == std::string_view::npos) return false;
    position_ = close + 1;
    return true;
  }

  std::size_t MatchingParenthesis(std::size_t open) const {
    int depth = 0;
    for (std::size_t i = open; i < text_.size(); ++i) {
      if (text_[i] == '(') ++depth;
      if (text_[i] == ')' && --depth == 0) return i;
    }
    return std::string_view::npos;
  }

  bool FunctionCall(Value& value) {
    std::size_t end = position_;
    while (end < text_.size() && IsFunctionLetter(text_[end])) ++end;
    const std::string_view name = text_.substr(position_, end - position_);
    if (EqualIgnoringCase(name, "RND")) return RoundCall(end, value);
    if (end == text_.size() || text_[end] != '(') return false;
    if (EqualIgnoringCase(name, "NBP")) return CountCall(end, value);
    const auto function = FindFunction(name);
    if (!function) return false;
    position_ = end;
    if (!Group(value)) return false;
    value = algebra_.Called(*function, value);
    return true;
  }

  bool RoundCall(std::size_t end, Value& value) {
    int decimals = 0;
    if (end < text_.size() && IsDigit(text_[end])) decimals = text_[end++] - '0';
    if (end == text_.size() || text_[end] != '(') return false;
    position_ = end;
    if (!Group(value)) return false;
    value = algebra_.Rounded(value, decimals);
    return true;
  }

  bool CountCall(std::size_t open, Value& value) {
    const std::size_t close = MatchingParenthesis(open);
    if (close == std::string_view::npos) return false;
    const std::string_view list = Trim(text_.substr(open + 1, close - open - 1));
    value = algebra_.Number(list.empty() ? 0 : static_cast<double>(CountOf(list, separator_) + 1));
    position_ = close + 1;
    return true;
  }

  Algebra& algebra_;
  std::string_view text_;
  std::string_view separator_;
  std::size_t position_ = 0;
  int depth_ = 0;
  bool malformed_ = false;
};

}  // namespace vaxel
