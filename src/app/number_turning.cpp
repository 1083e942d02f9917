#include "app/number_turning.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "app/utf16_offsets.h"
#include "base/text.h"

namespace vaxel {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The signs behind which a "-" or "+" takes two numbers together: the end of a number, of a name, of a group.
bool EndsOperand(char c) {
  constexpr std::string_view others = "_.)}°";  // the last one is two bytes, of which the second comes last
  return IsDigit(c) || IsLetter(c) || others.find(c) != std::string_view::npos;
}

// Letters beyond ASCII belong to names; the signs "°" and "§" do not.
bool IsInName(std::string_view line, std::size_t at) {
  const char c = line[at];
  if (IsDigit(c) || IsLetter(c) || c == '_') return true;
  constexpr std::string_view signs = "°§";
  const auto isSign = [&](std::size_t begin) {
    const std::string_view pair = line.substr(begin, 2);
    return pair == signs.substr(0, 2) || pair == signs.substr(2);
  };
  return static_cast<unsigned char>(c) >= 0x80 && !isSign(at) && !(at > 0 && isSign(at - 1));
}

std::size_t EndOfDigits(std::string_view line, std::size_t at) {
  while (at < line.size() && IsDigit(line[at])) ++at;
  return at;
}

bool BeginsNumber(std::string_view line, std::size_t at) {
  return IsDigit(line[at]) || (line[at] == '.' && at + 1 < line.size() && IsDigit(line[at + 1]));
}

std::size_t EndOfNumber(std::string_view line, std::size_t at) {
  at = EndOfDigits(line, at);
  if (at < line.size() && line[at] == '.') at = EndOfDigits(line, at + 1);
  if (at >= line.size() || (line[at] != 'E' && line[at] != 'e')) return at;
  const std::size_t sign = at + 1;
  const bool isSigned = sign < line.size() && (line[sign] == '+' || line[sign] == '-');
  const std::size_t digits = isSigned ? sign + 1 : sign;
  const std::size_t end = EndOfDigits(line, digits);
  return end > digits ? end : at;
}

// Where the number's sign stands, or the number itself begins.
std::size_t WithSign(std::string_view line, std::size_t begin) {
  if (begin == 0 || (line[begin - 1] != '-' && line[begin - 1] != '+')) return begin;
  const std::string_view before = Trim(line.substr(0, begin - 1));
  return before.empty() || !EndsOperand(before.back()) ? begin - 1 : begin;
}

std::size_t EndOfName(std::string_view line, std::size_t at) {
  if (line.substr(at, 2) == "%{") return std::min(line.find('}', at), line.size() - 1) + 1;
  ++at;
  while (at < line.size() && IsInName(line, at)) ++at;
  return at;
}

// A number in its parts: ±Mantissa · 10^(Exponent - Decimals).
struct NumberParts {
  bool IsNegative = false, HasPlus = false;
  long long Mantissa = 0;
  int Whole = 0, Decimals = 0;  // how many digits
  bool HasPoint = false;
  bool HasZeros = false;  // at its beginning, which are more than the number needs
  int Exponent = 0;
  std::string_view ExponentText;
};

std::optional<NumberParts> PartsOf(std::string_view number) {
  constexpr int mostDigits = 15, mostExponent = 15;
  NumberParts parts;
  if (!number.empty() && (number.front() == '-' || number.front() == '+')) {
    parts.IsNegative = number.front() == '-';
    parts.HasPlus = !parts.IsNegative;
    number.remove_prefix(1);
  }
  std::size_t at = 0;
  for (; at < number.size() && (IsDigit(number[at]) || number[at] == '.'); ++at) {
    if (number[at] == '.') {
      parts.HasPoint = true;
      continue;
    }
    ++(parts.HasPoint ? parts.Decimals : parts.Whole);
    if (parts.Whole + parts.Decimals > mostDigits) return std::nullopt;
    parts.Mantissa = parts.Mantissa * 10 + (number[at] - '0');
  }
  parts.HasZeros = parts.Whole > 1 && number.front() == '0';
  parts.ExponentText = number.substr(at);
  if (!parts.ExponentText.empty()) parts.Exponent = static_cast<int>(LeadingNumber(number.substr(at + 1)));
  if (std::abs(parts.Exponent) > mostExponent) return std::nullopt;
  return parts;
}

// The value times 10^power; none where it has too many digits.
std::optional<long long> Scaled(long long value, int power) {
  constexpr long long most = 1'000'000'000'000'000;
  for (; power > 0; --power) {
    if (std::abs(value) > most / 10) return std::nullopt;
    value *= 10;
  }
  return value;
}

std::string Written(const NumberParts& parts, long long mantissa, int decimals) {
  std::string digits = std::to_string(std::abs(mantissa));
  const auto places = static_cast<std::size_t>(decimals);
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  std::string whole = digits.substr(0, digits.size() - places);
  if (whole == "0" && parts.Whole == 0) whole.clear();
  const auto wanted = static_cast<std::size_t>(parts.Whole);
  if (parts.HasZeros && whole.size() < wanted) whole.insert(0, wanted - whole.size(), '0');
  std::string text = mantissa < 0 ? "-" : parts.HasPlus ? "+" : "";
  text += whole;
  if (decimals > 0 || parts.HasPoint) text += '.';
  return text.append(digits, digits.size() - places).append(parts.ExponentText);
}

}  // namespace

