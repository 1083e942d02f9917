#include <algorithm>
#include <cstddef>
#include <vector>

#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/scale_notation.h"
#include "interpreter/script_fault.h"
#include "scale/sector.h"

namespace vaxel {
namespace {

std::vector<ContourArc> OnSurface(const RunContext& run, std::vector<ContourArc> pieces) {
  for (ContourArc& piece : pieces) {
    piece.Centre = RequireFinitePoint(piece.Centre + run.Surface.Origin());
    for (double value : {piece.Radius, piece.StartAngle, piece.Sweep}) RequireFinite(value);
  }
  return pieces;
}

// A filled band ends exactly at its values: it has no outline.
void DrawSector(RunContext& run, const std::vector<ContourArc>& pieces, Colour colour, bool filled) {
  DrawSurface& surface = run.Surface;
  const double width = surface.DrawWidth;
  const bool isStraight =
      std::all_of(pieces.begin(), pieces.end(), [](const ContourArc& p) { return p.Radius == 0; });
  std::vector<Point> corners;
  for (const ContourArc& piece : pieces) corners.push_back(piece.Centre);
  surface.FillColor = colour;
  if (filled) surface.DrawWidth = 0;
  if (!isStraight) {
    surface.Contour(pieces, colour, filled);
  } else if (filled) {
    surface.Polygon(corners, colour, true);
  } else {
    DrawOutline(run, corners, colour);
  }
  surface.DrawWidth = width;
}

void DrawSectors(RunContext& run, const Parameters& parameters, bool filled) {
  RequireSupport(run);
  constexpr std::size_t groupSize = 5;  // start, end, distance, width, colour
  for (std::size_t n = 1; n <= parameters.Count(); n += groupSize) {
    const bool isEmpty = parameters.Trimmed(n).empty() && parameters.Trimmed(n + 1).empty();
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
