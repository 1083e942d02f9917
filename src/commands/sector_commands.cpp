#include <cstddef>
#include <vector>

#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/scale_notation.h"
#include "interpreter/script_fault.h"
#include "scale/sector.h"

namespace vaxel {
namespace {

Sector OnSurface(const RunContext& run, Sector sector) {
  for (ContourArc& piece : sector.Pieces) {
    piece.Centre = RequireFinitePoint(piece.Centre + run.Surface.Origin());
    for (double value : {piece.Radius, piece.StartAngle, piece.Sweep}) RequireFinite(value);
  }
  return sector;
}

// A filled band ends exactly at its values: it has no outline.
void DrawSector(RunContext& run, const Sector& sector, Colour colour, bool filled) {
  DrawSurface& surface = run.Surface;
  const Stroke stroke = filled ? Stroke{colour, 0} : surface.StandingStroke(colour);
  if (sector.Shape == Sector::Form::Straight) {
    std::vector<Point> corners;
    for (const ContourArc& piece : sector.Pieces) corners.push_back(piece.Centre);
    if (filled) {
      surface.Polygon(corners, stroke, Fill(colour));
    } else {
      DrawOutline(run, corners, colour);
    }
  } else if (sector.Shape == Sector::Form::Ring && !filled) {
    // A contour would have a seam.
    for (const ContourArc& edge : sector.Pieces) surface.Circle({edge.Centre, edge.Radius}, stroke);
  } else {
    surface.Contour(sector.Pieces, stroke, {filled, colour});
  }
}

void DrawSectors(RunContext& run, const Parameters& parameters, bool filled) {
  RequireSupport(run);
  constexpr std::size_t groupSize = 5;  // start, end, distance, width, colour
  for (std::size_t n = 1; n <= parameters.Count(); n += groupSize) {
    bool isEmpty = true;
    for (std::size_t i = n; i < n + groupSize; ++i) isEmpty = isEmpty && parameters.Trimmed(i).empty();
    if (isEmpty && n > 1) continue;
    const ScaleSupport& support = run.Support;
    const double start = support.PlaceOf(ReadScaleValue(run, parameters, n));
    const double end = support.PlaceOf(ReadScaleValue(run, parameters, n + 1));
    const double distance = parameters.NumberOr(n + 2, 0);
    const double side = double{support.GradSide};
    const double width = parameters.RequiredNumber(n + 3);
    DrawSector(run,
               OnSurface(run, SectorBetween(support, start, end, distance * side, (distance + width) * side)),
               run.ColourOr(parameters.Text(n + 4)), filled);
  }
}

}  // namespace

void RunSect(RunContext& run, const Parameters& parameters) {
  DrawSectors(run, parameters, false);
}

void RunSectP(RunContext& run, const Parameters& parameters) {
  DrawSectors(run, parameters, true);
}

}  // namespace vaxel
