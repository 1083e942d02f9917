#include "app/script_colours.h"

namespace vaxel {

std::vector<ColouredRange> ColoursOfLine(std::string_view line, const LineContext& context, bool isDark) {
  const Colour plain = InkOf(TokenKind::Plain, isDark);
  std::vector<ColouredRange> ranges;
  for (const ScriptToken& token : TokensOfLine(line, context)) {
    const Colour ink = InkOf(token.Kind, isDark);
    if (ink != plain) ranges.push_back({token.Begin, token.End, ink});
  }
  return ranges;
}

std::optional<Colour> ColourNamedIn(std::string_view line) {
  for (const ScriptToken& token : TokensOfLine(line, {})) {
    if (token.Meant) return token.Meant;
  }
  return std::nullopt;
}

}  // namespace vaxel
