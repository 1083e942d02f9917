// The value of an arithmetic expression.
//
// Operators are applied in this order, equal ones from left to right: "^", "MOD", "/", "*", then "+" and "-".
// It differs from the usual one (a division comes before a multiplication, a remainder before both) and
// existing scripts rely on it. A sign belongs to the number after it: -2^2 is 4. Numbers keep full double
// precision between operations.
//
// Functions, the name directly before its "(": SIN COS TAN ASIN ACOS ATAN in degrees, SINH COSH, LOG
// (decimal), LN, EXP, SQR, ABS, SGN, FIX (truncation), INT (the floor), RND and RND0 to RND9 (decimals,
// halves away from zero), NBP(text), the number of parameters in the text, and PAR(n, text), the number that
// is the n-th of them. PI is a number. Names may be in any case.
#pragma once

#include <string_view>

namespace vaxel {

struct Evaluation {
  double Value = 0;
  bool HasValue = false;  // false for an empty text
  // Whether the whole text was an expression. If not, Value is that of its beginning, 0 when it begins with
  // no number.
  bool Complete = true;
};

// How deep parentheses may be nested.
inline constexpr int MaxParentheses = 200;

// A division by zero, an argument outside a function's domain, a result that is not finite and parentheses
// nested too deep are faults. separator stands between the parameters that NBP and PAR count.
Evaluation Evaluate(std::string_view text, std::string_view separator = ",");

}  // namespace vaxel
