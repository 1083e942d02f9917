// Where a value lies, and the needle that points to it.
#include <array>
#include <cstddef>
#include <string>

#include "base/number_text.h"
#include "commands/handlers.h"
#include "commands/scale_notation.h"
#include "drawing/text_layout.h"
#include "interpreter/script_fault.h"

namespace vaxel {

void RunPosV(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  const std::string replaced =
      run.Substitute(parameters.Text(1)) + run.Separators.First + run.Substitute(parameters.Text(2));
  Parameters numbers;
  numbers.Assign(replaced, run.Separators);
  const double place = run.Support.PlaceOf(ReadScaleValue(run, numbers, 1));
  const double length = numbers.RequiredNumber(2) * double{run.Support.GradSide};
  const Point point = RequireFinitePoint(run.Support.MarkAt(place, length).Outer);
  const double direction = RequireFinite(run.Support.OutwardDirection(place, length));
  for (std::size_t n : {3U, 4U}) {
    if (parameters.Trimmed(n).empty()) throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
  }
  run.SetVariable(parameters.Trimmed(3), CoordinateText(point.X));
  run.SetVariable(parameters.Trimmed(4), CoordinateText(point.Y));
  if (!parameters.IsEmpty(5)) run.SetVariable(parameters.Trimmed(5), CoordinateText(direction));
  run.Surface.MoveTo(run.Surface.Origin() + point);
}

void RunAiguille(RunContext& run, const Parameters& parameters) {
  RequireScale(run);
  if (run.Support.Kind() != SupportKind::Arc) throw ScriptFault(FaultReason::NeedsArc);
  const double place = run.Support.PlaceOf(ReadScaleValue(run, parameters, 1));
  const double length = parameters.RequiredNumber(2);
  const double width = parameters.RequiredNumber(3);
  const double tail = parameters.NumberOr(4, 0);
  // "Aiguille = 2,5, 40" has one parameter more than was meant.
  if (width > length && length > 0)
    run.Notice(TextId::NeedleWiderThanLong, NumberText(width), NumberText(length));
  const Colour ink = run.ColourOr(parameters.Rest(5));
  const TextFrame ray(RequireFinite(run.Support.RayDirection(place)));
  const Point pivot = run.Surface.Origin();
  const Point tip = RequireFinitePoint(pivot + ray.Along * length);
  const Point base = RequireFinitePoint(pivot - ray.Along * tail);
  const Point half = ray.Up * (width / 2);
  // A filled needle ends exactly at its value: it has no outline.
  run.Surface.Polygon(std::array{tip, base + half, base - half}, Stroke{ink, 0}, Fill(ink));
  run.Surface.MoveTo(tip);
}

}  // namespace vaxel
