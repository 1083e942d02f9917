#include "interpreter/evaluator.h"

#include <cstddef>
#include <cstdint>

#include "base/text.h"
#include "interpreter/arithmetic.h"
#include "interpreter/expression_parser.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// Computes as it reads.
struct Computation {
  using Value = double;

  static double Number(double value) { return value; }
  static double Negative(double value) { return -value; }
  static double Combined(Operator op, double left, double right) { return Apply(op, left, right); }
  static double Called(std::uint8_t function, double argument) { return CallFunction(function, argument); }
  static double Rounded(double value, int decimals) { return RoundToDecimals(value, decimals); }
  // References are replaced before.
  static bool Reference(std::string_view, std::size_t&, double&) { return false; }
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
  Computation computation;
  Evaluation result;
  result.HasValue = true;
  result.Complete = ExpressionParser(computation, text, separator).Read(result.Value);
  return result;
}

}  // namespace vaxel
