#include "base/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>

namespace vaxel {

namespace {

// Where the text of a number other than 0 ends in the buffer, its exponent with a small letter.
char* WriteNumber(double value, std::array<char, 40>& buffer) {
  return std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15)
      .ptr;
}

// Exactly representable, so that a division by one of them is rounded once.
constexpr std::array<double, 23> PowersOf10 = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                               1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Without writing and reading digits: the whole number of 15 digits, over a power of 10. None where that is
// not certain to be the same.
std::optional<double> RoundTo15Digits(double value) {
  constexpr double least = 1e-7, most = 1e15;
  const double magnitude = std::abs(value);
  if (std::numeric_limits<long double>::digits < 64 || !(magnitude >= least && magnitude < most))
    return std::nullopt;
  // The power of 10 from that of 2, at most one too large.
  constexpr double log10Of2 = 0.30103;
  int exponent = static_cast<int>(std::floor((std::ilogb(magnitude) + 1) * log10Of2));
  const auto power = [](int e) { return PowersOf10[static_cast<std::size_t>(e)]; };
  if (exponent >= 0 ? magnitude < power(exponent) : magnitude * power(-exponent) < 1) --exponent;
  const int decimals = 14 - exponent;
  if (decimals < 0 || decimals >= static_cast<int>(PowersOf10.size())) return std::nullopt;
  const long double scaled = static_cast<long double>(value) * power(decimals);
  const long long digits = std::llrint(scaled);
  // Near a half the error of the product decides.
  if (std::abs(scaled - static_cast<long double>(digits)) > 0.499L) return std::nullopt;
  return static_cast<double>(digits) / power(decimals);
}

}  // namespace

std::string NumberText(double value) {
  if (value == 0) return "0";
  std::array<char, 40> buffer{};
  std::string text(buffer.data(), WriteNumber(value, buffer));
  const std::size_t exponent = text.find('e');
  if (exponent != std::string::npos) text[exponent] = 'E';
  return text;
}

double AsWritten(double value) {
  if (value == 0) return 0;
  if (const std::optional<double> rounded = RoundTo15Digits(value)) return *rounded;
  std::array<char, 40> buffer{};
  double written = 0;
  std::from_chars(buffer.data(), WriteNumber(value, buffer), written);
  return written;
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
