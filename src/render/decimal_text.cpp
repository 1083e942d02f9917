#include "render/decimal_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vaxel {

void AppendFixed(std::string& text, double value, int decimals) {
  static constexpr std::array<std::int64_t, 7> powers = {1, 10, 100, 1'000, 10'000, 100'000, 1'000'000};
  const std::int64_t scale = powers[static_cast<std::size_t>(decimals)];
  std::int64_t scaled = std::llround(value * static_cast<double>(scale));
  if (scaled < 0) {
    text += '-';
    scaled = -scaled;
  }
  std::array<char, 24> whole{};
  text.append(whole.data(), std::to_chars(whole.data(), whole.data() + whole.size(), scaled / scale).ptr);
  if (decimals == 0) return;
  text += '.';
  std::int64_t rest = scaled % scale;
  for (std::int64_t place = scale / 10; place > 0; place /= 10) {
    text += static_cast<char>('0' + rest / place);
    rest %= place;
  }
}

void AppendShort(std::string& text, double value, int decimals) {
  AppendFixed(text, value, decimals);
  if (decimals == 0) return;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
}

void AppendColour(std::string& text, Colour colour) {
  static constexpr char digits[] = "0123456789abcdef";
  text += '#';
  for (std::uint32_t part : {RedOf(colour), GreenOf(colour), BlueOf(colour)}) {
    text += digits[part >> 4];
    text += digits[part & 15];
  }
}

}  // namespace vaxel
