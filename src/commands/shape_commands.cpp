#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/point_notation.h"
#include "drawing/shapes.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// The start and end of a range that two parameters give; one that is missing is 0, or 360.
AngleRange ReadRange(const Parameters& parameters, std::size_t n) {
  return AngleRange::Between(parameters.NumberOr(n, 0), parameters.NumberOr(n + 1, 360));
}

void DrawContour(RunContext& run, std::span<const ContourArc> pieces, Colour colour, bool filled) {
  run.Surface.Contour(pieces, run.Surface.StandingStroke(colour), {filled, colour});
}

void DrawBox(RunContext& run, const Parameters& parameters, bool filled) {
  const auto [corner, opposite] = ReadTwoPlaces(run, parameters);
  const Colour colour = run.ColourOr(parameters.Rest(5));
  if (!filled && run.Level().CurrentPen.Dashed()) {
    DrawOutline(run, std::array{corner, Point{opposite.X, corner.Y}, opposite, Point{corner.X, opposite.Y}},
                colour);
  } else {
    run.Surface.Rectangle(corner, opposite, run.Surface.StandingStroke(colour), {filled, colour});
  }
  run.Surface.MoveTo((corner + opposite) * 0.5);
}

void DrawRoundedBox(RunContext& run, const Parameters& parameters, bool filled) {
  const auto [corner, opposite] = ReadTwoPlaces(run, parameters);
  const double radius = parameters.RequiredNumber(5);
  const std::string_view option = Trim(parameters.Part(5, 1));
  const Colour colour = run.ColourOr(parameters.Rest(6));
  if (EqualIgnoringCase(option, "D")) {
    DrawFigure(run, CutBox(corner, opposite, radius), colour, filled);
  } else if (option.empty()) {
    DrawContour(run, RoundedBox(corner, opposite, radius), colour, filled);
  } else {
    throw ScriptFault(FaultReason::UnknownOption, Shorten(option, 40));
  }
  run.Surface.MoveTo((corner + opposite) * 0.5);
}

enum class CircleEnd : std::uint8_t { Centre, OnCircle };

void DrawCircle(RunContext& run, const Parameters& parameters, CircleForm part, CircleEnd end) {
  const Point centre = ReadPlace(run, parameters, 1);
  const double radius = parameters.RequiredNumber(3);
  const double aspect = NumberOf(parameters.Part(3, 1), parameters.Separators()).value_or(1);
  const bool hasAngles = parameters.Number(4) || parameters.Number(5);
  const AngleRange range = hasAngles ? ReadRange(parameters, 4) : AngleRange{};
  const Colour colour = run.ColourOr(parameters.Rest(6));
  const double start = range.Start * RadiansPerDegree;
  const double stop = (range.Start + range.Sweep) * RadiansPerDegree;
  const CircleForm form = range.IsWholeTurn() ? CircleForm::Full : part;
  run.Surface.Circle({centre, radius, aspect, start, stop, form}, run.Surface.StandingStroke(colour),
                     {part == CircleForm::Pie, colour});
  const Point reach = {std::abs(radius), std::abs(radius * aspect)};
  const Point last = centre + Point{reach.X * std::cos(stop), reach.Y * std::sin(stop)};
  run.Surface.MoveTo(end == CircleEnd::Centre ? centre : last);
}

void DrawCrescent(RunContext& run, const Parameters& parameters, bool filled) {
  const Point centre = ReadPlace(run, parameters, 1);
  const double radius = parameters.RequiredNumber(3);
  const AngleRange range = AngleRange::Between(parameters.RequiredNumber(4), parameters.RequiredNumber(5));
  const std::vector<ContourArc> pieces = Crescent(centre, radius, range, parameters.RequiredNumber(6));
  DrawContour(run, pieces, run.ColourOr(parameters.Rest(7)), filled);
  run.Surface.MoveTo(centre);
}

struct ArrowParameters {
  Point From;
  double Direction, Length, Width, Opening;
  Colour Ink;
};

ArrowParameters ReadArrow(RunContext& run, const Parameters& parameters) {
  constexpr double standardOpening = 30;
  const ArrowParameters arrow{ReadPlace(run, parameters, 1),
                              parameters.RequiredNumber(3),
                              parameters.RequiredNumber(4),
                              parameters.NumberOr(5, 0),
                              parameters.NumberOr(6, standardOpening),
                              run.ColourOr(parameters.Rest(7))};
  if (!(arrow.Opening >= 0 && arrow.Opening <= 180)) {
    throw ScriptFault(FaultReason::BadOpening, Shorten(parameters.Trimmed(6), 40));
  }
  return arrow;
}

// The shaft ends where a filled head begins, so that the tip stays sharp.
void DrawStrokeArrow(RunContext& run, const ArrowParameters& arrow, Point tip, bool filled) {
  const Pen& pen = run.Level().CurrentPen;
  const auto [left, right] = ArrowBarbs(arrow.From, arrow.Direction, arrow.Length, arrow.Opening);
  DrawLine(run, pen, arrow.From, filled ? (left + right) * 0.5 : tip, arrow.Ink);
  if (filled) {
    DrawFigure(run, std::array{left, tip, right}, arrow.Ink, true);
  } else {
    DrawLine(run, pen, tip, left, arrow.Ink);
    DrawLine(run, pen, tip, right, arrow.Ink);
  }
}

