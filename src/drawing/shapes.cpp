#include "drawing/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace vaxel {
namespace {

constexpr double QuarterTurn = std::numbers::pi / 2;
constexpr double HeadSide = 0.25;         // of an arrow of strokes, of its length
constexpr double HeadWidth = 3;           // of an arrow with a width, in shafts
constexpr double WholeTurnMargin = 1e-4;  // degrees: the rounded constants must not make nothing of a turn

struct BoxSides {
  double Left, Bottom, Right, Top, Radius;
};

BoxSides SidesOf(Point corner, Point opposite, double radius) {
  const auto [left, right] = std::minmax(corner.X, opposite.X);
  const auto [bottom, top] = std::minmax(corner.Y, opposite.Y);
  return {left, bottom, right, top, std::min({std::abs(radius), (right - left) / 2, (top - bottom) / 2})};
}

// One edge of a crescent, seen along its axis: the arc from the tip below the axis to the one above it by a
// point of the axis.
void AddEdge(std::vector<ContourArc>& pieces, Point centre, double axis, Point tip, double middle,
             bool back) {
  // Flatter arcs are drawn as chords, for a renderer could not count with their radius: as many as keep each
  // within a micrometre of the arc. Near a line the arc is a parabola.
  constexpr double largestRadius = 1000, largestSampled = 1e7;
  constexpr double deviation = 0.001, mostChords = 512;
  const double rise = middle - tip.X;
  const auto onPage = [&](Point p) {
    return centre +
           Point{p.X * std::cos(axis) - p.Y * std::sin(axis), p.X * std::sin(axis) + p.Y * std::cos(axis)};
  };
  const double offset = (middle * middle - tip.X * tip.X - tip.Y * tip.Y) / (2 * rise);
  const double radius = std::abs(middle - offset);
  const double side = rise > 0 ? 1 : -1;
  // Half the angle under which the centre sees the edge.
  const double half = std::atan2(tip.Y, side * (tip.X - offset));
  if (std::abs(rise) > 0 && radius <= largestRadius) {
    const double facing = rise > 0 ? axis : axis + std::numbers::pi;
    const double turn = (rise > 0) == back ? -1 : 1;
    pieces.push_back({onPage({offset, 0}), radius, facing - turn * half, turn * 2 * half});
    return;
  }
  const bool isArc = std::abs(rise) > 0 && radius <= largestSampled;
  const int chords =
      static_cast<int>(std::clamp(std::ceil(std::sqrt(std::abs(rise) / deviation)), 1.0, mostChords));
  for (int i = 0; i <= chords; ++i) {
    const double along = (2.0 * i / chords - 1) * (back ? -1 : 1);
    const Point onArc = {offset + side * radius * std::cos(along * half), radius * std::sin(along * half)};
    const Point onParabola = {tip.X + rise * (1 - along * along), tip.Y * along};
    pieces.push_back({onPage(isArc ? onArc : onParabola), 0, 0, 0});
  }
}

// A hue in degrees and a lightness from 0 to 1, fully saturated.
Colour ColourOfHue(double hue, double lightness) {
  const double chroma = 1 - std::abs(2 * lightness - 1);
  const auto part = [&](double offset) {
    const double place = std::fmod(offset + hue / 30, 12);
    const double level = lightness - chroma / 2 * std::max(-1.0, std::min({place - 3, 9 - place, 1.0}));
    return static_cast<std::uint32_t>(std::lround(std::clamp(level, 0.0, 1.0) * 255));
  };
  return MakeColour(part(0), part(8), part(4));
}

}  // namespace

AngleRange AngleRange::Between(double start, double end) {
  // Each is brought within a turn first: the difference of what a number can be at most is no number.
  double sweep = std::fmod(std::fmod(end, 360) - std::fmod(start, 360), 360);
  if (sweep < 0) sweep += 360;
  if (sweep < WholeTurnMargin || sweep > 360 - WholeTurnMargin) sweep = 360;
  return {std::remainder(start, 360), sweep};
}

Point PointInDirection(Point from, double direction, double length) {
  const double angle = direction * RadiansPerDegree;
  return from + Point{std::cos(angle), std::sin(angle)} * length;
}

std::array<ContourArc, 4> RoundedBox(Point corner, Point opposite, double radius) {
  const BoxSides box = SidesOf(corner, opposite, radius);
  const auto rounding = [&](double x, double y, int quarter) {
    return ContourArc{{x, y}, box.Radius, quarter * QuarterTurn, QuarterTurn};
  };
  return {rounding(box.Right - box.Radius, box.Top - box.Radius, 0),
          rounding(box.Left + box.Radius, box.Top - box.Radius, 1),
          rounding(box.Left + box.Radius, box.Bottom + box.Radius, 2),
          rounding(box.Right - box.Radius, box.Bottom + box.Radius, 3)};
}

std::array<Point, 8> CutBox(Point corner, Point opposite, double radius) {
  const auto [left, bottom, right, top, cut] = SidesOf(corner, opposite, radius);
  return {{{right, top - cut},
           {right - cut, top},
           {left + cut, top},
           {left, top - cut},
           {left, bottom + cut},
           {left + cut, bottom},
           {right - cut, bottom},
           {right, bottom + cut}}};
}

