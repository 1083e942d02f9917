#include "drawing/text_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

#include "base/utf8.h"

namespace vaxel {
namespace {

// Those of the superscripts that the standard faces have, with which these may stand in one scale: 0.60 in
// all, 0.26 in Times New Roman to 0.275 in Arial.
constexpr double SuperscriptScale = 0.6;
constexpr double SuperscriptRise = 0.27;

bool IsPlainAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
}

bool IsDrawable(char32_t c) {
  const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
  const bool lineEnd = c == 0x2028 || c == 0x2029;
  const bool noCharacter = (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
  return !control && !lineEnd && !noCharacter;
}

constexpr char32_t Joiner = 0x200D;

bool JoinsTheOneBefore(char32_t c) {
  struct Range {
    char32_t First, Last;
  };
  // Combining marks, variation selectors and the joiner.
  static constexpr std::array<Range, 7> marks = {{{0x300, 0x36F},
                                                  {0x483, 0x489},
                                                  {0x1AB0, 0x1AFF},
                                                  {0x1DC0, 0x1DFF},
                                                  {0x20D0, 0x20FF},
                                                  {0xFE00, 0xFE0F},
                                                  {0xFE20, 0xFE2F}}};
  return c == Joiner || std::any_of(marks.begin(), marks.end(),
                                    [c](Range range) { return c >= range.First && c <= range.Last; });
}

// The ordinary form of a superscript figure or sign, and of the thin blank that groups digits; 0 for any
// other character.
char32_t OrdinaryForm(char32_t c) {
  switch (c) {
    case 0xB9:
      return U'1';
    case 0xB2:
      return U'2';
    case 0xB3:
      return U'3';
    case 0x207A:
      return U'+';
    case 0x207B:
      return U'−';
    case 0x202F:
      return U' ';
    default:
      return c == 0x2070 || (c >= 0x2074 && c <= 0x2079) ? U'0' + (c - 0x2070) : 0;
  }
}

double Dot(Point a, Point b) {
  return a.X * b.X + a.Y * b.Y;
}

// The last digit of a sine decides neither which side of a right angle a text is on nor a tie.
constexpr double Nothing = 1e-6;

bool StandsOnItsHead(double rotation) {
  return TextFrame(rotation).Up.Y < -Nothing;
}

}  // namespace

std::string DrawableText(std::string_view text) {
  if (IsPlainAscii(text)) return std::string(text);
  std::string drawable;
  while (!text.empty()) {
    const char32_t c = TakeCharacter(text);
    if (c == U'\t') {
      drawable += ' ';
    } else if (IsDrawable(c)) {
      AppendUtf8(drawable, c);
    }
  }
  return drawable;
}

std::vector<std::string_view> CharactersOf(std::string_view text) {
  std::vector<std::string_view> characters;
  char32_t last = 0;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t c = TakeCharacter(text);
    const std::string_view bytes = before.substr(0, before.size() - text.size());
    if (!characters.empty() && (JoinsTheOneBefore(c) || last == Joiner)) {
      std::string_view& whole = characters.back();
      whole = {whole.data(), whole.size() + bytes.size()};
    } else {
      characters.push_back(bytes);
    }
    last = c;
  }
  return characters;
}

std::vector<TextPiece> PiecesOf(std::string_view text, const FaceTable& face) {
  std::vector<TextPiece> pieces;
  while (!text.empty()) {
    TextPiece row;       // as written
    TextPiece ordinary;  // the same with ordinary figures
    bool complete = true;
    const auto nextForm = [&] {
      std::string_view rest = text;
      return text.empty() ? 0 : OrdinaryForm(TakeCharacter(rest));
    };
    const bool raised = nextForm() != 0;
    while (!text.empty() && (nextForm() != 0) == raised) {
      if (raised) AppendUtf8(ordinary.Text, nextForm());
      const char32_t c = TakeCharacter(text);
      complete = complete && face.Has(c);
      AppendUtf8(row.Text, c);
    }
    if (raised && !complete) {
      pieces.push_back({std::move(ordinary.Text), SuperscriptScale, SuperscriptRise});
    } else if (!pieces.empty() && pieces.back().Rise == 0) {
      pieces.back().Text += row.Text;
    } else {
      pieces.push_back(std::move(row));
    }
  }
  return pieces;
}

TextFrame::TextFrame(double rotation)
    : Along{std::cos(rotation * RadiansPerDegree), std::sin(rotation * RadiansPerDegree)},
      Up{-Along.Y, Along.X} {}

Point BaselineStart(Point point, const TextAnchor& anchor, const TextExtent& extent) {
  const TextFrame frame(anchor.Rotation);
  const double back = anchor.Along == AnchorAlong::Start    ? 0
                      : anchor.Along == AnchorAlong::Middle ? extent.Length / 2
                                                            : extent.Length;
  const double down = anchor.Across == AnchorAcross::Baseline ? 0
                      : anchor.Across == AnchorAcross::Top    ? extent.Ascent
                                                              : (extent.Ascent - extent.Descent) / 2;
  return point - frame.Along * back - frame.Up * down;
}

Point NextLinePoint(const WrittenText& last, bool turned, bool alignedAlong, bool alignedAcross) {
  const TextFrame frame(last.Rotation.value_or(0));
  const Point start = turned ? last.Baseline : last.Corner;
  const Point toAnchor = last.Anchor - start;
  Point point = start - frame.Up * last.Height;
  if (alignedAlong) point = point + frame.Along * Dot(toAnchor, frame.Along);
  if (alignedAcross) point = point + frame.Up * Dot(toAnchor, frame.Up);
  return point;
}

std::vector<CirclePlace> PlacesOnCircle(double radius, double angle, bool centred,
                                        std::span<const double> widths) {
  const double degreesPerUnit = 1 / (radius * RadiansPerDegree);
  const double turn = radius > 0 ? 90 : -90;
  if (centred) angle += std::accumulate(widths.begin(), widths.end(), 0.0) / 2 * degreesPerUnit;
  std::vector<CirclePlace> places;
  for (double width : widths) {
    const double middle = angle - width / 2 * degreesPerUnit;
    places.push_back({TextFrame(middle).Along * std::abs(radius), middle - turn});
    angle -= width * degreesPerUnit;
  }
  return places;
}

TextAnchor AnchorFacing(Point direction, double rotation) {
  if (StandsOnItsHead(rotation)) rotation += 180;
  const TextFrame frame(rotation);
  const double along = Dot(direction, frame.Along);
  const double up = Dot(direction, frame.Up);
  TextAnchor anchor;
  anchor.Rotation = rotation;
  if (std::abs(along) > std::abs(up) - Nothing) {
    anchor.Along = along < 0 ? AnchorAlong::Start : AnchorAlong::End;
  } else {
    anchor.Across = up < 0 ? AnchorAcross::Baseline : AnchorAcross::Top;
  }
  return anchor;
}

TextAnchor TurnedUpright(const TextAnchor& anchor) {
  if (!StandsOnItsHead(anchor.Rotation)) return anchor;
  TextAnchor turned{anchor.Rotation + 180, anchor.Along, anchor.Across};
  if (anchor.Along != AnchorAlong::Middle) {
    turned.Along = anchor.Along == AnchorAlong::Start ? AnchorAlong::End : AnchorAlong::Start;
  }
  if (anchor.Across != AnchorAcross::Middle) {
    turned.Across = anchor.Across == AnchorAcross::Top ? AnchorAcross::Baseline : AnchorAcross::Top;
  }
  return turned;
}

}  // namespace vaxel
