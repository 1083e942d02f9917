#include "drawing/pen.h"

#include <array>
#include <cmath>

#include "drawing/draw_surface.h"

namespace vaxel {
namespace {

double SignOf(double value) {
  return value > 0 ? 1 : value < 0 ? -1 : 0;
}

void DrawSquarePiece(DrawSurface& surface, const Segment& piece, Point half, Colour colour) {
  const std::array<Point, 4> corners = {Point{piece.From.X + half.X, piece.From.Y - half.Y},
                                        Point{piece.From.X - half.X, piece.From.Y + half.Y},
                                        Point{piece.To.X - half.X, piece.To.Y + half.Y},
                                        Point{piece.To.X + half.X, piece.To.Y - half.Y}};
  surface.SquareStroke(corners, colour);
  surface.MoveTo(piece.To);
}

}  // namespace

DashStepper::DashStepper(const Pen& pen, Point from, Point to)
    : position_(from), end_(to), solid_(!pen.Dashed()) {
  if (solid_) return;
  const double length = std::hypot(to.X - from.X, to.Y - from.Y);
  const Point along = {(to.X - from.X) / length, (to.Y - from.Y) / length};
  dash1_ = along * pen.L1;
  gap_ = pen.L2 == 0 ? dash1_ : along * pen.L2;
  dash2_ = pen.L3 == 0 ? dash1_ : along * pen.L3;
  signX_ = SignOf(dash1_.X);
  signY_ = SignOf(dash1_.Y);
}

std::optional<Segment> DashStepper::Next() {
  if (done_) return std::nullopt;
  if (solid_) {
    done_ = true;
    return Segment{position_, end_};
  }
  const Segment piece = PieceAlong(second_ ? dash2_ : dash1_);
  second_ = !second_;
  done_ = HasPassedEnd();
  return piece;
}

// Along an axis the sign on the other axis is 0: the comparison then holds and takes the end's own value.
Segment DashStepper::PieceAlong(Point dash) {
  Point stop = position_ + dash;
  if ((stop.X - end_.X) * signX_ >= 0) stop.X = end_.X;
  if ((stop.Y - end_.Y) * signY_ >= 0) stop.Y = end_.Y;
  const Segment piece = {position_, stop};
  position_ = position_ + dash + gap_;
  return piece;
}

bool DashStepper::HasPassedEnd() const {
  return (position_.X - end_.X) * signX_ > 0 || (position_.Y - end_.Y) * signY_ > 0;
}

bool DrawStroke(DrawSurface& surface, const Pen& pen, Point from, Point to, Colour colour) {
  const Stroke stroke{colour, pen.Width};
  if (!pen.SquareEnds && !pen.Dashed()) {
    surface.Line(from, to, stroke);
    return true;
  }
  const double length = std::hypot(to.X - from.X, to.Y - from.Y);
  if (length == 0 && pen.Dashed()) return false;

  Point half;
  if (pen.SquareEnds && length != 0) {
    const double halfWidth = pen.Width / 2 * surface.PixelSize();
    half = {halfWidth * (to.Y - from.Y) / length, halfWidth * (to.X - from.X) / length};
  }
  DashStepper pieces(pen, from, to);
  while (const std::optional<Segment> piece = pieces.Next()) {
    if (pen.SquareEnds) {
      DrawSquarePiece(surface, *piece, half, colour);
    } else {
      surface.Line(piece->From, piece->To, stroke);
    }
  }
  return true;
}

}  // namespace vaxel
