#include "render/cairo/renderer.h"
#include "resources/text_id.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

// Millimetres: a matrix that scales to less than can be seen cannot be used.
constexpr double LeastSize = 1e-6;

// Cuts the line to the square within reach, side by side; false when nothing of it is left.
bool CutToReach(Point& from, Point& to, double reach) {
  double enter = 0, leave = 1;
  const Point along = to - from;
  const std::array<double, 4> directions = {-along.X, along.X, -along.Y, along.Y};
  const std::array<double, 4> distances = {from.X + reach, reach - from.X, from.Y + reach, reach - from.Y};
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

CairoRenderer::CairoRenderer(cairo_t* context, PictureDecoder* decoder, double leastWidth)
    : context_(context), leastWidth_(leastWidth), pictures_(decoder) {
  SetEnds(CAIRO_LINE_CAP_ROUND, CAIRO_LINE_JOIN_ROUND);
  // In device units, of which a millimetre has at least 2.8: curves are exact far below what can be seen.
  cairo_set_tolerance(context_, 0.005);
  // Cairo counts in 1/256 of a device unit with 32 bits: beyond 2^23 units its coordinates wrap round.
  constexpr double maxUnits = 8'000'000;
  cairo_matrix_t matrix;
  cairo_get_matrix(context_, &matrix);
  reach_ = maxUnits / matrix.xx;
}

WriteResult CairoRenderer::Written() const {
  WriteResult result;
  const cairo_status_t status = cairo_status(context_);
  if (texts_) result = {texts_->Outcome(), texts_->Replaced()};
  if (!outcome_) result.Outcome = outcome_;
  if (status != CAIRO_STATUS_SUCCESS) result.Outcome = Failure{.Words = cairo_status_to_string(status)};
  return result;
}

void CairoRenderer::Mirror() {
  cairo_translate(context_, pageWidth_, 0);
  cairo_scale(context_, -1, 1);
}

void CairoRenderer::BeginPage(const Page& page, std::size_t) {
  pageWidth_ = page.Width;
  isMirrored_ = page.IsMirrored;
  if (isMirrored_) Mirror();
}

// The mirror image of a mirror image is what it was: to restore the context would forget what texts have set.
void CairoRenderer::EndPage() {
  if (isMirrored_) Mirror();
  cairo_show_page(context_);
}

void CairoRenderer::SetEnds(cairo_line_cap_t ends, cairo_line_join_t joins) {
  cairo_set_line_cap(context_, ends);
  cairo_set_line_join(context_, joins);
}

void CairoRenderer::SetInk(Colour colour) {
  cairo_set_source_rgb(context_, RedOf(colour) / 255.0, GreenOf(colour) / 255.0, BlueOf(colour) / 255.0);
}

void CairoRenderer::Paint(const Operation& operation, const Fill& inside) {
  if (inside.Solid) {
    SetInk(inside.Ink);
    cairo_fill_preserve(context_);
  }
  if (operation.Width > 0) {
    SetInk(operation.Ink);
    cairo_set_line_width(context_, std::max(operation.Width, leastWidth_));
    cairo_stroke(context_);
  }
  cairo_new_path(context_);
}

void CairoRenderer::Line(const Operation& operation, const LineShape& line) {
  Point from = line.From, to = line.To;
  if (!CutToReach(from, to, reach_)) return;
  cairo_move_to(context_, from.X, from.Y);
  cairo_line_to(context_, to.X, to.Y);
  Paint(operation, {});
}

void CairoRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  const auto within = [this](double value) { return std::clamp(value, -reach_, reach_); };
  const double left = within(rectangle.Corner.X), top = within(rectangle.Corner.Y);
  cairo_rectangle(context_, left, top, within(rectangle.Opposite.X) - left,
                  within(rectangle.Opposite.Y) - top);
  Paint(operation, rectangle.Inside);
}

void CairoRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                            std::span<const Point> corners) {
  std::array<Point, 4> stroke;
  if (polygon.Use == PolygonUse::Stroke) corners = stroke = WidenedStroke(corners, leastWidth_);
  for (const Point& corner : corners) {
    cairo_line_to(context_, std::clamp(corner.X, -reach_, reach_), std::clamp(corner.Y, -reach_, reach_));
  }
  cairo_close_path(context_);
  Paint(WithExactWidth(operation, polygon), polygon.Inside);
}

void CairoRenderer::Contour(const Operation& operation, const ContourShape& contour,
                            std::span<const ContourArc> pieces) {
  for (const ContourArc& piece : pieces) {
    const double farthest = std::max(std::abs(piece.Centre.X), std::abs(piece.Centre.Y)) + piece.Radius;
    if (farthest > reach_) {
      cairo_new_path(context_);
      return;
    }
    // Cairo's angles run clockwise, because y runs downward.
    const double start = -piece.StartAngle, end = start - piece.Sweep;
    if (piece.Radius == 0) {
      cairo_line_to(context_, piece.Centre.X, piece.Centre.Y);
    } else if (piece.Sweep < 0) {
      cairo_arc(context_, piece.Centre.X, piece.Centre.Y, piece.Radius, start, end);
    } else {
      cairo_arc_negative(context_, piece.Centre.X, piece.Centre.Y, piece.Radius, start, end);
    }
  }
  cairo_close_path(context_);
  Paint(operation, contour.Inside);
}

void CairoRenderer::Circle(const Operation& operation, const CircleShape& circle) {
  const double farX = std::abs(circle.Centre.X) + circle.RadiusX;
  const double farY = std::abs(circle.Centre.Y) + circle.RadiusY;
  if (std::max(farX, farY) > reach_) return;
  const bool flat = circle.RadiusX < LeastSize || circle.RadiusY < LeastSize;
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
  // Round joins between the pieces of an arc would reach over ends that are near.
  if (circle.Butt && !flat) SetEnds(CAIRO_LINE_CAP_BUTT, CAIRO_LINE_JOIN_BEVEL);
  Paint(operation, circle.Inside);
  SetEnds(CAIRO_LINE_CAP_ROUND, CAIRO_LINE_JOIN_ROUND);
}

void CairoRenderer::Text(const Operation& operation, const TextShape& shape, std::string_view text,
                         const FontFace& face) {
  if (!texts_) texts_ = std::make_unique<CairoText>(context_, reach_);
  SetInk(operation.Ink);
  texts_->Draw(shape, text, face);
}

void CairoRenderer::Image(const Operation&, const PictureShape& shape, const Picture& picture) {
  if (shape.Width < LeastSize || shape.Height < LeastSize) return;
  cairo_surface_t* const surface = pictures_.SurfaceOf(picture);
  if (!surface) {
    if (outcome_) outcome_ = Failure{.Text = TextId::PictureNotDecoded, .Words = picture.Name};
    return;
  }
  cairo_save(context_);
  cairo_translate(context_, shape.Corner.X, shape.Corner.Y);
  cairo_scale(context_, shape.Width / picture.Width, shape.Height / picture.Height);
  cairo_set_source_surface(context_, surface, 0, 0);
  if (cairo_surface_get_type(cairo_get_target(context_)) == CAIRO_SURFACE_TYPE_IMAGE) {
    // Else the outermost pixels would fade into the paper.
    cairo_pattern_set_extend(cairo_get_source(context_), CAIRO_EXTEND_PAD);
    cairo_rectangle(context_, 0, 0, picture.Width, picture.Height);
    cairo_fill(context_);
  } else {
    // So a document takes the picture as it is, with its own resolution.
    cairo_paint(context_);
  }
  cairo_restore(context_);
}

}  // namespace vaxel
