#include "commands/value_writer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "base/text.h"
#include "commands/scale_notation.h"
#include "commands/text_notation.h"
#include "interpreter/parameters.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

double Dot(Point a, Point b) {
  return a.X * b.X + a.Y * b.Y;
}

// How far apart the boxes lie in a direction; negative where they do not.
double RoomAlong(const FigureBox& a, const FigureBox& b, Point direction) {
  const auto reach = [&](const FigureBox& box) {
    double least = std::numeric_limits<double>::max(), most = std::numeric_limits<double>::lowest();
    for (Point corner : box.Corners) {
      least = std::min(least, Dot(corner, direction));
      most = std::max(most, Dot(corner, direction));
    }
    return std::pair(least, most);
  };
  const auto [aLeast, aMost] = reach(a);
  const auto [bLeast, bMost] = reach(b);
  return std::max(aLeast - bMost, bLeast - aMost);
}

}  // namespace

TextStyle ReadTextStyle(const RunContext& run, Baseline form, std::string_view text) {
  TextStyle style;
  style.Form = form;
  const std::string upper = UpperCase(Trim(WithPlainBlanks(text)));
  std::string_view rest = upper;
  // The one function whose name begins like the prefix.
  style.Relative = rest.starts_with('R') && !rest.starts_with("RND");
  if (style.Relative) rest = TrimLeft(rest.substr(1));
  for (; !rest.empty(); rest.remove_suffix(1)) {
    const char letter = rest.back();
    if (letter == 'J') {
      style.FacesScale = true;
    } else if (letter == 'G') {
      style.Along = AnchorAlong::Start;
    } else if (letter == 'D') {
      style.Along = AnchorAlong::End;
    } else if (letter == 'B') {
      style.Across = AnchorAcross::Baseline;
    } else if (letter == 'H') {
      style.Across = AnchorAcross::Top;
    } else if (letter != ' ') {
      break;
    }
  }
  if (rest.ends_with("°")) rest = DropLastCharacter(rest);
  style.Angle = StrictValue(rest, run.Separators, text);
  return style;
}

bool AreApartBy(const FigureBox& a, const FigureBox& b, double room) {
  double most = std::numeric_limits<double>::lowest();
  for (const FigureBox* box : {&a, &b}) {
    for (std::size_t side : {0U, 1U}) {
      const Point way = box->Corners[side + 1] - box->Corners[side];
      const double length = std::hypot(way.X, way.Y);
      if (length > 0) most = std::max(most, RoomAlong(a, b, way * (1 / length)));
    }
  }
  return most >= room;
}

ValueWriter::Placing ValueWriter::PlacingAt(double place, double distance) const {
  const ScaleSupport& support = run_.Support;
  const double length = distance * double{support.GradSide};
  const Point point = RequireFinitePoint(support.MarkAt(place, length).Outer);
  const double outward = RequireFinite(support.OutwardDirection(place, length));
  double rotation = style_.Form == Baseline::Tangent ? outward - 90
                    : style_.Form == Baseline::Ray   ? support.RayDirection(place)
                                                     : 0;
  if (style_.Angle) rotation = style_.Relative ? rotation + *style_.Angle : *style_.Angle;
  TextAnchor anchor{rotation, style_.Along, style_.Across};
  if (style_.FacesScale) {
    const bool inside = length < 0 || (length == 0 && support.GradSide < 0);
    anchor = AnchorFacing(TextFrame(outward).Along * (inside ? 1 : -1), rotation);
  } else if (style_.Form == Baseline::Ray && !style_.Angle) {
    anchor = TurnedUpright(anchor);
  }
  return {run_.Surface.Origin() + point, anchor};
}

void ValueWriter::Write(double place, double distance, std::string_view text, Colour colour) const {
  if (text.empty()) return;
  const Placing placing = PlacingAt(place, distance);
  WriteText(run_.Surface, text, placing.At, placing.Anchor, run_.Surface.Font, colour);
}

double ValueWriter::WidthOf(std::string_view text) const {
  return run_.Surface.MeasureText(text, run_.Surface.Font).Length;
}

FigureBox ValueWriter::BoxOf(double place, double distance, std::string_view text) const {
  const Placing placing = PlacingAt(place, distance);
  const TextExtent extent = run_.Surface.MeasureText(text, run_.Surface.Font);
  const TextFrame frame(placing.Anchor.Rotation);
  const Point start = BaselineStart(placing.At, placing.Anchor, extent);
  const Point along = frame.Along * extent.Length;
  // Figures are as high as their middle says at which texts are anchored.
  const Point up = frame.Up * (extent.Ascent - extent.Descent);
  return {{start, start + along, start + along + up, start + up}};
}

}  // namespace vaxel
