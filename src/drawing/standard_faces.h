// The twelve faces that every script may rely on: Times New Roman, Arial and Courier New, each regular, bold,
// italic and both. They are measured from tables, so that a script gives the same drawing everywhere.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "drawing/font_face.h"

namespace vaxel {

// Characters that follow one another in Unicode and in the table of widths.
struct CharacterRange {
  std::uint16_t First, Count, Offset;
};

// Widths are those of the Liberation fonts, which are metrically the same as the standard ones.
struct FaceTable {
  std::span<const CharacterRange> Ranges;
  std::span<const std::uint16_t> Widths;
  std::int16_t Ascent, Descent, UnderlinePosition, UnderlineThickness;

  FaceMetrics Metrics() const;
  bool Has(char32_t character) const { return WidthOf(character).has_value(); }
  // The width in parts of the size; there is none when the table lacks a character of the text.
  std::optional<double> Width(std::string_view text) const;

 private:
  std::optional<std::uint16_t> WidthOf(char32_t character) const;
};

struct StandardFamily {
  std::string_view Name;
  std::array<std::string_view, 2> SameWidths;  // families whose characters are as wide
  std::string_view Generic;                    // what style sheets call its kind
};

// Both are null for any other family. Names are compared without regard to case.
const StandardFamily* FindStandardFamily(std::string_view name);
const FaceTable* StandardFace(const FontFace& face);

// It measures where a target has no measurer of its own: every other font is as wide as Arial, every other
// character as wide as the font is high.
class StandInMeasurer : public TextMeasurer {
 public:
  FaceMetrics Metrics(const FontFace& face) override;
  double Width(const FontFace& face, std::string_view text) override;
  std::string Replacement(const FontFace& face) override;
};

}  // namespace vaxel
