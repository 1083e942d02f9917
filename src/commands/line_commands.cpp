#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "commands/handlers.h"
#include "commands/pen_notation.h"
#include "commands/point_notation.h"
#include "interpreter/colour_value.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// The value is rounded to a multiple of a unit; halves of the number as it is written go upward.
double RoundedHalvesUp(double value, double unitsPerOne) {
  return std::floor(AsWritten(value * unitsPerOne) + 0.5) / unitsPerOne;
}

// "2 pixels" and what they measure, for a line that asks which width is in force.
std::string WidthComment(double pixels, double pixelSize) {
  const double whole = RoundedHalvesUp(pixels, 1);
  return "  '  " + NumberText(whole) + (whole == 1 ? " pixel, " : " pixels, ") +
         NumberText(RoundedHalvesUp(pixels * pixelSize, 100)) + "mm";
}

// The two diagonals or the two axes of a sign: its place, colour and pen come from the same parameters.
struct Sign {
  Point Centre;
  double Half;
  Colour Ink;
  Pen Stroke;
};

Sign ReadSign(RunContext& run, const Parameters& parameters) {
  const Point centre = ReadPoint(parameters, 1, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
  return {centre + run.Surface.Origin(), parameters.RequiredNumber(3), run.ColourOr(parameters.Text(4)),
          ReadStrokePen(run, parameters.Text(5))};
}

// A first coordinate that is an expression is taken for the colour, and then one coordinate lacks.
std::vector<Point> ReadCorners(const RunContext& run, const Parameters& parameters, bool hasColour) {
  const Point origin = run.Surface.Origin();
  std::size_t n = hasColour ? 2 : 1;
  try {
    Point point = ReadPoint(parameters, n, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
    std::vector<Point> corners = {point + origin};
    do {
      n += 2;
      point = ReadPoint(parameters, n, point);
      corners.push_back(point + origin);
    } while (n + 2 <= parameters.Count());
    return corners;
  } catch (ScriptFault& fault) {
    const std::string_view first = parameters.Trimmed(1);
    if (hasColour && !ColourValue(first, run.Separators)) {
      fault.Add(TextId::TakenForColour, Shorten(first, 40));
    }
    throw;
  }
}

void DrawPolygon(RunContext& run, const Parameters& parameters, bool filled) {
  const std::string_view first = parameters.Trimmed(1);
  const bool hasColour = !first.empty() && !IsNumber(first);
  const std::vector<Point> corners = ReadCorners(run, parameters, hasColour);
  const Colour colour = hasColour ? run.ColourOr(first) : run.Surface.ForeColor;
  run.Surface.Polygon(corners, run.Surface.StandingStroke(colour), {filled, colour});
}

}  // namespace

void RunEpaisT(RunContext& run, const Parameters& parameters) {
  if (Trim(parameters.Whole()).empty()) {
    run.WriteComment(WidthComment(run.Level().CurrentPen.Width, run.Surface.PixelSize()));
    return;
  }
  run.SetPen(ReadStrokePen(run, parameters.Text(1)));
}

void RunTrait(RunContext& run, const Parameters& parameters) {
  const Point origin = run.Surface.Origin();
  const Pen pen = ReadStrokePen(run, parameters.Text(5));
  const Colour colour = run.ColourOr(parameters.Text(6));
  Point from = ReadPoint(parameters, 1, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
  std::size_t n = 3;
  do {
    const Point to = ReadPoint(parameters, n, from);
    DrawLine(run, pen, from + origin, to + origin, colour);
    from = to;
    n = n == 3 ? 7 : n + 2;
  } while (n <= parameters.Count());
}

void RunPlus(RunContext& run, const Parameters& parameters) {
  const Sign sign = ReadSign(run, parameters);
  DrawPlus(run, sign.Stroke, sign.Centre, sign.Half, sign.Ink);
}

void RunX(RunContext& run, const Parameters& parameters) {
  const Sign sign = ReadSign(run, parameters);
  DrawCross(run, sign.Stroke, sign.Centre, sign.Half, sign.Ink);
}

void RunPoly(RunContext& run, const Parameters& parameters) {
  DrawPolygon(run, parameters, false);
}

void RunPolyP(RunContext& run, const Parameters& parameters) {
  DrawPolygon(run, parameters, true);
}

}  // namespace vaxel
