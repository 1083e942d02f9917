// The words of a script's line, for its colouring and for what is shown when the pointer rests on one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "drawing/colour.h"
#include "interpreter/variables.h"

namespace vaxel {

enum class TokenKind : std::uint8_t {
  Plain,  // never given; the ink of what is no token
  Keyword,
  UnknownKeyword,
  LabelName,  // its line, or the target of a jump
  Variable,
  UnknownVariable,  // nothing gives it a value
  Number,
  Text,        // a parameter that is drawn, or names a file or a font
  ColourName,  // or its parts, or its figures after "#"
  Separator,
  Comment
};

// Offsets in UTF-16 units from the line's start, as the platform's editors count.
struct ScriptToken {
  std::size_t Begin = 0, End = 0;
  TokenKind Kind = TokenKind::Plain;
  std::optional<Colour> Meant{};  // what a colour's name means
};

// What must be known around a line to understand it.
struct LineContext {
  vaxel::Separators Separators{};
  // Whether a name, "%" included, is a variable of the script; null: all names are taken for known.
  std::function<bool(std::string_view name)> IsVariable{};
  // Of a line that continues others: those, joined, without their marks of continuation.
  std::string_view Before{};
};

// The tokens in order, none within another. The line may hold anything; it has no end of its own.
std::vector<ScriptToken> TokensOfLine(std::string_view line, const LineContext& context);

// The colour in which a kind is written on a light or a dark ground, with a contrast of at least 4.5 to 1.
inline constexpr Colour LightGround = White, DarkGround = MakeColour(30, 30, 30);
Colour InkOf(TokenKind kind, bool isDark);

}  // namespace vaxel
