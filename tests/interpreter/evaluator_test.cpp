#include "interpreter/evaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

TEST(Evaluator, AppliesOperatorsInTheLanguagesOrder) {
  // clang-format off
  const std::pair<const char*, double> cases[] = {
      {"2+3*4", 14}, {"8/2*4", 16}, {"7*5 MOD 3", 14}, {"(2+3)*4", 20}, {"8*2/4", 4}, {"10 mod 4^2", 10},
      {"2^3^2", 64}, {"-2^2", 4}, {"-(2)^2", 4}, {"3-2^2", -1}, {"5--2^2", 1}, {"5---2", 3}, {"2^-2", 0.25},
      {"2*-3", -6}, {"5+-2", 3}, {"- - 3", 3}, {"10-3-2", 5}, {"10-3+2", 9}, {"100/10/5", 2},
      {"-7 MOD 3", -1}, {"7.5 MOD -2", 1.5}, {"2 * ( 3 + (4-1) ) ", 12}, {"+5", 5}, {".5+5.", 5.5},
      {"1E+3+1e-1", 1000.1}, {"1E3", 1000}, {"12", 12}, {" -12.5 ", -12.5}, {"0.1", 0.1},
      {"123456789012345678", 123456789012345678.0}};
  // clang-format on
  for (const auto& [text, value] : cases) {
    const Evaluation result = Evaluate(text);
    EXPECT_DOUBLE_EQ(result.Value, value) << text;
    EXPECT_TRUE(result.HasValue && result.Complete) << text;
  }
}

TEST(Evaluator, KnowsTheFunctions) {
  struct Case {
    const char* Text;
    double Value;
    double Tolerance;
  };
  // Angles use a rounded factor: the sine of 30 degrees is right to its seventh decimal.
  // clang-format off
  const Case cases[] = {
      {"sin(30)", 0.5, 5e-8}, {"COS(60)", 0.5, 5e-8}, {"TAN(45)", 1, 5e-8}, {"ASIN(0.5)", 30, 2e-6},
      {"acos(0.5)", 60, 2e-6}, {"ATAN(1)", 45, 2e-6}, {"SINH(1)", 1.1752011936438014, 1e-15},
      {"COSH(1)", 1.5430806348152437, 1e-15}, {"SQR(2)", 1.4142135623730951, 0}, {"ABS(-3)", 3, 0},
      {"SGN(-2)", -1, 0}, {"SGN(0)", 0, 0}, {"FIX(-2.7)", -2, 0}, {"RND(2.5)", 3, 0}, {"RND(-2.5)", -3, 0},
      {"RND2(3.14159)", 3.14, 0}, {"RND2(1.005)", 1.01, 0}, {"RND0(0.4)", 0, 0}, {"RND9(1E20)", 1e20, 0},
      {"-SQR(9)^2", 9, 0}, {"2*SIN(30)+ABS(1-3)", 3, 1e-7}, {"NBP(a,b,,c)", 4, 0}, {"NBP( )", 0, 0},
      {"NBP((1),(2))+1", 3, 0}};
  // clang-format on
  for (const Case& c : cases) EXPECT_NEAR(Evaluate(c.Text).Value, c.Value, c.Tolerance) << c.Text;
  // The logarithm of a power of ten is a whole number, so that FIX does not fall short of it.
  for (int k = -15; k <= 15; ++k) {
    EXPECT_EQ(Evaluate("LOG(1E" + std::string(k < 0 ? "" : "+") + std::to_string(k) + ")").Value, k);
  }
  EXPECT_EQ(Evaluate("NBP(1;2;3)", ";").Value, 3);
}

