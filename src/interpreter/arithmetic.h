// The operators and functions of expressions. What has no result is a fault.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "interpreter/script_fault.h"

namespace vaxel {

// They stand in the order in which they are applied, the last one first.
enum class Operator : std::uint8_t { None, Minus, Plus, Times, Divide, Modulo, Power };

// Operators of equal binding are applied from left to right.
constexpr int BindingOf(Operator op) {
  return op == Operator::Plus ? static_cast<int>(Operator::Minus) : static_cast<int>(op);
}

double Remainder(double left, double right);
double Power(double left, double right);
[[noreturn]] void FailDivision();

// It stands in the header, for it is most of what a loop does.
// op is not None, which combines nothing.
inline double Apply(Operator op, double left, double right) {
  double result = right;
  switch (op) {
    case Operator::Plus:
      result = left + right;
      break;
    case Operator::Minus:
      result = left - right;
      break;
    case Operator::Times:
      result = left * right;
      break;
    case Operator::Divide:
      if (right == 0) FailDivision();
      result = left / right;
      break;
    case Operator::Modulo:
      return Remainder(left, right);
    case Operator::None:
    case Operator::Power:
      result = Power(left, right);
      break;
  }
  return std::abs(result) <= std::numeric_limits<double>::max() ? result : RequireFinite(result);
}

// The number of a function, for CallFunction; the name is in any case. An unknown name has none.
std::optional<std::uint8_t> FindFunction(std::string_view name);
double CallFunction(std::uint8_t function, double argument);

// Rounds to so many decimals, 0 to 9; halves go away from zero.
double RoundToDecimals(double x, int decimals);

}  // namespace vaxel
