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
  // What stands for one colour has one value in both languages.
  const std::pair<const char*, const char*> same[] = {
      {"gris", "Gray"},    {"Marron", "brown"},  {"Rose", "Pink"},      {"Or", "GOLD"},
      {"Ivoire", "Ivory"}, {"Argent", "Silver"}, {"Orange", "#FFA500"}, {"Rouge", "#ff0000"}};
  for (const auto& [one, other] : same) {
    ASSERT_TRUE(ColourValue(one, {})) << one;
    EXPECT_EQ(ColourValue(one, {}), ColourValue(other, {})) << one;
  }
}

TEST(ColourValue, ComputesParts) {
  const std::pair<const char*, Colour> cases[] = {{"RVB 2*50 (3 + 4)*2 FIX(2.5)", MakeColour(100, 14, 2)},
                                                  {"RVB 10-20,255/2,(1)", MakeColour(0, 128, 1)},
                                                  // A blank outside parentheses ends a part.
                                                  {"RVB 1 + 2", MakeColour(1, 0, 2)},
                                                  {"RVB (9, 1, 2", MakeColour(0, 0, 0)}};
  for (const auto& [text, value] : cases) EXPECT_EQ(ColourValue(text, {}), value) << text;
  EXPECT_THROW(ColourValue("RVB 1/0 0 0", {}), ScriptFault);
}

TEST(ColourValue, DoubtsWhatIsNoColour) {
  for (const char* text : {"", "  ", ", Rouge", "RVB 1 2 3", "#00FF00", "Rouge, what follows"}) {
    EXPECT_FALSE(ReadColour(text, {}).IsDoubtful) << text;
  }
  for (const char* text : {"Rouj", "#00FF0", "#00FF000", "#00FG00", "RVB a b c", "RVB 1 + 2", "N"}) {
    EXPECT_TRUE(ReadColour(text, {}).IsDoubtful) << text;
  }
  EXPECT_FALSE(ColourValue("#00FF00", {",", "#"}));
  EXPECT_FALSE(ColourValue("#00FF00", {"#", "§"}));
}

}  // namespace
}  // namespace vaxel
