#include "interpreter/colour_value.h"

#include <gtest/gtest.h>

#include <utility>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

TEST(ColourValue, ReadsNamesAndParts) {
  // clang-format off
  const std::pair<const char*, std::optional<Colour>> cases[] = {
      {"Rouge/Red", 255}, {"red", 255}, {" ROUGE ", 255}, {"Vert", 65280}, {"jaune", 65535},
      {"Blue", 16711680}, {"Violet", 16776960}, {"cyan", 16776960}, {"Magenta", 16711935},
      {"Blanc", 16777215}, {"noir", 0}, {"Rouge§x", 255}, {"Rouge, rest", 255}, {"RVB 255 128 0", 33023},
      {"rgb255,128,0", 33023}, {"RVB  300   -5 0", 255}, {"RGB 0,,255", 16711680}, {"RVB 1", 1},
      {"", std::nullopt}, {"Rouj", std::nullopt}, {"N", std::nullopt}, {"255", std::nullopt}};
  // clang-format on
  for (const auto& [text, value] : cases) EXPECT_EQ(ColourValue(text, {}), value) << text;
  EXPECT_EQ(ColourValue("RVB 1;2;3", {";", "#"}), MakeColour(1, 2, 3));
  EXPECT_THROW(ColourValue("RVB 40000 0 0", {}), ScriptFault);
}

}  // namespace
}  // namespace vaxel
