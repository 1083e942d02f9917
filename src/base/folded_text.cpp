#include "base/folded_text.h"

#include <array>

#include "base/text.h"
#include "base/utf8.h"

namespace vaxel {
namespace {

// The letters from U+00C0 to U+00DF without their accents; empty where there is none to take off.
constexpr std::array<std::string_view, 32> Plain = {"A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E",
                                                    "E", "I", "I", "I", "I", "",  "N",  "O", "O", "O", "O",
                                                    "O", "",  "O", "U", "U", "U", "U",  "Y", "",  "SS"};

}  // namespace

std::string FoldedText(std::string_view text) {
  const std::string upper = UpperCase(text);
  std::string folded;
  for (std::string_view rest = upper; !rest.empty();) {
    const std::string_view from = rest;
    const char32_t c = TakeCharacter(rest);
    const std::string_view character = from.substr(0, from.size() - rest.size());
    const std::string_view plain = c >= 0xC0 && c <= 0xDF ? Plain[c - 0xC0] : c == 0x152 ? "OE" : "";
    folded += plain.empty() ? character : plain;
  }
  return folded;
}

}  // namespace vaxel