void DrawArrow(RunContext& run, const Parameters& parameters, bool filled) {
  const ArrowParameters arrow = ReadArrow(run, parameters);
  const Point tip = PointInDirection(arrow.From, arrow.Direction, arrow.Length);
  if (arrow.Length != 0 && arrow.Width == 0) {
    DrawStrokeArrow(run, arrow, tip, filled);
  } else if (arrow.Length != 0) {
    DrawFigure(run, ArrowOutline(arrow.From, arrow.Direction, arrow.Length, arrow.Width, arrow.Opening),
               arrow.Ink, filled);
  }
  run.Surface.MoveTo(tip);
}

struct DrillMark {
  Point Centre;
  double Radius;
  Colour Ink;
};

DrillMark DrawDrillCircle(RunContext& run, const Parameters& parameters) {
  const DrillMark mark{ReadPlace(run, parameters, 1), parameters.RequiredNumber(3) / 2,
                       run.ColourOr(parameters.Rest(4))};
  run.Surface.Circle({mark.Centre, mark.Radius}, run.Surface.StandingStroke(mark.Ink));
  return mark;
}

// The pairs of sectors of the lights of type 2 to 5, degrees.
struct LightSectors {
  AngleRange First, Second;
};
constexpr std::array<LightSectors, 4> LightTypes = {
    {{{0, 90}, {180, 90}}, {{90, 90}, {270, 90}}, {{45, 90}, {225, 90}}, {{315, 90}, {135, 90}}}};

// A slice that begins at 0 begins a little later: slices were asked for by negative angles, of which 0 has
// none.
CircleFigure Slice(Point centre, double radius, const AngleRange& range) {
  constexpr double leastStart = 0.001;  // radians
  const double start = range.Start == 0 ? leastStart : range.Start * RadiansPerDegree;
  const double end = (range.Start + range.Sweep) * RadiansPerDegree;
  return {centre, radius, 1, start, end, CircleForm::Pie};
}

void DrawLight(DrawSurface& surface, Point centre, double radius, double type, Colour colour) {
  const Stroke edge{colour, 1}, outline = surface.StandingStroke(surface.ForeColor);
  const Fill inside(colour);
  if (type < 2) {
    surface.Circle({centre, radius}, edge, inside);
  } else {
    const auto last = static_cast<double>(LightTypes.size() + 1);
    const auto& [first, second] = LightTypes[static_cast<std::size_t>(std::min(type, last)) - 2];
    const std::array slices = {Slice(centre, radius, first), Slice(centre, radius, second)};
    for (const CircleFigure& slice : slices) surface.Circle(slice, edge, inside);
    for (const CircleFigure& slice : slices) surface.Circle(slice, outline);
  }
  surface.Circle({centre, radius}, outline);
}

}  // namespace

void RunCadre(RunContext& run, const Parameters& parameters) {
  DrawBox(run, parameters, false);
}

void RunCadreP(RunContext& run, const Parameters& parameters) {
  DrawBox(run, parameters, true);
}

void RunCadreA(RunContext& run, const Parameters& parameters) {
  DrawRoundedBox(run, parameters, false);
}

void RunCadreAP(RunContext& run, const Parameters& parameters) {
  DrawRoundedBox(run, parameters, true);
}

void RunCercle(RunContext& run, const Parameters& parameters) {
  DrawCircle(run, parameters, CircleForm::Arc, CircleEnd::Centre);
}

void RunCercleI(RunContext& run, const Parameters& parameters) {
  DrawCircle(run, parameters, CircleForm::Arc, CircleEnd::OnCircle);
}

void RunCercleP(RunContext& run, const Parameters& parameters) {
  DrawCircle(run, parameters, CircleForm::Pie, CircleEnd::Centre);
}

void RunDemiLune(RunContext& run, const Parameters& parameters) {
  DrawCrescent(run, parameters, false);
}

void RunDemiLuneP(RunContext& run, const Parameters& parameters) {
  DrawCrescent(run, parameters, true);
}

void RunFleche(RunContext& run, const Parameters& parameters) {
  DrawArrow(run, parameters, false);
}

void RunFlecheP(RunContext& run, const Parameters& parameters) {
  DrawArrow(run, parameters, true);
}

void RunPercer(RunContext& run, const Parameters& parameters) {
  const auto [centre, radius, ink] = DrawDrillCircle(run, parameters);
  if (radius != 0) DrawPlus(run, run.Level().CurrentPen, centre, radius, ink);
  run.Surface.MoveTo(centre);
}

void RunPercerX(RunContext& run, const Parameters& parameters) {
  const auto [centre, radius, ink] = DrawDrillCircle(run, parameters);
  if (radius != 0) DrawCross(run, run.Level().CurrentPen, centre, radius / std::numbers::sqrt2, ink);
  run.Surface.MoveTo(centre);
}

void RunVoyant(RunContext& run, const Parameters& parameters) {
  const Point centre = ReadPlace(run, parameters, 1);
  const double radius = parameters.RequiredNumber(3) / 2;
  const double type = parameters.RequiredNumber(4);
  const Colour colour = run.ColourOr(parameters.Rest(5));
  if (radius != 0) DrawLight(run.Surface, centre, radius, type, colour);
  run.Surface.MoveTo(centre);
}

}  // namespace vaxel
