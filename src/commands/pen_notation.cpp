#include "commands/pen_notation.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/text.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::string_view MillimetreMark = "MM";

double ReadWidth(const RunContext& run, std::string_view text, double inForce) {
  const bool inMillimetres =
      text.size() >= MillimetreMark.size() &&
      EqualIgnoringCase(text.substr(text.size() - MillimetreMark.size()), MillimetreMark);
  if (inMillimetres) text.remove_suffix(MillimetreMark.size());
  const auto value = StrictValue(text, run.Separators);
  if (!value) return inForce;
  return inMillimetres ? *value / run.Surface.PixelSize() : *value;
}

}  // namespace

Pen ReadPen(const RunContext& run, std::string_view text) {
  const Pen& level = run.Level().CurrentPen;
  Pen pen = level;
  if (text.empty()) return pen;
  const std::vector<std::string_view> parts = SplitAt(text, run.Separators.Second);
  pen.Width = ReadWidth(run, Trim(parts[0]), level.Width);
  if (parts.size() > 1) {
    const std::string_view ends = Trim(parts[1]);
    const char letter = ends.empty() ? '\0' : static_cast<char>(ends.front() & ~0x20);
    if (letter == 'C' || letter == 'R') pen.SquareEnds = letter == 'C';
  }
  if (parts.size() > 2) {
    const double length = LeadingNumber(parts[2]);
    if (length >= 0) pen.L1 = pen.L2 = pen.L3 = length;
  }
  if (parts.size() > 3 && LeadingNumber(parts[3]) > 0) pen.L2 = LeadingNumber(parts[3]);
  if (parts.size() > 4 && LeadingNumber(parts[4]) > 0) pen.L3 = LeadingNumber(parts[4]);
  return pen;
}

Pen ReadStrokePen(const RunContext& run, std::string_view text) {
  Pen pen = ReadPen(run, text);
  pen.Width = std::max(pen.Width, run.Surface.LeastWidth());
  return pen;
}

void DrawLine(RunContext& run, const Pen& pen, Point from, Point to, Colour colour) {
  if (!DrawStroke(run.Surface, pen, from, to, colour)) {
    throw ScriptFault::Arithmetic(FaultReason::DashWithoutLength);
  }
}

void DrawOutline(RunContext& run, std::span<const Point> corners, Colour colour) {
  const Pen& pen = run.Level().CurrentPen;
  if (!pen.Dashed()) {
    run.Surface.Polygon(corners, run.Surface.StandingStroke(colour));
    return;
  }
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Point to = corners[(i + 1) % corners.size()];
    if (corners[i] != to) DrawLine(run, pen, corners[i], to, colour);
  }
}

void DrawFigure(RunContext& run, std::span<const Point> corners, Colour colour, bool filled) {
  if (filled) {
    run.Surface.Polygon(corners, run.Surface.StandingStroke(colour), Fill(colour));
  } else {
    DrawOutline(run, corners, colour);
  }
}

void DrawPlus(RunContext& run, const Pen& pen, Point centre, double half, Colour colour) {
  DrawLine(run, pen, {centre.X - half, centre.Y}, {centre.X + half, centre.Y}, colour);
  DrawLine(run, pen, {centre.X, centre.Y - half}, {centre.X, centre.Y + half}, colour);
}

void DrawCross(RunContext& run, const Pen& pen, Point centre, double half, Colour colour) {
  const Point up = {half, half}, down = {half, -half};
  DrawLine(run, pen, centre - up, centre + up, colour);
  DrawLine(run, pen, centre - down, centre + down, colour);
}

bool IsNotDrawn(const Parameters& parameters, std::size_t n) {
  return EqualIgnoringCase(parameters.Trimmed(n), "N");
}

void DrawMarker(RunContext& run, Point centre, const Parameters& parameters, std::size_t n) {
  if (IsNotDrawn(parameters, n)) return;
  DrawPlus(run, run.Level().CurrentPen, centre, 1, run.ColourOr(parameters.Rest(n)));
}

}  // namespace vaxel
