#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace vaxel {
namespace {

// The upper-case forms of code points that UTF-8 writes with two bytes; they take two bytes themselves.
std::uint32_t UpperCodePoint(std::uint32_t c) {
  const bool latin1 = c >= 0xE0 && c <= 0xFE && c != 0xF7;
  const bool greek = c >= 0x3B1 && c <= 0x3C9;
  const bool cyrillic = c >= 0x430 && c <= 0x44F;
  if (c == 0x3C2) return 0x3A3;
  if (latin1 || greek || cyrillic) return c - 0x20;
  if (c >= 0x450 && c <= 0x45F) return c - 0x50;
  if (c == 0xFF) return 0x178;
  if (c == 0x153) return 0x152;
  return c;
}

char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
}

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

constexpr std::string_view NoBreakSpace = "\u00A0", NarrowNoBreakSpace = "\u202F";

// Up to this many digits a number is an exact integer, and up to this power of ten an exact double: their
// quotient is then the nearest double, and no table is needed.
constexpr int ExactDigits = 15;
constexpr std::array<double, 16> ExactPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

}  // namespace

std::size_t WrongMinusLength(std::string_view text) {
  // The minus of mathematics, the hyphens and dashes, the small one and the wide one.
  constexpr auto dashes = std::to_array<std::string_view>(
      {"\u2212", "\u2010", "\u2011", "\u2012", "\u2013", "\u2014", "\u2015", "\uFE63", "\uFF0D"});
  for (std::string_view dash : dashes) {
    if (text.starts_with(dash)) return dash.size();
  }
  return 0;
}

std::string WithPlainMinus(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::size_t length = WrongMinusLength(text);
    plain += length > 0 ? '-' : text.front();
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return plain;
}

std::string_view TrimLeft(std::string_view text) {
  while (const std::size_t length = BlankLength(text)) text.remove_prefix(length);
  return text;
}

std::string_view Trim(std::string_view text) {
  text = TrimLeft(text);
  for (;;) {
    if (text.ends_with(' ')) {
      text.remove_suffix(1);
    } else if (text.empty() || !IsContinuation(text.back())) {
      return text;
    } else if (text.ends_with(NoBreakSpace)) {
      text.remove_suffix(NoBreakSpace.size());
    } else if (text.ends_with(NarrowNoBreakSpace)) {
      text.remove_suffix(NarrowNoBreakSpace.size());
    } else {
      return text;
    }
  }
}

std::string_view TrimText(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::size_t FindBlank(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (BlankLength(text.substr(i)) > 0) return i;
  }
  return std::string_view::npos;
}

std::string WithPlainBlanks(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = BlankLength(text);
    plain += length > 0 ? ' ' : text.front();
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return plain;
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (std::size_t i = 0; i < upper.size(); ++i) {
    const auto lead = static_cast<unsigned char>(upper[i]);
    if (lead >= 'a' && lead <= 'z') {
      upper[i] = static_cast<char>(lead - 0x20);
    } else if (lead >= 0xC2 && lead <= 0xDF && i + 1 < upper.size() && IsContinuation(upper[i + 1])) {
      const auto trail = static_cast<unsigned char>(upper[i + 1]);
      const std::uint32_t code = UpperCodePoint((lead & 0x1FU) << 6 | (trail & 0x3FU));
      upper[i] = static_cast<char>(0xC0 | code >> 6);
      upper[++i] = static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return upper;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (static_cast<unsigned char>(a[i] | b[i]) >= 0x80) return UpperCase(a) == UpperCase(b);
    if (AsciiUpper(a[i]) != AsciiUpper(b[i])) return false;
  }
  return true;
}

std::string_view DropLastCharacter(std::string_view text) {
  if (text.empty()) return text;
  std::size_t length = text.size() - 1;
  while (length > 0 && IsContinuation(text[length])) --length;
  return text.substr(0, length);
}

std::string Shorten(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return std::string(text);
  while (maxBytes > 0 && IsContinuation(text[maxBytes])) --maxBytes;
  return std::string(text.substr(0, maxBytes)) + "…";
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(line.size());
  text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
  return line;
}

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; at += part.size()) ++count;
  return count;
}

std::size_t ReadUnsignedNumber(std::string_view text, double& value) {
  std::uint64_t digits = 0;
  std::size_t count = 0, fraction = 0, i = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i, ++count) {
    if (count < ExactDigits) digits = digits * 10 + static_cast<std::uint64_t>(text[i] - '0');
  }
  if (i < text.size() && text[i] == '.') {
    ++i;
    for (; i < text.size() && IsDigit(text[i]); ++i, ++count, ++fraction) {
      if (count < ExactDigits) digits = digits * 10 + static_cast<std::uint64_t>(text[i] - '0');
    }
  }
  if (count == 0) return 0;
  const bool exponent = i < text.size() && (text[i] == 'E' || text[i] == 'e');
  if (!exponent && count <= ExactDigits) {
    value = static_cast<double>(digits) / ExactPowers[fraction];
    return i;
  }
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const auto length = static_cast<std::size_t>(end - text.data());
  if (error == std::errc::result_out_of_range) {
    const std::size_t e = text.substr(0, length).find_first_of("Ee");
    const bool tiny = e != std::string_view::npos && text[e + 1] == '-';
    value = tiny ? 0 : std::numeric_limits<double>::infinity();
  }
  return length;
}

double LeadingNumber(std::string_view text) {
  text = TrimLeft(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
  double value = 0;
  ReadUnsignedNumber(text, value);
  return negative ? -value : value;
}

bool IsNumber(std::string_view text) {
  text = Trim(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  double value = 0;
  return !text.empty() && ReadUnsignedNumber(text, value) == text.size();
}

}  // namespace vaxel
