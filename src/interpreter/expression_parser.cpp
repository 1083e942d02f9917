#include "interpreter/expression_parser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

#include "base/text.h"
#include "interpreter/evaluator.h"
#include "interpreter/script_fault.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

using Code = Instruction::Code;

class ExpressionParser {
 public:
  ExpressionParser(InstructionList& code, std::string_view text, std::string_view separator,
                   const ReferenceScope* scope)
      : code_(code), text_(text), separator_(separator), scope_(scope) {}

  void Read(Expression& expression);
  // Where a text that is no expression stops being one.
  std::size_t Stop() const { return stop_; }

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
  bool ElementCall(std::size_t open);
  bool Element(std::string_view number, std::string_view list);

  Operator ReadOperator();
  std::size_t MatchingParenthesis(std::size_t open) const;
  char Here() const { return position_ < text_.size() ? text_[position_] : '\0'; }
  void SkipBlanks() {
    while (const std::size_t length = BlankLength(text_.substr(position_))) position_ += length;
  }

  void Push(const Instruction& instruction) {
    code_.Add(instruction);
    deepest_ = std::max(deepest_, ++depth_);
  }
  void Combine(Operator op);
  void Negate();
  void DropTo(std::size_t depth);
  bool Fail(FaultReason why);

  InstructionList& code_;
  std::string_view text_;
  std::string_view separator_;
  const ReferenceScope* scope_;
  VariableTable::Slots variables_ = 0;
  std::size_t position_ = 0;
  std::size_t stop_ = 0;
  std::size_t depth_ = 0, deepest_ = 0;  // of the stack
  int nesting_ = 0;
  bool isMalformed_ = false;
  bool hasFailed_ = false;  // nothing after that place counts
};

void ExpressionParser::Read(Expression& expression) {
  const bool isSequence = Sequence();
  SkipBlanks();
  if (position_ < text_.size()) stop_ = std::max(stop_, position_);
  expression.IsComplete = isSequence && !isMalformed_ && position_ == text_.size();
  expression.Variables = variables_;
  expression.StackSize = static_cast<std::uint16_t>(deepest_);
}

void ExpressionParser::Combine(Operator op) {
  --depth_;
  // An operand that was just pushed can be taken from where it is.
  if (code_.Last().IsOperand() && code_.Last().Op == Operator::None) {
    code_.Last().Op = op;
  } else {
    code_.Add({0, Code::Combine, op});
  }
}

void ExpressionParser::Negate() {
  // A number that was just pushed can be negated at once.
  if (code_.Last().What == Code::Number && code_.Last().Op == Operator::None) {
    code_.Last().Value = -code_.Last().Value;
  } else {
    code_.Add({0, Code::Negate});
  }
}

void ExpressionParser::DropTo(std::size_t depth) {
  for (; depth_ > depth; --depth_) code_.Add({0, Code::Drop});
}

bool ExpressionParser::Fail(FaultReason why) {
  code_.Add({0, Code::Fail, Operator::None, 0, why});
  hasFailed_ = true;
  return false;
}

// Operands and operators up to what continues them no more. The result is false when an operand is missing;
// the value left is then that of what could be read. Pending operators bind tighter and tighter, so that five
// places suffice.
bool ExpressionParser::Sequence() {
  const std::size_t base = depth_;
  if (!Operand()) {
    DropTo(base);
    Push({});
    return false;
  }
  std::array<Operator, 5> pending{};
  std::size_t count = 0;
  const auto reduce = [&](int binding) {
    for (; count > 0 && BindingOf(pending[count - 1]) >= binding; --count) Combine(pending[count - 1]);
  };
  for (;;) {
    const std::size_t before = position_;
    const Operator op = ReadOperator();
    // This comes before the next operand is read: an operation takes the last values on the stack.
    reduce(op == Operator::None ? 0 : BindingOf(op));
    if (op == Operator::None) return true;
    const std::size_t depth = depth_;
    if (!Operand()) {
      DropTo(depth);
      position_ = before;
      reduce(0);
      return false;
    }
    pending[count++] = op;
  }
}

