// Where the parts of a text stand: pure arithmetic and pure text, no surface.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/point.h"
#include "drawing/standard_faces.h"

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
// face lacks one is written with the ordinary ones, small and raised: a fallback font's would not fit. A thin
// blank (U+202F), which the standard faces lack, is likewise a small ordinary one.
std::vector<TextPiece> PiecesOf(std::string_view text, const FaceTable& face);

// Which place of a text lies at its point, along the baseline and across it.
enum class AnchorAlong : std::uint8_t { Start, Middle, End };
enum class AnchorAcross : std::uint8_t { Top, Middle, Baseline };

// How a text is turned about its point, counter-clockwise in degrees, and which place of it lies there.
struct TextAnchor {
  double Rotation = 0;
  AnchorAlong Along = AnchorAlong::Middle;
  AnchorAcross Across = AnchorAcross::Middle;
};

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
Point BaselineStart(Point point, const TextAnchor& anchor, const TextExtent& extent);

// Where a text was written.
struct WrittenText {
  Point Anchor;    // the point that it was placed at
  Point Corner;    // upper left of its cell
  Point Baseline;  // its start
  double Height = 0;
  std::optional<double> Rotation;  // degrees; none for a text that is placed by its corner
};

// The point of the next line below a text, which is turned as that is or placed by its corner. A line that is
// aligned along or across its baseline counts from where the last text had its point, so that lines of one
// alignment stand below one another.
Point NextLinePoint(const WrittenText& last, bool turned, bool alignedAlong, bool alignedAcross);

// A character on a circle: the middle of its baseline, and how that is turned, in degrees.
struct CirclePlace {
  Point Middle;
  double Rotation = 0;
};

// The places of characters of these widths on a circle about 0,0, from an angle in degrees (0 right, 90 up)
// on, or with the middle of the text there. With a positive radius they run clockwise with their tops
// outward, with a negative one along the inside, counter-clockwise, with their tops to the centre. The radius
// is not 0.
std::vector<CirclePlace> PlacesOnCircle(double radius, double angle, bool centred,
                                        std::span<const double> widths);

// The anchor with which the side of a text that faces a direction lies at its point and with which it does
// not stand on its head.
TextAnchor AnchorFacing(Point direction, double rotation);
// The same place of a text that would stand on its head, turned by half so that it can be read.
TextAnchor TurnedUpright(const TextAnchor& anchor);

}  // namespace vaxel
