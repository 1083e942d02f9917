#include "interpreter/evaluator.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

#include "geometry/point.h"
#include "interpreter/script_fault.h"
#include "text/text.h"

namespace vaxel {
namespace {

// In the order in which they are applied, the last one first.
enum class Operator { None, Minus, Plus, Times, Divide, Modulo, Power };

int BindingOf(Operator op) {
  return op == Operator::Plus ? static_cast<int>(Operator::Minus) : static_cast<int>(op);
}

double Divide(double left, double right) {
  if (right == 0) throw ScriptFault(FaultReason::DivisionByZero);
  return left / right;
}

double Remainder(double left, double right) {
  if (right == 0) throw ScriptFault(FaultReason::DivisionByZero);
  return std::fmod(left, right);
}

double Power(double left, double right) {
  if (left == 0 && right < 0) throw ScriptFault(FaultReason::DivisionByZero);
  return std::pow(left, right);
}

double Apply(Operator op, double left, double right) {
  switch (op) {
    case Operator::Minus:
      return RequireFinite(left - right);
    case Operator::Plus:
      return RequireFinite(left + right);
    case Operator::Times:
      return RequireFinite(left * right);
    case Operator::Divide:
      return RequireFinite(Divide(left, right));
    case Operator::Modulo:
      return Remainder(left, right);
    case Operator::Power:
      return RequireFinite(Power(left, right));
    case Operator::None:
      break;
  }
  return right;
}

double DecimalLogarithm(double x) {
  if (x <= 0) throw ScriptFault(FaultReason::Domain);
  // In double precision the quotient for 1000 falls just short of 3.
  return static_cast<double>(std::log(static_cast<long double>(x)) / std::log(10.0L));
}

double RoundToDecimals(double x, int decimals) {
  static constexpr std::array<double, 10> powers = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  const double scale = powers[static_cast<std::size_t>(decimals)];
  const double scaled = x * scale;
  if (std::abs(scaled) >= 1e15) return x;
  // 1.005 as a double lies just below the half that the user wrote.
  constexpr double nudge = 2 * std::numeric_limits<double>::epsilon();
  return std::round(scaled * (1 + nudge)) / scale;
}

double Sign(double x) {
  return x > 0 ? 1 : x < 0 ? -1 : 0;
}

struct Function {
  std::string_view Name;
  double (*Value)(double);
};

constexpr std::array<Function, 13> Functions = {{
    {"SIN", [](double x) { return std::sin(x * RadiansPerDegree); }},
    {"COS", [](double x) { return std::cos(x * RadiansPerDegree); }},
    {"TAN", [](double x) { return std::tan(x * RadiansPerDegree); }},
    {"ASIN", [](double x) { return std::asin(x) / RadiansPerDegree; }},
    {"ACOS", [](double x) { return std::acos(x) / RadiansPerDegree; }},
    {"ATAN", [](double x) { return std::atan(x) / RadiansPerDegree; }},
    {"SINH", [](double x) { return (std::exp(x) - std::exp(-x)) / 2; }},
    {"COSH", [](double x) { return (std::exp(x) + std::exp(-x)) / 2; }},
    {"LOG", DecimalLogarithm},
    {"SQR", [](double x) { return std::sqrt(x); }},
    {"ABS", [](double x) { return std::abs(x); }},
    {"SGN", Sign},
    {"FIX", [](double x) { return std::trunc(x); }},
}};

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool HasName(std::string_view text, std::string_view upperName) {
  if (text.size() != upperName.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((text[i] & ~0x20) != upperName[i]) return false;
  }
  return true;
}

// Reads the text from its start; where it is not an expression it stops and keeps the value read so far.
class Parser {
 public:
  Parser(std::string_view text, std::string_view separator) : text_(text), separator_(separator) {}

