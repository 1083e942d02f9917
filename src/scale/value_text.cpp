#include "scale/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "base/number_text.h"
#include "base/text.h"

namespace vaxel {
namespace {

struct PrefixRow {
  float Threshold;
  double Divisor, Multiplier;  // one of them is 1: a quotient by a power of ten is exact, its inverse is not
  std::string_view Prefix;
};

constexpr std::array<PrefixRow, 13> Prefixes = {{{1e18F, 1e18, 1, "E"},
                                                 {1e15F, 1e15, 1, "P"},
                                                 {1e12F, 1e12, 1, "T"},
                                                 {1e9F, 1e9, 1, "G"},
                                                 {1e6F, 1e6, 1, "M"},
                                                 {1e3F, 1e3, 1, "k"},
                                                 {1.0F, 1, 1, ""},
                                                 {1e-3F, 1, 1e3, "m"},
                                                 {1e-6F, 1, 1e6, "µ"},
                                                 {1e-9F, 1, 1e9, "n"},
                                                 {1e-12F, 1, 1e12, "p"},
                                                 {1e-15F, 1, 1e15, "f"},
                                                 {1e-18F, 1, 1e18, "a"}}};

// The shortest decimal form of a value: mantissa · 10^exponent, the mantissa from 1 to below 10, or 0.
struct ScientificText {
  std::string Mantissa;
  int Exponent = 0;
};

ScientificText SplitShortest(float value) {
  std::array<char, 24> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
  const auto mark = std::find(buffer.data(), end, 'e');
  ScientificText split{std::string(buffer.data(), mark), 0};
  const char* digits = mark[1] == '+' ? mark + 2 : mark + 1;
  std::from_chars(digits, end, split.Exponent);
  return split;
}

// Rounds a row of figures to so many, halves up; true when that made it one figure longer, as from 99 to 100.
bool RoundDigits(std::string& digits, std::size_t count) {
  const bool up = digits.size() > count && digits[count] >= '5';
  digits.resize(count, '0');
  if (!up) return false;
  std::size_t i = count;
  while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
  if (i > 0) {
    ++digits[i - 1];
    return false;
  }
  digits.insert(digits.begin(), '1');
  return true;
}

std::string PatternText(float value, const ValueFormat& format) {
  const ScientificText split = SplitShortest(std::abs(value));
  std::string digits = split.Mantissa;
  std::erase(digits, '.');
  const auto whole = static_cast<std::size_t>(format.WholeDigits);
  int exponent = split.Exponent - format.WholeDigits + 1;
  if (RoundDigits(digits, whole + static_cast<std::size_t>(format.Decimals))) ++exponent;
  std::string decimals = digits.substr(whole, static_cast<std::size_t>(format.Decimals));
  const std::size_t needed = decimals.find_last_not_of('0') + 1;
  decimals.resize(std::max(needed, static_cast<std::size_t>(format.FixedDecimals)));

  std::string exponentText = std::to_string(std::abs(exponent));
  const auto width = static_cast<std::size_t>(format.ExponentDigits);
  if (exponentText.size() < width) exponentText.insert(0, width - exponentText.size(), '0');
  const char* sign = exponent < 0 ? "-" : format.SignedExponent ? "+" : "";
  return (value < 0 ? "-" : "") + digits.substr(0, whole) + (decimals.empty() ? "" : ".") + decimals + "E" +
         sign + exponentText;
}

constexpr std::string_view ThinBlank = "\u202F";
constexpr std::string_view MinusSign = "−";

// The digits of a value, its sign aside, rounded to so many decimals: those before the decimal mark, without
// a zero at the beginning, and those after it.
struct DecimalDigits {
  std::string Whole, Decimals;
};

DecimalDigits RoundedDigits(float value, std::size_t decimals) {
  const ScientificText split = SplitShortest(std::abs(value));
  std::string digits = split.Mantissa;
  std::erase(digits, '.');
  int whole = split.Exponent + 1;
  if (whole <= 0) {
    digits.insert(0, static_cast<std::size_t>(1 - whole), '0');
    whole = 1;
  }
  if (RoundDigits(digits, static_cast<std::size_t>(whole) + decimals)) ++whole;
  const auto mark = static_cast<std::size_t>(whole);
  const std::size_t begin = std::min(digits.find_first_not_of('0'), mark);
  return {digits.substr(begin, mark - begin), digits.substr(mark, decimals)};
}

std::string DecimalText(float value, const ValueFormat& format) {
  auto [whole, decimals] = RoundedDigits(value, static_cast<std::size_t>(format.Decimals));
  const bool isZero = (whole + decimals).find_first_not_of('0') == std::string::npos;
  const auto least = static_cast<std::size_t>(format.WholeDigits);
  if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
  const std::size_t needed = decimals.find_last_not_of('0') + 1;
  decimals.resize(std::max(needed, static_cast<std::size_t>(format.FixedDecimals)));
  // A value without any digit is a 0 all the same.
  if (whole.empty() && decimals.empty()) whole = "0";
  constexpr std::size_t group = 3;
  if (format.IsGrouped) {
    for (std::size_t at = whole.size(); at > group;) whole.insert(at -= group, ThinBlank);
  }
  std::string sign;
  if (value < 0 && !isZero) sign = format.HasMinusSign ? MinusSign : "-";
  if (value > 0 && !isZero && format.HasPlus) sign = "+";
  const char* const mark = decimals.empty() ? "" : format.HasDecimalComma ? "," : ".";
  return sign + whole + mark + decimals;
}

std::string SuperscriptText(float value) {
  static constexpr std::array<std::string_view, 10> superscripts = {"⁰", "¹", "²", "³", "⁴",
                                                                    "⁵", "⁶", "⁷", "⁸", "⁹"};
  const ScientificText split = SplitShortest(value);
  std::string text = split.Mantissa == "1" ? "10" : split.Mantissa + "×10";
  for (char c : std::to_string(split.Exponent)) {
    text += c == '-' ? "⁻" : superscripts[static_cast<std::size_t>(c - '0')];
  }
  return text;
}

// The pattern's part before the "E".
bool ReadMantissaPattern(std::string_view text, ValueFormat& format) {
  if (text.empty() || text.find_first_not_of("0#.") != std::string_view::npos) return false;
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  constexpr std::size_t mostDigits = 15;
  if (point == 0 || text.size() > mostDigits || decimals.find('.') != std::string_view::npos) return false;
  format.WholeDigits = static_cast<int>(point);
  format.Decimals = static_cast<int>(decimals.size());
  format.FixedDecimals = static_cast<int>(decimals.find_last_of('0') + 1);
  return true;
}

bool ReadExponentPattern(std::string_view text, ValueFormat& format) {
  format.SignedExponent = text.starts_with('+');
  if (format.SignedExponent || text.starts_with('-')) text.remove_prefix(1);
  constexpr std::size_t mostDigits = 4;
  if (text.empty() || text.size() > mostDigits || text.find_first_not_of("0#") != std::string_view::npos) {
    return false;
  }
  format.ExponentDigits = static_cast<int>(std::count(text.begin(), text.end(), '0'));
  return true;
}

}  // namespace

float ValueAt(std::int16_t index, float number, double start, double end) {
  const double span = end - start;
  const double value = start + span * index / std::trunc(double{number});
  // What is left of a value of 0 is not one of its own.
  constexpr double noise = 1e-12;
  return std::abs(value) < noise * std::max(std::abs(start), std::abs(span)) ? 0 : static_cast<float>(value);
}

PrefixedValue EngineeringPrefix(float value) {
  const double decimal = ShortestDecimal(value);
  for (const PrefixRow& row : Prefixes) {
    if (value >= row.Threshold) return {decimal / row.Divisor * row.Multiplier, row.Prefix};
  }
  return {decimal, ""};
}

std::optional<ValueFormat> ReadValueFormat(std::string_view text) {
  const std::string upper = UpperCase(Trim(text));
  ValueFormat format;
  const std::size_t e = upper.find('E');
  if (upper.starts_with('P')) {
    format.Notation = ValueNotation::Prefix;
  } else if (upper == "E") {
    format.Notation = ValueNotation::Exponent;
  } else if (e != std::string::npos) {
    format.Notation = ValueNotation::Pattern;
    const std::string_view whole = upper;
    if (!ReadMantissaPattern(whole.substr(0, e), format) ||
        !ReadExponentPattern(whole.substr(e + 1), format)) {
      return std::nullopt;
    }
  } else if (upper.find('S') != std::string::npos) {
    format.Notation = ValueNotation::Superscript;
  }
  return format;
}

std::optional<ValueFormat> ReadDecimalFormat(std::string_view text) {
  ValueFormat format;
  format.Notation = ValueNotation::Decimal;
  text = Trim(text);
  for (;;) {
    if (text.starts_with('+')) {
      format.HasPlus = true;
      text.remove_prefix(1);
    } else if (text.starts_with(MinusSign)) {
      format.HasMinusSign = true;
      text.remove_prefix(MinusSign.size());
    } else {
      break;
    }
  }
  const std::size_t mark = std::min(text.find_first_of(".,"), text.size());
  format.HasDecimalComma = mark < text.size() && text[mark] == ',';
  std::string whole(text.substr(0, mark));
  const std::string_view decimals = text.substr(std::min(mark + 1, text.size()));
  format.IsGrouped = std::erase(whole, ' ') > 0;
  const auto isRow = [](std::string_view digits, std::string_view order) {
    const std::size_t change = std::min(digits.find(order[1]), digits.size());
    return digits.find_first_not_of(order[0]) >= change &&
           digits.substr(change).find_first_not_of(order[1]) == std::string_view::npos;
  };
  constexpr std::size_t mostDigits = 15;
  const bool isEmpty = whole.empty() && decimals.empty();
  if (isEmpty || text.size() > 2 * mostDigits || decimals.size() > mostDigits || !isRow(whole, "#0") ||
      !isRow(decimals, "0#")) {
    return std::nullopt;
  }
  format.WholeDigits = static_cast<int>(std::count(whole.begin(), whole.end(), '0'));
  format.Decimals = static_cast<int>(decimals.size());
  format.FixedDecimals = static_cast<int>(std::count(decimals.begin(), decimals.end(), '0'));
  return format;
}

std::string ValueText(float value, const ValueFormat& format, std::string_view unit) {
  const auto with = [&](const std::string& text) { return text + std::string(unit); };
  switch (format.Notation) {
    case ValueNotation::Prefix: {
      const PrefixedValue prefixed = EngineeringPrefix(value);
      const bool apart = unit.starts_with(' ');
      return NumberText(prefixed.Value) + (apart ? " " : "") + std::string(prefixed.Prefix) +
             std::string(unit.substr(apart ? 1 : 0));
    }
    case ValueNotation::Exponent: {
      const ScientificText split = SplitShortest(value);
      return with(split.Mantissa + "E" + std::to_string(split.Exponent));
    }
    case ValueNotation::Pattern:
      return with(PatternText(value, format));
    case ValueNotation::Superscript:
      return with(SuperscriptText(value));
    case ValueNotation::Decimal:
      return with(DecimalText(value, format));
    case ValueNotation::Plain:
      break;
  }
  return with(FloatText(value));
}

}  // namespace vaxel
