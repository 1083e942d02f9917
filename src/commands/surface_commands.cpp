#include <string>

#include "base/text.h"
#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/point_notation.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// Along one axis: a position that the including line gave wins over the included script's own.
double IncludedPosition(double& position, double own) {
  if (position == 0) position = own;
  return position;
}

void PlaceCentre(RunContext& run, Point centre, const Parameters& parameters) {
  run.Surface.SetCentre(centre);
  if (run.InMainScript()) run.Surface.MarkCentre();
  DrawMarker(run, centre, parameters, 3);
  run.Surface.MoveTo(centre);
}

}  // namespace

void RunCentreE(RunContext& run, const Parameters& parameters) {
  Point place = {parameters.RequiredNumber(1), parameters.RequiredNumber(2)};
  run.ScreenCentre = place;
  if (!run.InMainScript()) {
    place = {IncludedPosition(run.Level().Position.X, place.X),
             IncludedPosition(run.Level().Position.Y, place.Y)};
  }
  PlaceCentre(run, run.Surface.Middle() + place, parameters);
}

void RunCentreI(RunContext& run, const Parameters& parameters) {
  // The centre is given in millimetres of paper, whatever the zoom.
  const Point place = Point{parameters.RequiredNumber(1), parameters.RequiredNumber(2)} * (1 / run.Surface.Z);
  PlaceCentre(run, run.InMainScript() ? place : run.Surface.Centre() + place, parameters);
}

void RunCT(RunContext& run, const Parameters& parameters) {
  run.Surface.ShiftBy(ReadPoint(parameters, 1, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference));
  const Point origin = run.Surface.Origin();
  DrawMarker(run, origin, parameters, 3);
  run.Surface.MoveTo(origin);
}

void RunFacteur(RunContext& run, const Parameters&) {
  if (run.InMainScript()) throw ScriptFault::Arithmetic(FaultReason::IncludedOnly);
}

void RunFormatI(RunContext& run, const Parameters& parameters) {
  if (!run.Surface.IsPrinter()) return;
  const std::string value = UpperCase(Trim(parameters.Whole()));
  if (value.starts_with("PAYS")) {
    run.Surface.SetOrientation(PageOrientation::Landscape);
  } else if (value.starts_with("PORT")) {
    run.Surface.SetOrientation(PageOrientation::Portrait);
  } else {
    throw ScriptFault::Arithmetic(FaultReason::BadOrientation, Shorten(value, 40));
  }
}

void RunNPage(RunContext& run, const Parameters&) {
  const std::size_t page = run.Surface.PageIndex();
  run.Surface.NextPage();
  // The pages before are gone, and with them what was drawn on them.
  if (run.Surface.PageIndex() <= page) run.Scales.Clear();
  run.OrderState = 0;
  run.LastText.reset();
}

}  // namespace vaxel
