// The numbers written along a scale: which value stands at a mark, and its text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vaxel {

// The value at mark index of a power-law scale of number intervals, from start to end, which are as they were
// written and not as single precision holds them: see ShortestDecimal(). The value is not finite where number
// has no whole part.
float ValueAt(std::int16_t index, float number, double start, double end);

// A value with one of the prefixes from "a" to "E", or without.
struct PrefixedValue {
  double Value = 0;
  std::string_view Prefix;
};
// The prefix changes at the powers of ten in single precision: a value just below one has the smaller prefix.
PrefixedValue EngineeringPrefix(float value);

enum class ValueNotation : std::uint8_t {
  Plain,        // 1500
  Prefix,       // 1.5k
  Exponent,     // 1.5E3
  Pattern,      // "0.00E+00": 1.50E+03
  Superscript,  // 1.5×10³, and 10³ for 1000
  Decimal       // "0.00": 1500.00
};

struct ValueFormat {
  ValueNotation Notation = ValueNotation::Plain;
  // These are of a pattern: figures before the decimal mark, figures after it, how many of those are always
  // written.
  int WholeDigits = 1, Decimals = 0, FixedDecimals = 0;
  int ExponentDigits = 1;  // at least
  bool SignedExponent = false;
  // These are of decimals, as are the three before: WholeDigits is the least number of them.
  bool HasDecimalComma = false, IsGrouped = false;
  bool HasPlus = false;       // before values above 0
  bool HasMinusSign = false;  // the true one, as wide as the plus; else a hyphen
};

// "P", "E", "S" or a pattern of 0, #, . and + around an "E", in any case; anything else without "E" is plain.
// A malformed pattern gives none.
std::optional<ValueFormat> ReadValueFormat(std::string_view text);

// A pattern of decimals: 0 is a digit that is always written, # one that a 0 at the beginning or the end does
// not take; one decimal mark, "." or ","; blanks group the digits before it by threes, with thin blanks;
// before all of it "+" for a sign of values above 0 and "−" for a true minus. A malformed pattern gives none.
std::optional<ValueFormat> ReadDecimalFormat(std::string_view text);

// The value, which is finite, with its unit. A blank at the unit's beginning stands before the prefix too.
std::string ValueText(float value, const ValueFormat& format, std::string_view unit);

}  // namespace vaxel
