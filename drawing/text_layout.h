// Where the parts of a text stand: pure arithmetic and pure text, no surface.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/standard_faces.h"
#include "geometry/point.h"

namespace vaxel {

// Well-formed UTF-8 that every output can hold: TABs as blanks, other control characters, line separators and
// what is no character left out, malformed bytes as U+FFFD.
std::string DrawableText(std::string_view text);

// The characters of a well-formed text, each with the marks that are written onto it.
std::vector<std::string_view> CharactersOf(std::string_view text);

// A stretch of text in one size on one baseline.
struct TextPiece {
  std::string Text;
  double Scale = 1;  // of the size
  double Rise = 0;   // of its baseline above the text's, in parts of the size
};

// The pieces of which a text consists in a face. A row of superscript figures and signs ("⁻³") of which the
// face lacks one is written with the ordinary ones, small and raised: a fallback font's would not fit.
std::vector<TextPiece> PiecesOf(std::string_view text, const FaceTable& face);

// Which place of a text lies at its point, along the baseline and across it.
enum class AnchorAlong : std::uint8_t { Start, Middle, End };
enum class AnchorAcross : std::uint8_t { Top, Middle, Baseline };

// The size of a text on one baseline.
struct TextExtent {
  double Length = 0;
  double Ascent = 0, Descent = 0;  // of the character cell

  double Height() const { return Ascent + Descent; }
};

// The directions of a baseline that is turned counter-clockwise by an angle in degrees.
struct TextFrame {
  explicit TextFrame(double rotation);
  Point Along, Up;
};

// The start of the baseline of a text anchored at a point.
Point BaselineStart(Point point, const TextFrame& frame, const TextExtent& extent, AnchorAlong along,
                    AnchorAcross across);

}  // namespace vaxel