std::optional<NumberPlace> NumberAt(std::string_view line, std::size_t place) {
  // The place may be before the sign of a number that begins behind it.
  for (std::size_t at = 0; at < line.size() && at <= place + 1;) {
    if (BeginsNumber(line, at)) {
      const NumberPlace number{WithSign(line, at), EndOfNumber(line, at)};
      if (number.Begin <= place && place <= number.End) return number;
      at = number.End;
    } else if (line[at] == '%' || line[at] == '#' || IsInName(line, at)) {
      at = EndOfName(line, at);
    } else {
      ++at;
    }
  }
  return std::nullopt;
}

std::optional<std::string> NumberTurned(std::string_view number, long long tenths) {
  const auto parts = PartsOf(number);
  if (!parts) return std::nullopt;
  // The decimals of the value, and those that its sum with the tenths has.
  const int has = parts->Decimals - parts->Exponent;
  const bool isWhole = tenths % 10 == 0;
  const int needed = std::max({has, isWhole ? 0 : 1, -parts->Exponent});
  const auto value = Scaled(parts->IsNegative ? -parts->Mantissa : parts->Mantissa, needed - has);
  const auto step = isWhole ? Scaled(tenths / 10, needed) : Scaled(tenths, needed - 1);
  if (!value || !step) return std::nullopt;
  return Written(*parts, *value + *step, needed + parts->Exponent);
}

bool NumberTurner::GoesOn() const {
  return series_ && series_->Changes == changes_ && app_.Editor.Selection() == series_->Selection;
}

std::optional<NumberTurner::Series> NumberTurner::Begin() {
  ScriptEditor& editor = app_.Editor;
  const EditorRange selection = editor.Selection();
  const std::size_t line = editor.LineAt(selection.Begin);
  const EditorRange range = editor.RangeOfLines(line, line);
  const std::string text = editor.TextOf(range);
  const auto found = NumberAt(text, ByteAtUnit(text, selection.Begin - range.Begin));
  if (!found) return std::nullopt;
  Series series;
  series.Place.Begin = range.Begin + Utf16Length(std::string_view(text).substr(0, found->Begin));
  series.First = text.substr(found->Begin, found->End - found->Begin);
  series.Place.End = series.Place.Begin + series.First.size();
  series.Behind = series.Place.End - selection.Begin;
  return series;
}

// Undoes what the series has done so far, so that all of it stays one step. It is false where undoing brings
// something else.
bool NumberTurner::TakeBack(Series& series) {
  ScriptEditor& editor = app_.Editor;
  const EditorRange first{series.Place.Begin, series.Place.Begin + series.First.size()};
  const auto isThere = [&] { return first.End <= editor.Size() && editor.TextOf(first) == series.First; };
  editor.Undo();
  if (!isThere()) {
    editor.Redo();
    return false;
  }
  series.Place = first;
  return true;
}

bool NumberTurner::Turn(int tenths) {
  std::optional<Series> series = GoesOn() ? std::exchange(series_, std::nullopt) : Begin();
  if (!series) return false;
  const auto turned = NumberTurned(series->First, series->Tenths + tenths);
  if (!turned) {
    series_ = series;
    return false;
  }
  if (series->Tenths != 0 && !TakeBack(*series)) return false;
  series->Tenths += tenths;
  if (*turned != series->First) app_.Editor.Replace(series->Place, *turned);
  series->Place.End = series->Place.Begin + turned->size();
  const std::size_t cursor = series->Place.End - std::min(series->Behind, turned->size());
  series->Selection = {cursor, cursor};
  app_.Editor.Select(series->Selection);
  series->Changes = changes_;
  series_ = std::move(series);
  return true;
}

}  // namespace vaxel