// Numbers and operators of a flat expression, reduced one operator kind a pass, as the order is defined. Not
// finite when an operation on the way has no result.
double ReducedByPasses(std::vector<double> numbers, std::vector<std::string> operators) {
  double onTheWay = 0;
  const auto pass = [&](const std::string& kinds, auto apply) {
    for (std::size_t i = 0; i < operators.size();) {
      if (kinds.find(operators[i]) == std::string::npos) {
        ++i;
        continue;
      }
      numbers[i] = apply(operators[i], numbers[i], numbers[i + 1]);
      onTheWay += 0 * numbers[i];
      numbers.erase(numbers.begin() + static_cast<std::ptrdiff_t>(i) + 1);
      operators.erase(operators.begin() + static_cast<std::ptrdiff_t>(i));
    }
  };
  pass("^", [](auto&, double a, double b) { return std::pow(a, b); });
  pass("MOD", [](auto&, double a, double b) { return std::fmod(a, b); });
  pass("/", [](auto&, double a, double b) { return a / b; });
  pass("*", [](auto&, double a, double b) { return a * b; });
  pass("+-", [](auto& op, double a, double b) { return op == "+" ? a + b : a - b; });
  return numbers[0] + onTheWay;
}

TEST(Evaluator, AgreesWithThePassesOnRandomExpressions) {
  std::mt19937 random(20);
  const std::vector<std::string> kinds = {"^", "MOD", "/", "*", "+", "-"};
  int compared = 0;
  for (int round = 0; round < 3000; ++round) {
    std::vector<double> numbers;
    std::vector<std::string> operators;
    std::string text;
    for (std::size_t left = 2 + random() % 7; left > 0; --left) {
      numbers.push_back(static_cast<double>(random() % 9) - 4);
      text += std::to_string(static_cast<int>(numbers.back()));
      if (left == 1) break;
      operators.push_back(kinds[random() % kinds.size()]);
      text += " " + operators.back() + " ";
    }
    const double expected = ReducedByPasses(numbers, operators);
    if (!std::isfinite(expected)) {
      EXPECT_THROW(Evaluate(text), ScriptFault) << text;
    } else {
      EXPECT_DOUBLE_EQ(Evaluate(text).Value, expected) << text;
      ++compared;
    }
  }
  EXPECT_GT(compared, 1000);
}

TEST(Evaluator, StopsWhereTheTextIsNoExpression) {
  const std::pair<const char*, double> cases[] = {
      {"10m", 10},  {"2+3abc", 5}, {"2*3x+4", 6},  {"abc", 0},    {"2+", 2},       {"2 3", 2},
      {"(2+3", 0},  {"5+(2", 5},   {"()", 0},      {"(2x)*3", 6}, {"2)", 2},       {"SIN 30", 0},
      {"SIN30", 0}, {"FOO(3)", 0}, {"1.2.3", 1.2}, {"*3", 0},     {"RND12(3)", 0}, {"-", 0}};
  for (const auto& [text, value] : cases) {
    const Evaluation result = Evaluate(text);
    EXPECT_EQ(result.Value, value) << text;
    EXPECT_FALSE(result.Complete) << text;
  }
  EXPECT_FALSE(Evaluate("   ").HasValue);
}

TEST(Evaluator, SaysWhyThereIsNoResult) {
  // clang-format off
  const std::pair<std::string, FaultReason> cases[] = {
      {"1/0", FaultReason::DivisionByZero}, {"5 MOD 0", FaultReason::DivisionByZero},
      {"0^-1", FaultReason::DivisionByZero}, {"SQR(-1)", FaultReason::Domain},
      {"LOG(0)", FaultReason::Domain}, {"LOG(-1)", FaultReason::Domain},
      {"ASIN(1.01)", FaultReason::Domain}, {"ACOS(-2)", FaultReason::Domain},
      {"(-8)^0.5", FaultReason::Domain}, {"1E308*10", FaultReason::Overflow},
      {"1E999", FaultReason::Overflow}, {"SINH(1000)", FaultReason::Overflow},
      {std::string(100000, '('), FaultReason::Nesting},
      {std::string(201, '(') + "1" + std::string(201, ')'), FaultReason::Nesting}};
  // clang-format on
  for (const auto& [text, reason] : cases) {
    try {
      Evaluate(text);
      ADD_FAILURE() << text.substr(0, 20) << " has a result";
    } catch (const ScriptFault& fault) {
      EXPECT_EQ(fault.Reason(), reason) << text.substr(0, 20);
    }
  }
  EXPECT_EQ(Evaluate(std::string(200, '(') + "1" + std::string(200, ')')).Value, 1);
}

}  // namespace
}  // namespace vaxel