  Evaluation Whole() {
    Evaluation result;
    result.HasValue = true;
    result.Complete = Sequence(result.Value) && !malformed_ && AtEnd();
    return result;
  }

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
  bool Sequence(double& value) {
    struct Pending {
      Operator Op;
      double Left;
    };
    std::array<Pending, 5> pending{};
    std::size_t depth = 0;
    value = 0;
    if (!Operand(value)) {
      value = 0;
      return false;
    }
    bool complete = true;
    for (;;) {
      const std::size_t before = position_;
      const Operator op = ReadOperator();
      double right = 0;
      if (op != Operator::None && !Operand(right)) {
        position_ = before;
        complete = false;
      }
      const bool ended = op == Operator::None || !complete;
      const int binding = ended ? 0 : BindingOf(op);
      for (; depth > 0 && BindingOf(pending[depth - 1].Op) >= binding; --depth) {
        value = Apply(pending[depth - 1].Op, pending[depth - 1].Left, value);
      }
      if (ended) return complete;
      pending[depth++] = {op, value};
      value = right;
    }
  }

  Operator ReadOperator() {
    SkipBlanks();
    if (HasName(text_.substr(position_, 3), "MOD")) {
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

  bool Operand(double& value) {
    bool negative = false;
    SkipBlanks();
    for (; Here() == '-' || Here() == '+'; SkipBlanks()) {
      if (Here() == '-') negative = !negative;
      ++position_;
    }
    if (!UnsignedOperand(value)) return false;
    if (negative) value = -value;
    return true;
  }

  bool UnsignedOperand(double& value) {
    if (Here() == '(') return Group(value);
    if (IsLetter(Here())) return FunctionCall(value);
    const std::size_t length = ReadUnsignedNumber(text_.substr(position_), value);
    position_ += length;
    RequireFinite(value);
    return length > 0;
  }

  // What stands behind a readable beginning of a group is passed over, as behind that of a whole text.
  bool Group(double& value) {
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

  bool FunctionCall(double& value) {
    std::size_t end = position_;
    while (end < text_.size() && IsLetter(text_[end])) ++end;
    const std::string_view name = text_.substr(position_, end - position_);
    if (HasName(name, "RND")) return RoundCall(end, value);
    if (end == text_.size() || text_[end] != '(') return false;
    if (HasName(name, "NBP")) return CountCall(end, value);
    for (const Function& function : Functions) {
      if (!HasName(name, function.Name)) continue;
      position_ = end;
      if (!Group(value)) return false;
      value = RequireFinite(function.Value(value));
      return true;
    }
    return false;
  }

  bool RoundCall(std::size_t end, double& value) {
    int decimals = 0;
    if (end < text_.size() && IsDigit(text_[end])) decimals = text_[end++] - '0';
    if (end == text_.size() || text_[end] != '(') return false;
    position_ = end;
    if (!Group(value)) return false;
    value = RoundToDecimals(value, decimals);
    return true;
  }

  bool CountCall(std::size_t open, double& value) {
    const std::size_t close = MatchingParenthesis(open);
    if (close == std::string_view::npos) return false;
    const std::string_view list = Trim(text_.substr(open + 1, close - open - 1));
    value = list.empty() ? 0 : static_cast<double>(CountOf(list, separator_) + 1);
    position_ = close + 1;
    return true;
  }

  std::string_view text_;
  std::string_view separator_;
  std::size_t position_ = 0;
  int depth_ = 0;
  bool malformed_ = false;
};

}  // namespace

Evaluation Evaluate(std::string_view text, std::string_view separator) {
  text = Trim(text);
  if (text.empty()) return {};
  Evaluation plain;
  const bool negative = text.front() == '-';
  const std::string_view digits = negative ? text.substr(1) : text;
  if (ReadUnsignedNumber(digits, plain.Value) == digits.size() && !digits.empty()) {
    plain.HasValue = true;
    RequireFinite(plain.Value);
    if (negative) plain.Value = -plain.Value;
    return plain;
  }
  return Parser(text, separator).Whole();
}

}  // namespace vaxel