Operator ExpressionParser::ReadOperator() {
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

bool ExpressionParser::Operand() {
  bool isNegative = false;
  SkipBlanks();
  for (; Here() == '-' || Here() == '+'; SkipBlanks()) {
    if (Here() == '-') isNegative = !isNegative;
    ++position_;
  }
  if (!UnsignedOperand()) return false;
  if (isNegative) Negate();
  return true;
}

bool ExpressionParser::UnsignedOperand() {
  stop_ = std::max(stop_, position_);
  if (Here() == '(') return Group();
  if (Here() == '%') return Reference();
  return IsLetter(Here()) ? FunctionCall() : Number();
}

bool ExpressionParser::Number() {
  double number = 0;
  const std::size_t length = ReadUnsignedNumber(text_.substr(position_), number);
  if (length == 0) return false;
  if (!std::isfinite(number)) return Fail(FaultReason::Overflow);
  position_ += length;
  Push({number});
  return true;
}

// What follows the name must not become a part of the number that stands for it.
bool ExpressionParser::Reference() {
  if (!scope_) return false;
  const std::string_view reference = ReferenceAt(text_.substr(position_), scope_->Variables, scope_->Marks);
  const std::string name = NameOf(reference);
  const std::string_view rest = text_.substr(position_ + reference.size());
  const bool endsThere =
      rest.empty() || std::string_view(" +-*/^)").find(rest.front()) != std::string_view::npos;
  if (name.size() < 2 || !endsThere || IsSystemVariable(name)) return false;
  const std::size_t slot = scope_->Variables.SlotOf(name);
  if (slot == VariableTable::MaxVariables) return false;
  position_ += reference.size();
  variables_ |= VariableTable::Bit(slot);
  Push({0, Code::Variable, Operator::None, static_cast<std::uint8_t>(slot)});
  return true;
}

// What follows a readable beginning of a group is passed over, as after that of a whole text.
bool ExpressionParser::Group() {
  if (++nesting_ > MaxParentheses) return Fail(FaultReason::Nesting);
  const std::size_t open = position_++;
  const std::size_t begin = position_;
  const bool isSequence = Sequence();
  SkipBlanks();
  --nesting_;
  if (isSequence && Here() == ')') {
    ++position_;
    return true;
  }
  isMalformed_ = true;
  stop_ = std::max(stop_, position_);
  if (position_ == begin || hasFailed_) return false;
  const std::size_t close = MatchingParenthesis(open);
  if (close == std::string_view::npos) return false;
  position_ = close + 1;
  return true;
}

std::size_t ExpressionParser::MatchingParenthesis(std::size_t open) const {
  int depth = 0;
  for (std::size_t i = open; i < text_.size(); ++i) {
    if (text_[i] == '(') ++depth;
    if (text_[i] == ')' && --depth == 0) return i;
  }
  return std::string_view::npos;
}

bool ExpressionParser::FunctionCall() {
  std::size_t end = position_;
  while (end < text_.size() && IsLetter(text_[end])) ++end;
  const std::string_view name = text_.substr(position_, end - position_);
  if (EqualIgnoringCase(name, "RND")) return RoundCall(end);
  if (EqualIgnoringCase(name, "PI")) {
    position_ = end;
    Push({std::numbers::pi});
    return true;
  }
  if (end == text_.size() || text_[end] != '(') return false;
  if (EqualIgnoringCase(name, "NBP")) return CountCall(end);
  if (EqualIgnoringCase(name, "PAR")) return ElementCall(end);
  const auto function = FindFunction(name);
  if (!function) return false;
  position_ = end;
  if (!Group()) return false;
  code_.Add({0, Code::Call, Operator::None, *function});
  return true;
}

bool ExpressionParser::RoundCall(std::size_t end) {
  std::uint8_t decimals = 0;
  if (end < text_.size() && IsDigit(text_[end])) decimals = static_cast<std::uint8_t>(text_[end++] - '0');
  if (end == text_.size() || text_[end] != '(') return false;
  position_ = end;
  if (!Group()) return false;
  code_.Add({0, Code::Round, Operator::None, decimals});
  return true;
}

bool ExpressionParser::CountCall(std::size_t open) {
  const std::size_t close = MatchingParenthesis(open);
  if (close == std::string_view::npos) return false;
  const std::string_view list = Trim(text_.substr(open + 1, close - open - 1));
  // How many parameters there are depends on what the variables hold.
  if (scope_ && list.find('%') != std::string_view::npos) return false;
  Push({list.empty() ? 0 : static_cast<double>(CountOf(list, separator_) + 1)});
  position_ = close + 1;
  return true;
}

bool ExpressionParser::ElementCall(std::size_t open) {
  const std::size_t close = MatchingParenthesis(open);
  if (close == std::string_view::npos) return false;
  const std::string_view text = text_.substr(open + 1, close - open - 1);
  if (scope_ && text.find('%') != std::string_view::npos) return false;
  const std::size_t end = text.find(separator_);
  if (end == std::string_view::npos || !Element(text.substr(0, end), text.substr(end + separator_.size()))) {
    return Fail(FaultReason::NotAnElement);
  }
  position_ = close + 1;
  return true;
}

// The result is false where the list has no such element, or that is no number.
bool ExpressionParser::Element(std::string_view number, std::string_view list) {
  try {
    const Evaluation n = Evaluate(number, separator_);
    if (!n.HasValue || !n.Complete || n.Value < 1 || n.Value != std::trunc(n.Value)) return false;
    for (double before = 1; before < n.Value; ++before) {
      const std::size_t end = list.find(separator_);
      if (end == std::string_view::npos) return false;
      list.remove_prefix(end + separator_.size());
    }
    const Evaluation element = Evaluate(list.substr(0, list.find(separator_)), separator_);
    if (element.HasValue && element.Complete) Push({element.Value});
    return element.HasValue && element.Complete;
  } catch (const ScriptFault&) {
    return false;
  }
}

}  // namespace

void ReadExpression(InstructionList& code, std::string_view text, std::string_view separator,
                    const ReferenceScope* scope, Expression& expression) {
  ExpressionParser(code, text, separator, scope).Read(expression);
}

std::size_t EndOfExpression(std::string_view text, std::string_view separator) {
  InstructionList code;
  Expression expression;
  ExpressionParser parser(code, text, separator, nullptr);
  parser.Read(expression);
  return parser.Stop();
}

}  // namespace vaxel
