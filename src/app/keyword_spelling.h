// How the keywords of a typed line are to be spelled.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/script_tokens.h"

namespace vaxel {

// A part of a line that gets another text. Offsets are in UTF-16 units from the line's start.
struct LineEdit {
  std::size_t Begin = 0, End = 0;
  std::string Text{};
};

// What makes the keywords of the line, also those behind THEN, such as users see them: "si" becomes "IF",
// "cercle" becomes "Cercle". One edit reaches from the first keyword that changes to the last; nothing else
// in it changes. There is none for a line that is right.
std::optional<LineEdit> SpellKeywords(std::string_view line, const LineContext& context);

}  // namespace vaxel
