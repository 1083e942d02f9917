#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "geometry/rounding.h"
#include "interpreter/script_fault.h"
#include "scale/graduation.h"
#include "text/text.h"

namespace vaxel {
namespace {

Point RequireFinitePoint(Point point) {
  return {RequireFinite(point.X), RequireFinite(point.Y)};
}

// Without a support there is no scale: the line fails as a division by zero does.
void RequireSupport(const RunContext& run) {
  if ((run.OrderState & OrderSupport) == 0) throw ScriptFault(FaultReason::DivisionByZero);
}

void DrawArcSupport(RunContext& run, Colour colour) {
  const ScaleSupport& support = run.Support;
  const Point origin = run.Surface.Origin();
  if (support.Kind() != SupportKind::Arc) return;
  if (support.IsStraightArc()) {
    const Point from =
        RequireFinitePoint(support.ScalePoint(support.StartAngle * RadiansPerDegree, support.Radius));
    const Point to =
        RequireFinitePoint(support.ScalePoint(support.EndAngle * RadiansPerDegree, support.Radius));
    run.Surface.Line(origin.X + from.X, origin.Y + from.Y, origin.X + to.X, origin.Y + to.Y, colour);
    return;
  }
  const bool wholeTurn = std::abs(support.EndAngle - support.StartAngle) >= 360;
  // A negative radius lies on the other side of the pivot, where the marks are too.
  const double turn = support.StartDistance < 0 ? Pi : 0;
  // The needle sweeps clockwise, the surface draws counter-clockwise.
  run.Surface.Circle(origin.X, origin.Y - support.CentreOffset, support.StartDistance, colour,
                     wholeTurn ? CircleForm::Full : CircleForm::Arc, turn + support.EndDirection,
                     turn + support.StartDirection);
}

void DrawLineSupport(RunContext& run, Point from, Point to, const Parameters& parameters) {
  const Point origin = run.Surface.Origin();
  run.Support.DrawSupport = !IsNotDrawn(parameters, 4);
  if (run.Support.DrawSupport) {
    DrawLine(run, run.Level().CurrentPen, origin + from, origin + to, run.ColourOr(parameters.Rest(4)));
  }
  run.Surface.MoveTo(origin + (from + to) * 0.5);
}

struct MarkStyle {
  double GradLength;
  Pen Stroke;
  Colour Ink;
};

MarkStyle ReadMarkStyle(const RunContext& run, double length, std::string_view penText, Colour colour) {
  MarkStyle style{length * double{run.Support.GradSide}, ReadPen(run, penText), colour};
  if (style.Stroke.Width == 0) style.Stroke.Width = run.Level().CurrentPen.Width;
  style.Stroke.Width = std::max(style.Stroke.Width, 1.0);
  return style;
}

void DrawMark(RunContext& run, double place, const MarkStyle& style) {
  const ScaleSupport::Mark mark = run.Support.MarkAt(place, style.GradLength);
  const Point origin = run.Surface.Origin();
  DrawLine(run, style.Stroke, origin + RequireFinitePoint(mark.Inner),
           origin + RequireFinitePoint(mark.Outer), style.Ink);
}

template <class Graduation>
void DrawMarks(RunContext& run, Graduation graduation, const MarkStyle& style) {
  for (;;) {
    const StepResult step = graduation.Next();
    if (step == StepResult::Overflow) throw ScriptFault(FaultReason::Overflow);
    if (step == StepResult::End) return;
    DrawMark(run, graduation.Place(), style);
  }
}

double PositiveAndFinite(double value) {
  if (value <= 0) throw ScriptFault(FaultReason::Domain);
  return RequireFinite(value);
}

// "Interval[§End[§Start]]".
LogStepping ReadLogStepping(const RunContext& run, std::string_view text) {
  const std::vector<std::string_view> parts = SplitAt(text, run.Separators.Second);
  const auto part = [&](std::size_t i, double otherwise) {
    return i < parts.size() ? NumberOf(parts[i], run.Separators).value_or(otherwise) : otherwise;
  };
  const auto interval = NumberOf(parts[0], run.Separators);
  if (!interval) throw ScriptFault(FaultReason::MissingParameter, "1");
  // Any interval above a decade leads from decade to decade.
  constexpr double largest = 1000;
  const LogStepping stepping{static_cast<float>(std::min(*interval, largest)),
                             static_cast<float>(part(1, 10)), static_cast<float>(part(2, 1))};
  if (stepping.LogInterval < LogStepping::SmallestInterval) {
    throw ScriptFault(FaultReason::BadInterval, Shorten(Trim(parts[0]), 40));
  }
  return stepping;
}

ScaleValue ReadScaleValue(std::string_view text, const Separators& separators) {
  text = Trim(text);
  const auto value = NumberOf(text, separators);
  if (!value) throw ScriptFault(FaultReason::MissingParameter, "1");
  return {*value, text.ends_with("°")};
}

// "Scale%[§%Var_List]": the value itself, if there is one, and those that the listed variables hold.
std::vector<ScaleValue> ReadScaleValues(const RunContext& run, std::string_view text) {
  std::vector<ScaleValue> values;
  const std::vector<std::string_view> parts = SplitAt(text, run.Separators.Second);
  if (parts.size() == 1 || !Trim(parts[0]).empty())
    values.push_back(ReadScaleValue(parts[0], run.Separators));
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const std::string_view name = Trim(parts[i]);
    if (!name.starts_with('%')) throw ScriptFault(FaultReason::NotAList, Shorten(name, 40));
    const std::string list = Substitute(name, run.Level().Variables, run.Separators);
    for (std::string_view item : SplitAt(list, run.Separators.First)) {
      if (!Trim(item).empty()) values.push_back(ReadScaleValue(item, run.Separators));
    }
  }
  return values;
}

}  // namespace