std::vector<ContourArc> Crescent(Point centre, double meanRadius, const AngleRange& range, double width) {
  const double axis = (range.Start + range.Sweep / 2) * RadiansPerDegree;
  const double half = range.Sweep / 2 * std::numbers::pi / 180;
  const double radius = std::abs(meanRadius), thickness = std::abs(width) / 2;
  const Point tip = {radius * std::cos(half), radius * std::sin(half)};
  std::vector<ContourArc> pieces;
  AddEdge(pieces, centre, axis, tip, radius + thickness, false);
  AddEdge(pieces, centre, axis, tip, radius - thickness, true);
  return pieces;
}

std::array<Point, 2> ArrowBarbs(Point from, double direction, double length, double opening) {
  const Point tip = PointInDirection(from, direction, length);
  return {PointInDirection(tip, direction - opening / 2, -HeadSide * length),
          PointInDirection(tip, direction + opening / 2, -HeadSide * length)};
}

std::array<Point, 7> ArrowOutline(Point from, double direction, double length, double width, double opening) {
  const Point along = PointInDirection({}, direction, length < 0 ? -1 : 1);
  const Point left = {-along.Y, along.X};
  const double reach = std::abs(length);
  const double shaft = std::abs(width) / 2, head = HeadWidth * shaft;
  const double neck = reach - std::min(reach, head / std::tan(opening / 2 * RadiansPerDegree));
  const auto corner = [&](double forward, double aside) { return from + along * forward + left * aside; };
  return {corner(0, shaft),    corner(neck, shaft),  corner(neck, head), corner(reach, 0),
          corner(neck, -head), corner(neck, -shaft), corner(0, -shaft)};
}

Dovetails DovetailsOf(const DovetailRow& row) {
  const Point way = row.To - row.From;
  const double length = std::hypot(way.X, way.Y);
  const double lean = row.Height / 2 * std::tan(row.Slope * RadiansPerDegree);
  const double pins = row.Tails + (row.EndPins ? 0 : -1);
  const double pin = length / (row.Tails * row.Ratio + pins);
  const double tail = pin * row.Ratio;
  // A flank takes its lean from either side; the straight side of a board's edge takes none.
  const bool hasRoom =
      length > 0 && row.Height > 0 && tail > 2 * std::abs(lean) && (pins == 0 || pin > 2 * std::abs(lean));
  if (!hasRoom) return {};

  const Point along = way * (1 / length);
  const Point up = Point{-along.Y, along.X} + along * std::tan(row.Inclination * RadiansPerDegree);
  const auto place = [&](double forward, double height) { return row.From + along * forward + up * height; };
  Dovetails dovetails;
  const auto addFlank = [&](double forward, double slant, bool rising) {
    const Point root = place(forward + slant, 0), end = place(forward - slant, row.Height);
    dovetails.Roots.push_back(root);
    dovetails.Ends.push_back(end);
    dovetails.Joint.push_back(rising ? root : end);
    dovetails.Joint.push_back(rising ? end : root);
  };
  if (row.EndPins) dovetails.Joint.push_back(place(0, 0));
  for (int i = 0; i < row.Tails; ++i) {
    const double start = (row.EndPins ? pin / 2 : 0) + i * (tail + pin);
    const bool first = !row.EndPins && i == 0, last = !row.EndPins && i == row.Tails - 1;
    addFlank(start, first ? 0 : lean, true);
    addFlank(start + tail, last ? 0 : -lean, false);
  }
  if (row.EndPins) dovetails.Joint.push_back(place(length, 0));
  return dovetails;
}

std::vector<PalettePatch> HuePalette(int number, Point size) {
  std::vector<PalettePatch> patches;
  for (int i = 0; i < number; ++i) {
    patches.push_back(
        {{i * size.X / number, 0}, {size.X / number, size.Y}, ColourOfHue(360.0 * i / number, 0.5)});
  }
  return patches;
}

std::vector<PalettePatch> LightnessPalette(int number, Point size) {
  std::vector<PalettePatch> patches;
  const Point patch = {size.X / number, size.Y / number};
  for (int row = 0; row < number; ++row) {
    const double lightness = (row + 1.0) / (number + 1);
    for (int i = 0; i < number; ++i) {
      patches.push_back({{i * patch.X, row * patch.Y}, patch, ColourOfHue(360.0 * i / number, lightness)});
    }
  }
  return patches;
}

std::vector<PalettePatch> MixturePalette(int number, Point size) {
  std::vector<PalettePatch> patches;
  const double squareWidth = size.X / number;
  const Point patch = {squareWidth / number, size.Y / number};
  const auto level = [number](int i) {
    return static_cast<std::uint32_t>(number == 1 ? 255 : std::lround(255.0 * i / (number - 1)));
  };
  for (int red = 0; red < number; ++red) {
    for (int blue = 0; blue < number; ++blue) {
      for (int green = 0; green < number; ++green) {
        const Point corner = {red * squareWidth + green * patch.X, blue * patch.Y};
        patches.push_back({corner, patch, MakeColour(level(red), level(green), level(blue))});
      }
    }
  }
  return patches;
}

}  // namespace vaxel
