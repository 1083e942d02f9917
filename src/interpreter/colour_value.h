// Colours between their names in a script and their numbers.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "drawing/colour.h"
#include "interpreter/variables.h"

namespace vaxel {

// The names of colours, in upper case; several may have one value.
struct NamedColour {
  std::string_view Name;
  Colour Value;
};
std::span<const NamedColour> ColourNames();

// What a text says of a colour.
struct ColourReading {
  std::optional<Colour> Value;
  bool IsDoubtful = false;  // the text, or a part of it, is no colour
};

// The colour that a text names, in French or English ("Rouge", "red", "Rouge/Red"), or gives as "RVB 255 128
// 0" or "RGB 255,128,2*64", whose parts may be expressions without blanks, or as "#FF8000" where "#" is no
// separator. Any other text gives none; an empty one is not doubtful. A part that has no result, or none of
// 16 bits, is a fault.
ColourReading ReadColour(std::string_view text, const Separators& separators);
inline std::optional<Colour> ColourValue(std::string_view text, const Separators& separators) {
  return ReadColour(text, separators).Value;
}
// The same for whoever looks at a text that nobody runs: what would be a fault gives none, and is doubtful.
ColourReading LookAtColour(std::string_view text, const Separators& separators);
// Whether the text begins like a colour of three parts, which separators may part.
bool BeginsColourParts(std::string_view text);

// The colour as a script says it: its French name when it has one, else "RVB 255 128 0".
std::string ColourText(Colour colour);

}  // namespace vaxel
