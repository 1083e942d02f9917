// How graduations are drawn: strokes, and marks that are figures of their own.
#pragma once

#include <cstdint>
#include <string_view>

#include "drawing/pen.h"
#include "interpreter/run_context.h"

namespace vaxel {

enum class MarkShape : std::uint8_t {
  Stroke,
  Triangle,  // its tip on the support, its base at the mark's end
  Lozenge,   // from the support to the mark's end
  Dot        // about the mark's end
};

struct MarkStyle {
  double GradLength = 0;  // multiplied by the side of the scale
  Pen Stroke;
  Colour Ink = Black;
  MarkShape Shape = MarkShape::Stroke;
  double Width = 0;  // of a shape, millimetres
};

MarkStyle ReadMarkStyle(const RunContext& run, double length, std::string_view penText, Colour colour);

// Gives the style the shape that stands behind a mark's length: T, L or P and a width. The result is false
// for anything else but an empty text.
bool ReadMarkShape(const RunContext& run, std::string_view text, MarkStyle& style);

// The place is as ScaleSupport::MarkAt takes it.
void DrawMark(RunContext& run, double place, const MarkStyle& style);

}  // namespace vaxel
