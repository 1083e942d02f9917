#include "commands/mark_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.h"
#include "commands/pen_notation.h"
#include "commands/scale_notation.h"
#include "drawing/text_layout.h"
#include "interpreter/parameters.h"

namespace vaxel {
namespace {

// The width of a dot whose width is not given.
constexpr double DotWidth = 1;

void DrawFilled(RunContext& run, std::span<const Point> corners, Colour ink) {
  run.Surface.Polygon(corners, Stroke{ink, 0}, Fill(ink));
}

}  // namespace

MarkStyle ReadMarkStyle(const RunContext& run, double length, std::string_view penText, Colour colour) {
  MarkStyle style{length * double{run.Support.GradSide}, ReadPen(run, penText), colour};
  if (style.Stroke.Width == 0) style.Stroke.Width = run.Level().CurrentPen.Width;
  style.Stroke.Width = std::max(style.Stroke.Width, run.Surface.LeastWidth());
  return style;
}

bool ReadMarkShape(const RunContext& run, std::string_view text, MarkStyle& style) {
  text = Trim(text);
  if (text.empty()) return true;
  const double length = std::abs(style.GradLength);
  constexpr double triangle = 0.6, lozenge = 0.4;  // a shape's usual width in parts of its length
  double usual = 0;
  switch (text.front() & ~0x20) {
    case 'T':
      style.Shape = MarkShape::Triangle;
      usual = triangle * length;
      break;
    case 'L':
      style.Shape = MarkShape::Lozenge;
      usual = lozenge * length;
      break;
    case 'P':
      style.Shape = MarkShape::Dot;
      usual = DotWidth;
      break;
    default:
      return false;
  }
  style.Width = std::abs(StrictValue(text.substr(1), run.Separators, text).value_or(usual));
  return true;
}

void DrawMark(RunContext& run, double place, const MarkStyle& style) {
  const ScaleSupport::Mark mark = run.Support.MarkAt(place, style.GradLength);
  const Point origin = run.Surface.Origin();
  const Point inner = origin + RequireFinitePoint(mark.Inner);
  const Point outer = origin + RequireFinitePoint(mark.Outer);
  // A shape lies on the needle's ray. It ends exactly where it says: it has no outline.
  const auto half = [&] { return TextFrame(run.Support.RayDirection(place)).Up * (style.Width / 2); };
  switch (style.Shape) {
    case MarkShape::Stroke:
      DrawLine(run, style.Stroke, inner, outer, style.Ink);
      return;
    case MarkShape::Triangle:
      DrawFilled(run, std::array{inner, outer - half(), outer + half()}, style.Ink);
      break;
    case MarkShape::Lozenge: {
      const Point middle = (inner + outer) * 0.5;
      DrawFilled(run, std::array{inner, middle - half(), outer, middle + half()}, style.Ink);
      break;
    }
    case MarkShape::Dot:
      run.Surface.Circle({.Centre = outer, .Radius = style.Width / 2}, Stroke{style.Ink, 0}, Fill(style.Ink));
      break;
  }
  run.Surface.MoveTo(outer);
}

}  // namespace vaxel
