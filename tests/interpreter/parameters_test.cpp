#include "interpreter/parameters.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

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
}

}  // namespace
}  // namespace vaxel
