// How commands read pens, and what they draw with them: strokes, outlines and markers.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "drawing/pen.h"
#include "interpreter/run_context.h"

namespace vaxel {

// The pen that "width[mm]§LT§L1§L2§L3" describes, LT being C for square ends or R for round ones: what is not
// given stays as in the level's pen, a negative L1 stands for the level's pattern. The width is in device
// pixels and not yet raised to the least one. A width that is no expression is a fault.
Pen ReadPen(const RunContext& run, std::string_view text);

// The same for one stroke: the width is at least DrawSurface::LeastWidth().
Pen ReadStrokePen(const RunContext& run, std::string_view text);

// The line routine: DrawStroke in surface coordinates, for which a dashed stroke without length is a fault.
void DrawLine(RunContext& run, const Pen& pen, Point from, Point to, Colour colour);

// The closed outline of a figure of straight sides with the level's pen: stroke by stroke when it is dashed,
// where each side begins a pattern and one without length is left out.
void DrawOutline(RunContext& run, std::span<const Point> corners, Colour colour);

// A figure of straight sides: filled with the colour, or its outline.
void DrawFigure(RunContext& run, std::span<const Point> corners, Colour colour, bool filled);

// A plus sign, and an X sign, of that half-size around a point in surface coordinates.
void DrawPlus(RunContext& run, const Pen& pen, Point centre, double half, Colour colour);
void DrawCross(RunContext& run, const Pen& pen, Point centre, double half, Colour colour);

// Whether the colour parameter n says that nothing is to be drawn: "N".
bool IsNotDrawn(const Parameters& parameters, std::size_t n);

// The marker of a centre: a plus sign of half-size 1 in the colour of parameter n, unless that is "N".
void DrawMarker(RunContext& run, Point centre, const Parameters& parameters, std::size_t n);

}  // namespace vaxel
