// The option letters of texts, and how a text is written at its place.
#pragma once

#include <optional>
#include <string_view>

#include "drawing/text_layout.h"
#include "interpreter/run_context.h"

namespace vaxel {

struct TextOptions {
  double Multiplier = 1;  // of the font's size
  bool Bold = false, Italic = false, Underline = false;
  std::optional<double> Rotation;  // degrees, counter-clockwise
  bool NextLine = false, Vertical = false;
  AnchorAlong Along = AnchorAlong::Start;
  std::optional<AnchorAcross> Across;
};

// Reads "*kRa#GBISUCXYDHV" in any order, with blanks anywhere. A letter that is not among those that count is
// a fault.
TextOptions ReadTextOptions(std::string_view text, std::string_view letters, const Separators& separators);

// The standing font as it is for one text with these options. A size that is not above 0 is a fault.
Font FontWith(Font standing, const TextOptions& options);

struct PlacedText {
  Point Baseline;  // its start
  TextExtent Extent;
};

// Writes a text that is anchored at a point of the surface; the current point is at its end.
PlacedText WriteText(DrawSurface& surface, std::string_view text, Point point, const TextAnchor& anchor,
                     const Font& font, Colour colour);

}  // namespace vaxel
