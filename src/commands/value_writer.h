// How the figures of a scale are placed and written.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/point.h"
#include "drawing/colour.h"
#include "drawing/text_layout.h"
#include "interpreter/run_context.h"

namespace vaxel {

// The direction in which the texts of a command read.
enum class Baseline : std::uint8_t { Level, Tangent, Ray };

struct TextStyle {
  Baseline Form = Baseline::Level;
  std::optional<double> Angle;  // degrees
  bool Relative = false;        // the angle is added to the form's own direction
  bool FacesScale = false;      // the anchor is the side next to the scale
  AnchorAlong Along = AnchorAlong::Middle;
  AnchorAcross Across = AnchorAcross::Middle;
};

// "[[R]angle[{J;GDBH}]]".
TextStyle ReadTextStyle(const RunContext& run, Baseline form, std::string_view text);

// The box around the figures of a text, which may be turned.
struct FigureBox {
  std::array<Point, 4> Corners;  // counter-clockwise
};

// Whether a line with so much room on both sides together lies between two boxes.
bool AreApartBy(const FigureBox& a, const FigureBox& b, double room);

class ValueWriter {
 public:
  ValueWriter(RunContext& run, const TextStyle& style) : run_(run), style_(style) {}

  // The place is as ScaleSupport::MarkAt takes it, distance is counted from the support, before the side of
  // the scale is taken into account.
  void Write(double place, double distance, std::string_view text, Colour colour) const;
  double WidthOf(std::string_view text) const;
  // Where the text's figures would stand, in surface coordinates.
  FigureBox BoxOf(double place, double distance, std::string_view text) const;

 private:
  struct Placing {
    Point At;
    TextAnchor Anchor;
  };
  Placing PlacingAt(double place, double distance) const;

  RunContext& run_;
  TextStyle style_;
};

}  // namespace vaxel
