#include "interpreter/expression.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/text.h"
#include "interpreter/expression_parser.h"
#include "interpreter/script_fault.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

constexpr std::size_t MaxStack = 32;

}  // namespace

// Notes the operations down in the order in which a stack of values takes them.
class ExpressionWriter {
 public:
  struct Value {};

  ExpressionWriter(Expression& expression, const Separators& separators)
      : expression_(expression), separators_(separators) {}

  Value Number(double value) {
    Push();
    Add({value, Expression::Code::Number});
    return {};
  }
  Value Negative(Value) {
    Add({0, Expression::Code::Negate});
    return {};
  }
  Value Combined(Operator op, Value, Value) {
    --depth_;
    Add({0, Expression::Code::Combine, op});
    return {};
  }
  Value Called(std::uint8_t function, Value) {
    Add({0, Expression::Code::Call, Operator::None, function});
    return {};
  }
  Value Rounded(Value, int decimals) {
    Add({0, Expression::Code::Round, Operator::None, static_cast<std::uint8_t>(decimals)});
    return {};
  }
  bool Reference(std::string_view text, std::size_t& length, Value&) {
    const std::string_view name = ReferenceName(text, separators_);
    length = name.size();
    // What follows a value must not become a part of its number.
    const std::string_view rest = text.substr(length);
    const bool endsThere =
        rest.empty() || std::string_view(" +-*/^)").find(rest.front()) != std::string_view::npos;
    if (length < 2 || IsSystemVariable(name) || !endsThere || expression_.references_.size() == MaxStack)
      return false;
    Push();
    Add({0, Expression::Code::Reference, Operator::None,
         static_cast<std::uint8_t>(expression_.references_.size())});
    expression_.references_.push_back({std::string(name)});
    return true;
  }

  bool FitsStack() const { return deepest_ <= MaxStack; }

 private:
  void Push() { deepest_ = std::max(deepest_, ++depth_); }
  void Add(const Expression::Instruction& instruction) { expression_.program_.push_back(instruction); }

  Expression& expression_;
  const Separators& separators_;
  std::size_t depth_ = 0, deepest_ = 0;
};

std::optional<Expression> Expression::Prepare(std::string_view text, const Separators& separators) {
  // How many parameters there are depends on what the variables hold.
  const bool counts =
      text.find('%') != std::string_view::npos && UpperCase(text).find("NBP") != std::string::npos;
  if (counts) return std::nullopt;
  Expression expression;
  ExpressionWriter writer(expression, separators);
  ExpressionWriter::Value value;
  try {
    const bool isExpression = ExpressionParser(writer, Trim(text), separators.First).Read(value);
    if (!isExpression || !writer.FitsStack()) return std::nullopt;
  } catch (const ScriptFault&) {
    // What fails already when it is read fails whenever it is run, with all that belongs to it.
    return std::nullopt;
  }
  // Only two operands and one operation have this length and end so.
  expression.isPair_ = expression.program_.size() == 3 && expression.program_[2].What == Code::Combine &&
                       expression.program_[1].What <= Code::Reference;
  return expression;
}

double Expression::ComputeAll(const VariableTable& variables) const {
  std::array<double, MaxStack> stack;  // NOLINT: what is not written is not read
  double* top = stack.data() - 1;
  for (const Instruction& instruction : program_) {
    switch (instruction.What) {
      case Code::Number:
        *++top = instruction.Value;
        break;
      case Code::Reference:
        *++top = variables.NumberAt(references_[instruction.Detail].Slot);
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
    }
  }
  return *top;
}

}  // namespace vaxel
