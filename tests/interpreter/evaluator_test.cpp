#include "interpreter/evaluator.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "interpreter/foreign_habits.h"
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
      {"123456789012345678", 123456789012345678.0},
      // 3^2 = 9, 17 MOD 9 = 8, then 24/8 = 3 and 12/4 = 3, 2*3*3 = 18; 7 MOD 4 = 3, 3/3 = 1.
      {"1+2*24/17 MOD 3^2*12/4-7 MOD 4/3", 18}, {"2/4*8/2*3-1", 5}, {"9-4/2*3+2^2 MOD 3*5", 8},
      {"20 MOD 12 MOD 5/3-2*-1", 3}};
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

// The manual and the editor know functions by this list.
TEST(Evaluator, KnowsEveryFunctionOfTheList) {
  for (const std::string_view function : FunctionNames()) {
    const std::string name(function);
    const std::string text = name == "MOD"   ? "7 MOD 3"
                             : name == "PI"  ? "PI"
                             : name == "PAR" ? "PAR(2, 4, 5)"
                                             : name + "(1)";
    EXPECT_TRUE(Evaluate(text).HasValue && Evaluate(text).Complete) << text;
  }
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
      {"1E999", FaultReason::Overflow}, {"1/(1E308*10)", FaultReason::Overflow},
      {"PAR(1/0, 5)", FaultReason::NotAnElement}, {"PAR(1, 1/0)", FaultReason::NotAnElement},
      {"PAR(3, 5, 6)", FaultReason::NotAnElement}, {"SINH(1000)", FaultReason::Overflow},
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
  // Each group of these waits for what is in it.
  std::string nested = "1";
  for (int depth = 0; depth < 200; ++depth) nested = "2*(" + nested + ")-1";
  EXPECT_EQ(Evaluate(nested).Value, 1);
  // Only what stands in one another counts.
  std::string row = "0";
  for (int group = 0; group < 201; ++group) row += "+(1)";
  EXPECT_EQ(Evaluate(row).Value, 201);
}

}  // namespace
}  // namespace vaxel
