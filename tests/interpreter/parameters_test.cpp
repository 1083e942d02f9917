#include "interpreter/parameters.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

TEST(Parameters, AreSplitAtTheFirstSeparator) {
  const Separators separators;
  Parameters parameters;
  parameters.Assign(" 1, ,Rouge/Red,RVB 1 2 3, 5", separators);
  EXPECT_EQ(parameters.Count(), 5U);
  EXPECT_EQ(parameters.Text(1), " 1");
  EXPECT_EQ(parameters.Trimmed(2), "");
  EXPECT_EQ(parameters.Text(5), " 5");
  EXPECT_EQ(parameters.Text(6), "");
  EXPECT_EQ(parameters.Rest(4), "RVB 1 2 3, 5");
  EXPECT_EQ(parameters.Rest(6), "");

  const Separators longer{"<>", "::"};
  parameters.Assign("0,5<>1::2<>", longer);
  EXPECT_EQ(parameters.Count(), 3U);
  EXPECT_EQ(parameters.Text(1), "0,5");
  EXPECT_EQ(parameters.Number(2), 1);
  EXPECT_EQ(parameters.Text(3), "");
}

TEST(Parameters, NumbersDropOneUnitMark) {
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"20", 20},         {" 20 ", 20},          {"-45°", -45},       {"5R", 5},
      {"20§0.5", 20},     {"20 §0.5", 20},       {"2*(3+1)°", 8},     {"5.", 5},
      {"", std::nullopt}, {"   ", std::nullopt}, {"°", std::nullopt}, {"§3", std::nullopt}};
  for (const auto& [text, value] : cases) EXPECT_EQ(NumberOf(text, {}), value) << text;
}

TEST(Parameters, NumbersMustBeExpressions) {
  for (const char* text : {"10mm", "abc", "2+*", "(3", "1,5", "45°°", "Rouge"}) {
    try {
      NumberOf(text, {});
      ADD_FAILURE() << text;
    } catch (const ScriptFault& fault) {
      EXPECT_EQ(fault.Reason(), FaultReason::Expression) << text;
    }
  }
  Parameters parameters;
  const Separators separators;
  parameters.Assign("1,,3", separators);
  EXPECT_EQ(parameters.NumberOr(2, 7), 7);
  EXPECT_THROW(parameters.RequiredNumber(2), ScriptFault);
}

}  // namespace
}  // namespace vaxel
