#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/rounding.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/point_notation.h"
#include "drawing/shapes.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

struct DovetailParameters {
  DovetailRow Row;
  double Thickness = 0;
  Pen Stroke{};
  Colour Ink = Black, ReturnInk = Black;
};

DovetailParameters ReadDovetails(RunContext& run, const Parameters& parameters) {
  const auto number = [&](std::size_t n, std::size_t part, double otherwise) {
    return NumberOf(parameters.Part(n, part), run.Separators).value_or(otherwise);
  };
  DovetailParameters dovetails;
  DovetailRow& row = dovetails.Row;
  const auto [from, to] = ReadTwoPlaces(run, parameters);
  row.From = from;
  row.To = to;
  const auto tails = RoundToInt16(parameters.RequiredNumber(5));
  if (!tails || *tails < 1 || *tails > DovetailRow::MaxTails) {
    throw ScriptFault(FaultReason::BadNumber, std::to_string(DovetailRow::MaxTails));
  }
  row.Tails = *tails;
  row.Height = parameters.RequiredNumber(6);
  dovetails.Thickness = number(6, 1, row.Height);
  row.Slope = number(7, 0, row.Slope);
  row.Inclination = number(7, 1, row.Inclination);
  const std::string_view option = Trim(parameters.Part(7, 2));
  if (!option.empty() && !EqualIgnoringCase(option, "T-")) {
    throw ScriptFault(FaultReason::UnknownOption, Shorten(option, 40));
  }
  row.EndPins = option.empty();
  row.Ratio = parameters.NumberOr(8, row.Ratio);
  dovetails.Stroke = ReadStrokePen(run, parameters.Text(9));
  const std::vector<std::string_view> colours = SplitAt(parameters.Rest(10), run.Separators.Second);
  dovetails.Ink = run.ColourOr(colours[0]);
  dovetails.ReturnInk = colours.size() > 1 ? run.ColourOr(colours[1], dovetails.Ink) : dovetails.Ink;
  return dovetails;
}

// The other face of a board, folded down along an edge of the row: a line from each corner across it, and its
// far edge. A thickness below 0 lies to the right.
void DrawReturns(RunContext& run, const DovetailParameters& dovetails, std::span<const Point> corners,
                 double height, double thickness) {
  if (thickness == 0) return;
  const DovetailRow& row = dovetails.Row;
  const Point way = row.To - row.From;
  const Point along = way * (1 / std::hypot(way.X, way.Y));
  const Point across = {-along.Y, along.X};
  const Point edge = (across + along * std::tan(row.Inclination * RadiansPerDegree)) * height;
  const Point fold = across * thickness;
  const auto draw = [&](Point from, Point to) {
    DrawLine(run, dovetails.Stroke, from, to, dovetails.ReturnInk);
  };
  for (const Point& corner : corners) draw(corner, corner + fold);
  draw(row.From + edge + fold, row.To + edge + fold);
  // Without half pins the ends of the row are corners themselves.
  if (!row.EndPins) return;
  draw(row.From + edge, row.From + edge + fold);
  draw(row.To + edge, row.To + edge + fold);
}

void DrawDovetails(RunContext& run, const Parameters& parameters, bool returnsAtEnds, bool returnsAtRoots) {
  const DovetailParameters dovetails = ReadDovetails(run, parameters);
  const Dovetails lines = DovetailsOf(dovetails.Row);
  if (lines.Joint.empty()) throw ScriptFault(FaultReason::NoRoomForDovetails);
  if (returnsAtEnds) DrawReturns(run, dovetails, lines.Ends, dovetails.Row.Height, dovetails.Thickness);
  if (returnsAtRoots) DrawReturns(run, dovetails, lines.Roots, 0, -dovetails.Thickness);
  for (std::size_t i = 1; i < lines.Joint.size(); ++i) {
    DrawLine(run, dovetails.Stroke, lines.Joint[i - 1], lines.Joint[i], dovetails.Ink);
  }
  run.Surface.MoveTo(dovetails.Row.To);
}

}  // namespace

void RunQA(RunContext& run, const Parameters& parameters) {
  DrawDovetails(run, parameters, false, false);
}

void RunQA1(RunContext& run, const Parameters& parameters) {
  DrawDovetails(run, parameters, true, false);
}

void RunQA2(RunContext& run, const Parameters& parameters) {
  DrawDovetails(run, parameters, false, true);
}

void RunQA12(RunContext& run, const Parameters& parameters) {
  DrawDovetails(run, parameters, true, true);
}

}  // namespace vaxel
