#include "commands/text_notation.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "interpreter/script_fault.h"
#include "text/number_text.h"
#include "text/text.h"

namespace vaxel {
namespace {

// The length of the parenthesised expression at the start of the text. A fault when it is not closed.
std::size_t ParenthesisLength(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return i + 1;
  }
  throw ScriptFault::Arithmetic(FaultReason::MissingParenthesis, Shorten(text, 60));
}

// The length of the number, sign included, at the start of the text.
std::size_t NumberLength(std::string_view text) {
  const std::size_t sign = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  double ignored = 0;
  const std::size_t digits = ReadUnsignedNumber(text.substr(sign), ignored);
  return digits == 0 ? 0 : sign + digits;
}

// Takes the value behind an option's sign off the text: a number, or an expression in parentheses.
double TakeValue(std::string& text, std::size_t at, const Separators& separators) {
  const std::string_view rest = std::string_view(text).substr(at);
  const bool expression = rest.starts_with('(');
  const std::size_t length = expression ? ParenthesisLength(rest) : NumberLength(rest);
  const double value = expression ? StrictValue(rest.substr(0, length), separators).value_or(0)
                                  : LeadingNumber(rest.substr(0, length));
  text.erase(at, length);
  return value;
}

void ReadLetter(char letter, TextOptions& options) {
  switch (letter) {
    case '#':
      options.NextLine = true;
      break;
    case 'G':
    case 'B':
      options.Bold = true;
      break;
    case 'I':
      options.Italic = true;
      break;
    case 'S':
    case 'U':
      options.Underline = true;
      break;
    case 'C':
      options.Along = AnchorAlong::Middle;
      options.Across = AnchorAcross::Middle;
      break;
    case 'X':
      options.Along = AnchorAlong::Middle;
      break;
    case 'Y':
      options.Across = AnchorAcross::Middle;
      break;
    case 'D':
      options.Along = AnchorAlong::End;
      break;
    case 'H':
      options.Across = AnchorAcross::Top;
      break;
    case 'V':
      options.Vertical = true;
      break;
    default:
      break;
  }
}

}  // namespace

TextOptions ReadTextOptions(std::string_view text, std::string_view letters, const Separators& separators) {
  TextOptions options;
  std::string rest = UpperCase(text);
  std::erase(rest, ' ');
  if (const std::size_t star = rest.find('*'); star != std::string::npos) {
    options.Multiplier = TakeValue(rest, star + 1, separators);
    rest.erase(star, 1);
  }
  const bool turns = letters.find('R') != std::string_view::npos;
  if (const std::size_t turn = rest.find('R'); turns && turn != std::string::npos) {
    options.Rotation = TakeValue(rest, turn + 1, separators);
    rest.erase(turn, rest.substr(turn + 1).starts_with("°") ? 1 + std::string_view("°").size() : 1);
  }
  for (char letter : rest) {
    if (letters.find(letter) == std::string_view::npos) {
      throw ScriptFault(FaultReason::BadTextOption, Shorten(rest.substr(rest.find(letter)), 40));
    }
    ReadLetter(letter, options);
  }
  return options;
}

TextFont::TextFont(DrawSurface& surface, const TextOptions& options)
    : surface_(surface), standing_(surface.Font) {
  const double size = standing_.Size * options.Multiplier;
  if (!(size > 0)) throw ScriptFault(FaultReason::BadFontSize, NumberText(options.Multiplier));
  surface_.Font.Size = size;
  surface_.Font.Bold = standing_.Bold || options.Bold;
  surface_.Font.Italic = standing_.Italic || options.Italic;
  surface_.Font.Underline = standing_.Underline || options.Underline;
}

PlacedText WriteText(DrawSurface& surface, std::string_view text, Point point, double rotation,
                     AnchorAlong along, AnchorAcross across, Colour colour) {
  const TextExtent extent = surface.MeasureText(text);
  const Point start = BaselineStart(point, TextFrame(rotation), extent, along, across);
  surface.TextOutRotated(start, rotation, text, colour);
  return {start, extent};
}

}  // namespace vaxel
