#include "commands/text_notation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// The length of the parenthesised expression at the start of the text. One that is not closed is a fault.
std::size_t ParenthesisLength(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return i + 1;
  }
  throw ScriptFault::Arithmetic(FaultReason::MissingParenthesis, Shorten(text, 60));
}

// Takes the value after an option's sign off the text: a number, or an expression in parentheses.
double TakeValue(std::string_view& text, const Separators& separators) {
  const std::size_t sign = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const std::string_view rest = text.substr(sign);
  double value = 0;
  std::size_t length = 0;
  if (rest.starts_with('(')) {
    length = ParenthesisLength(rest);
    value = StrictValue(rest.substr(0, length), separators).value_or(0);
  } else {
    length = ReadUnsignedNumber(rest, value);
  }
  const bool negative = text.starts_with('-');
  text.remove_prefix(length == 0 ? 0 : sign + length);
  return negative ? -value : value;
}

struct LetterRow {
  char Letter;
  void (*Set)(TextOptions& options);
};

constexpr std::array<LetterRow, 12> Letters = {
    {{'#', [](TextOptions& options) { options.NextLine = true; }},
     {'G', [](TextOptions& options) { options.Bold = true; }},
     {'B', [](TextOptions& options) { options.Bold = true; }},
     {'I', [](TextOptions& options) { options.Italic = true; }},
     {'S', [](TextOptions& options) { options.Underline = true; }},
     {'U', [](TextOptions& options) { options.Underline = true; }},
     {'C',
      [](TextOptions& options) {
        options.Along = AnchorAlong::Middle;
        options.Across = AnchorAcross::Middle;
      }},
     {'X', [](TextOptions& options) { options.Along = AnchorAlong::Middle; }},
     {'Y', [](TextOptions& options) { options.Across = AnchorAcross::Middle; }},
     {'D', [](TextOptions& options) { options.Along = AnchorAlong::End; }},
     {'H', [](TextOptions& options) { options.Across = AnchorAcross::Top; }},
     {'V', [](TextOptions& options) { options.Vertical = true; }}}};

// A word where options are awaited fails in its middle: it is shown too, and what may stand there.
[[noreturn]] void FailTextOption(std::string_view from, std::string_view text, std::string_view letters) {
  std::string shown = Shorten(from, 40);
  if (from.size() < Trim(text).size()) shown += " (" + Shorten(Trim(text), 40) + ")";
  ScriptFault fault(FaultReason::BadTextOption, shown);
  std::string known = "*k";
  for (char letter : letters) {
    known += ' ';
    known += letter;
    if (letter == 'R') known += "°";
  }
  fault.Add(TextId::TextOptionsHere, known);
  throw ScriptFault(std::move(fault));
}

}  // namespace

TextOptions ReadTextOptions(std::string_view text, std::string_view letters, const Separators& separators) {
  TextOptions options;
  std::string compact = UpperCase(WithPlainBlanks(text));
  std::erase(compact, ' ');
  bool multiplied = false;
  for (std::string_view rest = compact; !rest.empty();) {
    const std::string_view from = rest;
    const char letter = rest.front();
    rest.remove_prefix(1);
    const auto* row = std::find_if(Letters.begin(), Letters.end(),
                                   [letter](const LetterRow& known) { return known.Letter == letter; });
    const bool allowed = letters.find(letter) != std::string_view::npos;
    if (letter == '*' && !multiplied) {
      options.Multiplier = TakeValue(rest, separators);
      multiplied = true;
    } else if (letter == 'R' && allowed && !options.Rotation) {
      options.Rotation = TakeValue(rest, separators);
      if (rest.starts_with("°")) rest.remove_prefix(std::string_view("°").size());
    } else if (allowed && row != Letters.end()) {
      row->Set(options);
    } else {
      FailTextOption(from, text, letters);
    }
  }
  return options;
}

Font FontWith(Font standing, const TextOptions& options) {
  standing.Size *= options.Multiplier;
  if (!(standing.Size > 0)) throw ScriptFault(FaultReason::BadFontSize, NumberText(options.Multiplier));
  standing.Bold = standing.Bold || options.Bold;
  standing.Italic = standing.Italic || options.Italic;
  standing.Underline = standing.Underline || options.Underline;
  return standing;
}

PlacedText WriteText(DrawSurface& surface, std::string_view text, Point point, const TextAnchor& anchor,
                     const Font& font, Colour colour) {
  const TextExtent extent = surface.MeasureText(text, font);
  const Point start = BaselineStart(point, anchor, extent);
  surface.Text(start, anchor.Rotation, text, font, colour);
  return {start, extent};
}

}  // namespace vaxel
