#include "text/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace vaxel {

std::string NumberText(double value) {
  if (value == 0) return "0";
  std::array<char, 40> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15).ptr;
  std::string text(buffer.data(), end);
  const std::size_t exponent = text.find('e');
  if (exponent != std::string::npos) text[exponent] = 'E';
  return text;
}

std::string FloatText(float value) {
  return NumberText(ShortestDecimal(value));
}

double ShortestDecimal(float value) {
  std::array<char, 24> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  double decimal = 0;
  std::from_chars(buffer.data(), end, decimal);
  return decimal;
}

std::string CoordinateText(double value) {
  return NumberText(std::round(value * 1e9) / 1e9);
}

std::string FixedText(double value, int decimals) {
  // A double has at most 309 digits before its decimal mark.
  std::array<char, 330> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals)
          .ptr;
  std::string text(buffer.data(), end);
  const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
  return isZero && text.front() == '-' ? text.substr(1) : text;
}

}  // namespace vaxel
