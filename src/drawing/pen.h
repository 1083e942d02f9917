// The pen of straight strokes and the line routine through which every one of them passes.
#pragma once

#include <optional>

#include "base/point.h"
#include "drawing/colour.h"

namespace vaxel {

class DrawSurface;

struct Pen {
  double Width = 1;               // device pixels, at least DrawSurface::LeastWidth()
  bool SquareEnds = false;        // else round
  double L1 = 0, L2 = 0, L3 = 0;  // dash L1, gap L2, dash L3, gap L2, … in drawing units; L1 = 0: solid

  bool Dashed() const { return L1 != 0; }
};

struct Segment {
  Point From, To;
};

// The pieces of one stroke, in order. A dash that would pass the end stops at it.
class DashStepper {
 public:
  // A dashed stroke must have a length.
  DashStepper(const Pen& pen, Point from, Point to);
  // The next piece; there is none after the last.
  std::optional<Segment> Next();

 private:
  Segment PieceAlong(Point dash);
  bool HasPassedEnd() const;

  Point position_, end_;
  Point dash1_, gap_, dash2_;
  double signX_ = 0, signY_ = 0;
  bool solid_;
  bool second_ = false;
  bool done_ = false;
};

// Draws the segment on the surface (surface coordinates) and leaves the surface's current point at the end of
// the last piece. It returns false, with nothing drawn, for a dashed stroke that has no length: its direction
// cannot be told.
bool DrawStroke(DrawSurface& surface, const Pen& pen, Point from, Point to, Colour colour);

}  // namespace vaxel
