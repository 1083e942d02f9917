#include "base/number_text.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vaxel {

namespace {

// Writes the text of a number other than 0, its exponent with a small letter, and returns where it ends in
// the buffer.
char* WriteNumber(double value, std::array<char, 40>& buffer) {
  return std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15)
      .ptr;
}

// All of them are exactly representable, so that a division by one of them is rounded once.
constexpr std::array<double, 23> PowersOf10 = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                               1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// What the product of two doubles lacks to be exact, where neither it nor its parts overflow.
double ProductError(double a, double b, double product) {
  constexpr double splitter = 134217729;  // 2^27 + 1: halves of 26 bits multiply exactly
  const double aHigh = a * splitter - (a * splitter - a), aLow = a - aHigh;
  const double bHigh = b * splitter - (b * splitter - b), bLow = b - bHigh;
  return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
}

// Rounds without writing and reading digits: the result is a whole number of 15 digits, over a power of 10.
// There is none where that is not certain to be the same.
std::optional<double> RoundTo15Digits(double value) {
  constexpr double least = 1e-7, most = 1e15;
  const double magnitude = std::abs(value);
  if (!(magnitude >= least && magnitude < most)) return std::nullopt;
  // The power of 10 from that of 2, at most one too large: 78913 / 2^18 is the logarithm of 2.
  const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1022;
  int exponent = binary * 78913 >> 18;
  const auto power = [](int e) { return PowersOf10[static_cast<std::size_t>(e)]; };
  if (exponent >= 0 ? magnitude < power(exponent) : magnitude * power(-exponent) < 1) --exponent;
  const int decimals = 14 - exponent;
  if (decimals < 0 || decimals >= static_cast<int>(PowersOf10.size())) return std::nullopt;
  const double scale = power(decimals);
  const double scaled = magnitude * scale;
  // Added and taken away again it leaves the nearest whole number, as the sum has no room for decimals.
  constexpr double noDecimals = 6755399441055744;  // 1.5 * 2^52
  const double digits = (scaled + noDecimals) - noDecimals;
  // Near a half the next digits decide.
  if (std::abs((scaled - digits) + ProductError(magnitude, scale, scaled)) > 0.499) return std::nullopt;
  return std::copysign(digits / scale, value);
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