void RunArc(RunContext& run, const Parameters& parameters) {
  ScaleSupport support = run.Support;
  support.SetArc(parameters.RequiredNumber(1), parameters.RequiredNumber(2), parameters.RequiredNumber(3));
  for (double derived :
       {support.StartDistance, support.EndDistance, support.StartDirection, support.EndDirection}) {
    RequireFinite(derived);
  }
  support.DrawSupport = !IsNotDrawn(parameters, 4);
  run.Support = support;
  if (support.DrawSupport) DrawArcSupport(run, run.ColourOr(parameters.Rest(4)));
}

void RunDroite(RunContext& run, const Parameters& parameters) {
  ScaleSupport& support = run.Support;
  support.SetHorizontal(parameters.RequiredNumber(1), parameters.RequiredNumber(2),
                        parameters.NumberOr(3, 0));
  DrawLineSupport(run, {support.XStart, support.LinePos}, {support.XEnd, support.LinePos}, parameters);
}

void RunDroiteV(RunContext& run, const Parameters& parameters) {
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
    DrawMarks(run, LinearGraduation(support, parameters.RequiredNumber(1), first, last), style);
    return;
  }
  const LogStepping stepping = ReadLogStepping(run, parameters.Text(1));
  const double start = first == 0 ? double{support.LogStart} : first;
  const double end = last == 0 ? double{support.LogEnd} * std::pow(10.0, support.Decades) : last;
  DrawMarks(run, LogGraduation(support, stepping, PositiveAndFinite(start), PositiveAndFinite(end)), style);
}

void RunGrad1(RunContext& run, const Parameters& parameters) {
  RequireSupport(run);
  constexpr std::size_t groupSize = 4;  // value, length, pen, colour
  for (std::size_t n = 1; n <= parameters.Count(); n += groupSize) {
    const bool isEmpty = parameters.Trimmed(n).empty() && parameters.Trimmed(n + 1).empty();
    if (isEmpty && n > 1) continue;
    const MarkStyle style = ReadMarkStyle(run, parameters.RequiredNumber(n + 1), parameters.Text(n + 2),
                                          run.ColourOr(parameters.Text(n + 3)));
    for (const ScaleValue& value : ReadScaleValues(run, parameters.Text(n))) {
      if (run.Support.LogScale && !value.IsDirect) PositiveAndFinite(value.Value);
      DrawMark(run, run.Support.PlaceOf(value), style);
    }
  }
}

}  // namespace vaxel
