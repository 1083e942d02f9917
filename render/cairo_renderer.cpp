#include "render/cairo_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

// Cairo counts in 1/256 of a device unit with 32 bits: beyond this many millimetres its coordinates wrap
// round. Nothing so far away is on any page, but a line may cross the page on its way there.
constexpr double Reach = 100'000;

bool WithinReach(const CircleShape& circle) {
  return std::abs(circle.Centre.X) + circle.RadiusX < Reach &&
         std::abs(circle.Centre.Y) + circle.RadiusY < Reach;
}

// Cuts the line to the square within reach, side by side; false when nothing of it is left.
bool CutToReach(Point& from, Point& to) {
  double enter = 0, leave = 1;
  const Point along = to - from;
  const std::array<double, 4> directions = {-along.X, along.X, -along.Y, along.Y};
  const std::array<double, 4> distances = {from.X + Reach, Reach - from.X, from.Y + Reach, Reach - from.Y};
  for (std::size_t side = 0; side < directions.size(); ++side) {
    if (directions[side] == 0) {
      if (distances[side] < 0) return false;
      continue;
    }
    const double crossing = distances[side] / directions[side];
    if (directions[side] < 0) enter = std::max(enter, crossing);
    if (directions[side] > 0) leave = std::min(leave, crossing);
  }
  if (enter > leave) return false;
  const Point start = from;
  from = start + along * enter;
  to = start + along * leave;
  return true;
}

}  // namespace

CairoRenderer::CairoRenderer(cairo_t* context) : context_(context) {
  cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
  // In device units, of which a millimetre has at least 2.8: curves are exact far below what can be seen.
  cairo_set_tolerance(context_, 0.005);
}

void CairoRenderer::BeginPage(const Page&, std::size_t) {}

void CairoRenderer::EndPage() {
  cairo_show_page(context_);
}

void CairoRenderer::SetInk(Colour colour) {
  cairo_set_source_rgb(context_, RedOf(colour) / 255.0, GreenOf(colour) / 255.0, BlueOf(colour) / 255.0);
}

void CairoRenderer::Paint(const Operation& operation, const Fill& inside) {
  if (inside.Solid) {
    SetInk(inside.Ink);
    cairo_fill_preserve(context_);
  }
  SetInk(operation.Ink);
  cairo_set_line_width(context_, operation.Width);
  cairo_stroke(context_);
}

void CairoRenderer::Line(const Operation& operation, const LineShape& line) {
  Point from = line.From, to = line.To;
  if (!CutToReach(from, to)) return;
  cairo_move_to(context_, from.X, from.Y);
  cairo_line_to(context_, to.X, to.Y);
  Paint(operation, {});
}

void CairoRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  const auto within = [](double value) { return std::clamp(value, -Reach, Reach); };
  const double left = within(rectangle.Corner.X), top = within(rectangle.Corner.Y);
  cairo_rectangle(context_, left, top, within(rectangle.Opposite.X) - left,
                  within(rectangle.Opposite.Y) - top);
  Paint(operation, rectangle.Inside);
}

void CairoRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                            std::span<const Point> corners) {
  for (const Point& corner : corners) {
    cairo_line_to(context_, std::clamp(corner.X, -Reach, Reach), std::clamp(corner.Y, -Reach, Reach));
  }
  cairo_close_path(context_);
  Paint(operation, polygon.Inside);
}

void CairoRenderer::Circle(const Operation& operation, const CircleShape& circle) {
  if (!WithinReach(circle)) return;
  const bool flat = circle.RadiusX == 0 || circle.RadiusY == 0;
  cairo_save(context_);
  cairo_translate(context_, circle.Centre.X, circle.Centre.Y);
  // An ellipse without one of its axes is a line; a scale of 0 would make the matrix unusable.
  if (!flat) cairo_scale(context_, circle.RadiusX, circle.RadiusY);
  if (flat) {
    cairo_move_to(context_, -circle.RadiusX, -circle.RadiusY);
    cairo_line_to(context_, circle.RadiusX, circle.RadiusY);
  } else if (circle.Form == CircleForm::Full) {
    cairo_new_sub_path(context_);
    cairo_arc(context_, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(context_);
  } else {
    if (circle.Form == CircleForm::Pie) cairo_move_to(context_, 0, 0);
    // Cairo's angles run clockwise, because y runs downward.
    cairo_arc_negative(context_, 0, 0, 1, -circle.StartAngle, -circle.EndAngle);
    if (circle.Form == CircleForm::Pie) cairo_close_path(context_);
  }
  cairo_restore(context_);
  Paint(operation, circle.Inside);
}

void CairoRenderer::Dot(const Operation& operation, const PointShape& point) {
  Line(operation, {point.At, point.At});
}

}  // namespace vaxel
