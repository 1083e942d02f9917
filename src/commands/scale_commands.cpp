#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/rounding.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/mark_drawing.h"
#include "commands/pen_notation.h"
#include "commands/scale_notation.h"
#include "interpreter/script_fault.h"
#include "scale/graduation.h"

namespace vaxel {
namespace {

void DrawArcSupport(RunContext& run, Colour colour) {
  const ScaleSupport& support = run.Support;
  const Point origin = run.Surface.Origin();
  if (support.Kind() != SupportKind::Arc) return;
  if (support.IsStraightArc()) {
    const Point from =
        RequireFinitePoint(support.ScalePoint(support.StartAngle * RadiansPerDegree, support.Radius));
    const Point to =
        RequireFinitePoint(support.ScalePoint(support.EndAngle * RadiansPerDegree, support.Radius));
    const Point current = run.Surface.Current();
    DrawLine(run, run.Level().CurrentPen, origin + from, origin + to, colour);
    run.Surface.MoveTo(current);
    return;
  }
  const bool wholeTurn = std::abs(support.EndAngle - support.StartAngle) >= 360;
  // A negative radius lies on the other side of the pivot, where the marks are too.
  const double turn = support.StartDistance < 0 ? Pi : 0;
  // The needle sweeps clockwise, the surface draws counter-clockwise.
  run.Surface.Circle({.Centre = origin - Point{0, support.CentreOffset},
                      .Radius = support.StartDistance,
                      .From = turn + support.EndDirection,
                      .To = turn + support.StartDirection,
                      .Form = wholeTurn ? CircleForm::Full : CircleForm::Arc},
                     run.Surface.StandingStroke(colour));
}

void DrawLineSupport(RunContext& run, Point from, Point to, const Parameters& parameters) {
  const Point origin = run.Surface.Origin();
  if (!IsNotDrawn(parameters, 4)) {
    DrawLine(run, run.Level().CurrentPen, origin + from, origin + to, run.ColourOr(parameters.Rest(4)));
  }
  run.Surface.MoveTo(origin + (from + to) * 0.5);
}

template <class Graduation>
void DrawMarks(RunContext& run, Graduation graduation, const MarkStyle& style) {
  ForEachMark(graduation, [&] { DrawMark(run, graduation.Place(), style); });
}

}  // namespace

void RunArc(RunContext& run, const Parameters& parameters) {
  ScaleSupport support = run.Support;
  support.SetArc(parameters.RequiredNumber(1), parameters.RequiredNumber(2), parameters.RequiredNumber(3));
  for (double derived :
       {support.StartDistance, support.EndDistance, support.StartDirection, support.EndDirection}) {
    RequireFinite(derived);
  }
  run.BeginScale();
  run.Support = support;
  if (!IsNotDrawn(parameters, 4)) DrawArcSupport(run, run.ColourOr(parameters.Rest(4)));
}

void RunDroite(RunContext& run, const Parameters& parameters) {
  run.BeginScale();
  ScaleSupport& support = run.Support;
  support.SetHorizontal(parameters.RequiredNumber(1), parameters.RequiredNumber(2),
                        parameters.NumberOr(3, 0));
  DrawLineSupport(run, {support.XStart, support.LinePos}, {support.XEnd, support.LinePos}, parameters);
}

void RunDroiteV(RunContext& run, const Parameters& parameters) {
  run.BeginScale();
  ScaleSupport& support = run.Support;
  support.SetVertical(parameters.RequiredNumber(1), parameters.RequiredNumber(2), parameters.NumberOr(3, 0));
  DrawLineSupport(run, {support.LinePos, support.YStart}, {support.LinePos, support.YEnd}, parameters);
}

void RunDecal(RunContext& run, const Parameters& parameters) {
  run.Support.CentreOffset = parameters.RequiredNumber(1);
  const Point centre = run.Surface.Origin() - Point{0, run.Support.CentreOffset};
  DrawMarker(run, centre, parameters, 2);
  run.Surface.MoveTo(centre);
}

void RunExposant(RunContext& run, const Parameters& parameters) {
  ScaleSupport support = run.Support;
  if (EqualIgnoringCase(parameters.Trimmed(1), "L")) {
    if (support.HasOwnValues) throw ScriptFault(FaultReason::LogUnderOwnValues);
    const auto decades = RoundToInt16(parameters.NumberOr(2, 0));
    if (!decades) throw ScriptFault(FaultReason::Overflow);
    support.SetLogarithmicLaw(*decades, parameters.NumberOr(3, 0), parameters.NumberOr(4, 0));
    RequireFinite(double{support.LogSpan});
  } else {
    const double z = parameters.RequiredNumber(1);
    if (z == 0) throw ScriptFault(FaultReason::DivisionByZero);
    support.SetPowerLaw(z);
    RequireFinite(double{support.Exponent});
  }
  run.Support = support;
}

void RunInversion(RunContext& run, const Parameters&) {
  run.Support.GradSide = -run.Support.GradSide;
}

void RunGrad(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  const ScaleSupport& support = run.Support;
  const MarkStyle style =
      ReadMarkStyle(run, parameters.RequiredNumber(2), parameters.Text(5), run.ColourOr(parameters.Rest(6)));
  const double first = parameters.NumberOr(3, 0);
  const double last = parameters.NumberOr(4, 0);
  if (!support.LogScale) {
    DrawMarks(run, ReadLinearGraduation(run, parameters.RequiredNumber(1), first, last), style);
    return;
  }
  DrawMarks(run, ReadLogGraduation(run, parameters, 1, first, last), style);
}

void RunGrad1(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  constexpr std::size_t groupSize = 4;  // value, length, pen, colour
  for (std::size_t n = 1; n <= parameters.Count(); n += groupSize) {
    const bool isEmpty = parameters.Trimmed(n).empty() && parameters.Trimmed(n + 1).empty();
    if (isEmpty && n > 1) continue;
    MarkStyle style = ReadMarkStyle(run, parameters.RequiredNumber(n + 1), parameters.Text(n + 2),
                                    run.ColourOr(parameters.Text(n + 3)));
    // What else stands behind the length was always passed over.
    const std::string_view shape = parameters.Part(n + 1, 1);
    if (!ReadMarkShape(run, shape, style)) run.Notice(TextId::BadMarkShape, Shorten(Trim(shape), 40));
    for (const std::optional<ScaleValue>& value : ReadScaleValues(run, parameters, n)) {
      if (value) DrawMark(run, run.Support.PlaceOf(*value), style);
    }
  }
}

}  // namespace vaxel
