// The geometry of figures: where their corners, tips and arcs lie. Nothing here draws. Lengths are in one
// unit, that of the points; angles are in degrees, 0 to the right, counter-clockwise, y upward.
#pragma once

#include <array>
#include <vector>

#include "base/contour.h"
#include "base/point.h"
#include "drawing/colour.h"

namespace vaxel {

// The directions between which something runs counter-clockwise. Equal directions are a whole turn apart.
struct AngleRange {
  double Start = 0, Sweep = 360;  // degrees, the sweep above 0

  // The same directions, whatever whole turns the angles contain.
  static AngleRange Between(double start, double end);
  bool IsWholeTurn() const { return Sweep == 360; }
};

Point PointInDirection(Point from, double direction, double length);

// A box with its corners rounded, or cut off straight, by the radius, which counts up to half the shorter
// side.
std::array<ContourArc, 4> RoundedBox(Point corner, Point opposite, double radius);
std::array<Point, 8> CutBox(Point corner, Point opposite, double radius);

// A crescent whose tips lie on the mean circle at the ends of the range. In the middle of the range its
// edges, which are arcs through both tips, lie half the width outside and inside that circle.
std::vector<ContourArc> Crescent(Point centre, double meanRadius, const AngleRange& range, double width);

// An arrow of strokes: the two ends of its head's sides, which are a quarter of its length long, from the
// tip. The opening is the angle between them.
std::array<Point, 2> ArrowBarbs(Point from, double direction, double length, double opening);
// An arrow with a shaft of some width and a head three times as wide, at most as long as the arrow. Its
// corners run from the shaft's left end by the tip, which is the fourth one, to its right end.
std::array<Point, 7> ArrowOutline(Point from, double direction, double length, double width, double opening);

// A row of dovetails from one point to another. The tails reach to the left of that direction, where they are
// widest.
struct DovetailRow {
  static constexpr int MaxTails = 1000;

  Point From, To;
  int Tails = 1;           // 1 to MaxTails
  double Height = 0;       // of the tails
  double Slope = 10;       // of the flanks, from the perpendicular
  double Inclination = 0;  // of the whole row, forward from the perpendicular
  double Ratio = 1;        // width of a tail over that of a pin, at half the height
  bool EndPins =
      true;  // half a pin at both ends; else the row begins and ends with the straight side of a tail
};

struct Dovetails {
  std::vector<Point> Joint;  // the line between the two boards, from one end of the row to the other
  std::vector<Point> Roots;  // its corners on the line between the row's points
  std::vector<Point> Ends;   // its corners at the tails' ends
};

// The lists are empty when the tails or the pins would have no width somewhere.
Dovetails DovetailsOf(const DovetailRow& row);

// A patch of a colour palette, from the palette's lower left corner.
struct PalettePatch {
  Point Corner;  // lower left
  Point Size;
  Colour Ink = Black;
};

// Palettes of the given size in which the number is at least 1: hues side by side; hues across by as many
// lightnesses, light above; all mixtures of so many levels of red, green and blue, one square of green
// (across) and blue (upward) for each red.
std::vector<PalettePatch> HuePalette(int number, Point size);
std::vector<PalettePatch> LightnessPalette(int number, Point size);
std::vector<PalettePatch> MixturePalette(int number, Point size);

}  // namespace vaxel
