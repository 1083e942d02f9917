#include "interpreter/parameters.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace vaxel {
namespace {

TEST(Parameters, NumbersDropOneUnitMark) {
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"20", 20},         {" 20 ", 20},          {"-45°", -45},       {"5R", 5},
      {"20§0.5", 20},     {"20 §0.5", 20},       {"2*(3+1)°", 8},     {"5.", 5},
      {"", std::nullopt}, {"   ", std::nullopt}, {"°", std::nullopt}, {"§3", std::nullopt}};
  for (const auto& [text, value] : cases) EXPECT_EQ(NumberOf(text, {}), value) << text;
}

}  // namespace
}  // namespace vaxel
