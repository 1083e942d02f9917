#include "render/gdi_renderer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace vaxel {
namespace {

// Millimetres: what is smaller has no inside.
constexpr double LeastSize = 1e-6;
// Pixels by which the sides that stand for a curve may lie beside it.
constexpr double Tolerance = 0.15;
// Pixels around what is shown, so that the edges along which figures are cut are not seen.
constexpr int Margin = 4;
// The largest number that the device's own arithmetic can take.
constexpr double MaxUnits = 50'000'000;
// Pixels: a thinner stroke is drawn with the thinnest pen, as an outline that narrow could vanish between
// the middles of the pixels.
constexpr double ThinStroke = 1.5;

LONG RoundedUnit(double value) {
  return static_cast<LONG>(std::floor(std::clamp(value, -MaxUnits, MaxUnits) + 0.5));
}

double ValueOf(Point point, bool isX) {
  return isX ? point.X : point.Y;
}

// Cuts the segment to the box; false when nothing of it is left.
bool CutSegment(Point& from, Point& to, double left, double top, double right, double bottom) {
  double enter = 0, leave = 1;
  const Point along = to - from;
  const double directions[] = {-along.X, along.X, -along.Y, along.Y};
  const double distances[] = {from.X - left, right - from.X, from.Y - top, bottom - from.Y};
  for (int side = 0; side < 4; ++side) {
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

// Multiplied colours as they look on white, the last row first: not every reader of a metafile knows the
// other order.
std::vector<std::uint32_t> OnWhite(const std::vector<std::uint32_t>& pixels, int width) {
  std::vector<std::uint32_t> opaque;
  opaque.reserve(pixels.size());
  const auto rowLength = static_cast<std::size_t>(width);
  for (std::size_t end = pixels.size(); end > 0; end -= rowLength) {
    for (std::size_t i = end - rowLength; i < end; ++i) {
      opaque.push_back(pixels[i] + (255 - (pixels[i] >> 24)) * 0x010101U);
    }
  }
  return opaque;
}

}  // namespace

const std::vector<std::uint32_t>* GdiPictures::PixelsOf(const Picture& picture) {
  const auto [place, isNew] = pixels_.try_emplace(&picture);
  std::vector<std::uint32_t>& pixels = place->second;
  if (isNew && !(decoder_ && decoder_->Decode(picture, pixels))) pixels.clear();
  return pixels.empty() ? nullptr : &pixels;
}

GdiRenderer::GdiRenderer(HDC context, const DeviceTransform& transform, GdiStock& stock, GdiStrokes strokes)
    : context_(context),
      transform_(transform),
      stock_(stock),
      strokes_(strokes),
      pixelMm_(1 / std::min(transform.PixelsPerMmX, transform.PixelsPerMmY)),
      tolerance_(Tolerance / std::max(transform.PixelsPerMmX, transform.PixelsPerMmY)),
      shape_(tolerance_),
      stroke_(tolerance_) {}

void GdiRenderer::Expect(bool succeeded, const char* failure) {
  if (!succeeded && failure_.empty()) failure_ = failure;
}

void GdiRenderer::BeginPage(const Page&, std::size_t) {
  saved_ = SaveDC(context_);
  Expect(saved_ != 0, "the device cannot be drawn on");
  SetPolyFillMode(context_, WINDING);
  // Metafiles and printers take what lies outside too: what they show in the end is not known here.
  constexpr auto most = static_cast<LONG>(MaxUnits);
  shown_ = {-most, -most, most, most};
  if (strokes_ == GdiStrokes::Outlines) {
    RECT clip{};
    if (GetClipBox(context_, &clip) != ERROR) shown_ = clip;
  }
  InflateRect(&shown_, Margin, Margin);
  shownMm_ = {(shown_.left - transform_.OffsetX) / transform_.PixelsPerMmX,
              (shown_.top - transform_.OffsetY) / transform_.PixelsPerMmY,
              (shown_.right - transform_.OffsetX) / transform_.PixelsPerMmX,
              (shown_.bottom - transform_.OffsetY) / transform_.PixelsPerMmY};
}

void GdiRenderer::EndPage() {
  RestoreDC(context_, saved_);
  brush_.reset();
  pen_.reset();
}

GdiRenderer::Box GdiRenderer::BoxOf(Point first, Point second) {
  return {std::min(first.X, second.X), std::min(first.Y, second.Y), std::max(first.X, second.X),
          std::max(first.Y, second.Y)};
}

bool GdiRenderer::IsVisible(const Box& box, double width) const {
  const double reach = width / 2;
  return box.Left - reach <= shownMm_.Right && box.Right + reach >= shownMm_.Left &&
         box.Top - reach <= shownMm_.Bottom && box.Bottom + reach >= shownMm_.Top;
}

double GdiRenderer::HalfWidth(const Operation& operation) const {
  return std::max(operation.Width, pixelMm_) / 2;
}

void GdiRenderer::SelectInk(Colour ink) {
  if (!brush_ || brushInk_ != ink) {
    UniqueGdi<HBRUSH> brush(CreateSolidBrush(ink));
    Expect(brush != nullptr, "the device has no more brushes");
    if (!brush) return;
    SelectObject(context_, brush.get());
    brush_ = std::move(brush);
    brushInk_ = ink;
  } else {
    SelectObject(context_, brush_.get());
  }
}

void GdiRenderer::SelectStroke(Colour ink, int width) {
  if (!pen_ || penInk_ != ink || penWidth_ != width) {
    const LOGBRUSH colour{BS_SOLID, ink, 0};
    constexpr DWORD style = PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND;
    UniqueGdi<HPEN> pen(strokes_ == GdiStrokes::Pens
                            ? ExtCreatePen(style, static_cast<DWORD>(width), &colour, 0, nullptr)
                            : CreatePen(PS_SOLID, width, ink));
    Expect(pen != nullptr, "the device has no more pens");
    if (!pen) return;
    SelectObject(context_, pen.get());
    pen_ = std::move(pen);
    penInk_ = ink;
    penWidth_ = width;
  } else {
    SelectObject(context_, pen_.get());
  }
}

POINT GdiRenderer::Rounded(Point pixel) const {
  return {RoundedUnit(pixel.X), RoundedUnit(pixel.Y)};
}

// Keeps the part of the polygon in cut_ on one side of a line.
void GdiRenderer::CutAt(double limit, bool isX, bool keepsLess) {
  const auto excess = [&](Point point) {
    return keepsLess ? ValueOf(point, isX) - limit : limit - ValueOf(point, isX);
  };
  kept_.clear();
  for (std::size_t i = 0; i < cut_.size(); ++i) {
    const Point from = cut_[i], to = cut_[i + 1 == cut_.size() ? 0 : i + 1];
    const double before = excess(from), after = excess(to);
    if (before <= 0) kept_.push_back(from);
    if ((before < 0 && after > 0) || (before > 0 && after < 0)) {
      kept_.push_back(from + (to - from) * (before / (before - after)));
    }
  }
  std::swap(cut_, kept_);
}

// Adds the polygon in whole pixels, without what lies outside what is shown: the device would step through it
// row by row.
void GdiRenderer::AppendCut(std::span<const Point> contour) {
  cut_.clear();
  Box box{MaxUnits, MaxUnits, -MaxUnits, -MaxUnits};
  for (const Point& corner : contour) {
    const Point pixel = transform_.At(corner);
    box = {std::min(box.Left, pixel.X), std::min(box.Top, pixel.Y), std::max(box.Right, pixel.X),
           std::max(box.Bottom, pixel.Y)};
    cut_.push_back(pixel);
  }
  if (box.Left < shown_.left) CutAt(shown_.left, true, false);
  if (box.Right > shown_.right) CutAt(shown_.right, true, true);
  if (box.Top < shown_.top) CutAt(shown_.top, false, false);
  if (box.Bottom > shown_.bottom) CutAt(shown_.bottom, false, true);
  const std::size_t first = points_.size();
  for (const Point& pixel : cut_) {
    const POINT rounded = Rounded(pixel);
    const bool isNew =
        points_.size() == first || points_.back().x != rounded.x || points_.back().y != rounded.y;
    if (isNew) points_.push_back(rounded);
  }
  if (points_.size() - first < 3) {
    points_.resize(first);
  } else {
    counts_.push_back(static_cast<INT>(points_.size() - first));
  }
}

void GdiRenderer::PaintOutlines(Colour ink, const Contours& contours) {
  points_.clear();
  counts_.clear();
  for (std::size_t i = 0; i < contours.Count(); ++i) AppendCut(contours.At(i));
  if (counts_.empty()) return;
  SelectObject(context_, GetStockObject(NULL_PEN));
  SelectInk(ink);
  Expect(PolyPolygon(context_, points_.data(), counts_.data(), static_cast<int>(counts_.size())) != 0,
         "the device cannot draw a figure");
}

void GdiRenderer::PaintThin(Colour ink, std::span<const Point> path, bool closed) {
  SelectStroke(ink, 1);
  const std::size_t segments = closed || path.size() == 1 ? path.size() : path.size() - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    Point from = transform_.At(path[i]), to = transform_.At(path[i + 1 == path.size() ? 0 : i + 1]);
    if (!CutSegment(from, to, shown_.left, shown_.top, shown_.right, shown_.bottom)) continue;
    // A pen draws the pixels that its points lie in, and leaves out the last one.
    const POINT end = {static_cast<LONG>(std::floor(to.X)), static_cast<LONG>(std::floor(to.Y))};
    MoveToEx(context_, static_cast<int>(std::floor(from.X)), static_cast<int>(std::floor(from.Y)), nullptr);
    Expect(LineTo(context_, end.x, end.y) != 0, "the device cannot draw a line");
    SetPixelV(context_, end.x, end.y, ink);
  }
}

void GdiRenderer::PaintWithPen(const Operation& operation, const Fill& inside, std::span<const Point> path,
                               bool closed) {
  points_.clear();
  bool isDot = true;
  for (const Point& point : path) {
    points_.push_back(Rounded(transform_.At(point)));
    isDot = isDot && points_.back().x == points_.front().x && points_.back().y == points_.front().y;
  }
  if (isDot) {
    // Not every device draws a stroke without length.
    if (operation.Width <= 0) return;
    stroke_.Clear();
    stroke_.StrokeSegment(path.front(), path.front(), HalfWidth(operation));
    PaintOutlines(operation.Ink, stroke_);
    return;
  }
  if (operation.Width > 0) {
    SelectStroke(operation.Ink, static_cast<int>(RoundedUnit(std::max(1.0, operation.Width / pixelMm_))));
  } else {
    SelectObject(context_, GetStockObject(NULL_PEN));
  }
  if (inside.Solid) {
    SelectInk(inside.Ink);
  } else {
    SelectObject(context_, GetStockObject(NULL_BRUSH));
  }
  const auto count = static_cast<int>(points_.size());
  const BOOL drawn =
      closed ? ::Polygon(context_, points_.data(), count) : Polyline(context_, points_.data(), count);
  Expect(drawn != 0, "the device cannot draw a figure");
}

// Paints the figure whose edge is the polygon in shape_; stroke adds the outline of its stroke to stroke_.
template <class Stroke>
void GdiRenderer::Paint(const Operation& operation, const Fill& inside, bool closed, Stroke stroke) {
  const std::span<const Point> path = shape_.At(0);
  if (path.empty() || (operation.Width <= 0 && !inside.Solid)) return;
  if (strokes_ == GdiStrokes::Pens) {
    PaintWithPen(operation, inside, path, closed);
    return;
  }
  if (inside.Solid) PaintOutlines(inside.Ink, shape_);
  if (operation.Width <= 0) return;
  if (operation.Width < ThinStroke * pixelMm_) {
    PaintThin(operation.Ink, path, closed);
    return;
  }
  stroke_.Clear();
  stroke(operation.Width / 2);
  PaintOutlines(operation.Ink, stroke_);
}

void GdiRenderer::PaintPath(const Operation& operation, const Fill& inside, bool closed) {
  Paint(operation, inside, closed, [&](double half) { stroke_.StrokePath(shape_.At(0), closed, half); });
}

void GdiRenderer::Line(const Operation& operation, const LineShape& line) {
  if (!IsVisible(BoxOf(line.From, line.To), 2 * HalfWidth(operation))) return;
  shape_.Clear();
  shape_.Add(line.From);
  if (line.To != line.From) shape_.Add(line.To);
  shape_.Close();
  PaintPath(operation, {}, false);
}

void GdiRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  const Point from = rectangle.Corner, to = rectangle.Opposite;
  if (!IsVisible(BoxOf(from, to), 2 * HalfWidth(operation))) return;
  shape_.Clear();
  for (const Point corner : {from, Point{to.X, from.Y}, to, Point{from.X, to.Y}}) shape_.Add(corner);
  shape_.Close();
  PaintPath(operation, rectangle.Inside, true);
}

void GdiRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                          std::span<const Point> corners) {
  if (corners.empty()) return;
  Box box = BoxOf(corners.front(), corners.front());
  shape_.Clear();
  for (const Point& corner : corners) {
    box = {std::min(box.Left, corner.X), std::min(box.Top, corner.Y), std::max(box.Right, corner.X),
           std::max(box.Bottom, corner.Y)};
    shape_.Add(corner);
  }
  shape_.Close();
  if (IsVisible(box, 2 * HalfWidth(operation))) PaintPath(operation, polygon.Inside, true);
}

void GdiRenderer::Contour(const Operation& operation, const ContourShape& contour,
                          std::span<const ContourArc> pieces) {
  if (pieces.empty()) return;
  Box box = BoxOf(pieces.front().Centre, pieces.front().Centre);
  shape_.Clear();
  for (const ContourArc& piece : pieces) {
    box = {std::min(box.Left, piece.Centre.X - piece.Radius),
           std::min(box.Top, piece.Centre.Y - piece.Radius),
           std::max(box.Right, piece.Centre.X + piece.Radius),
           std::max(box.Bottom, piece.Centre.Y + piece.Radius)};
  }
  if (!IsVisible(box, 2 * HalfWidth(operation))) return;
  for (const ContourArc& piece : pieces) {
    if (piece.Radius == 0) {
      shape_.Add(piece.Centre);
    } else {
      shape_.AddArc(piece.Centre, piece.Radius, piece.Radius, piece.StartAngle, piece.Sweep);
    }
  }
  shape_.Close();
  Paint(operation, contour.Inside, true, [&](double half) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      const ContourArc& piece = pieces[i];
      const ContourArc& next = pieces[i + 1 == pieces.size() ? 0 : i + 1];
      if (piece.Radius > 0)
        stroke_.StrokeArc(piece.Centre, piece.Radius, piece.StartAngle, piece.Sweep, half);
      const Point end = PointOnArc(piece, piece.StartAngle + piece.Sweep);
      stroke_.StrokeSegment(end, PointOnArc(next, next.StartAngle), half);
    }
  });
}

void GdiRenderer::Circle(const Operation& operation, const CircleShape& circle) {
  const Point reach = {circle.RadiusX, circle.RadiusY};
  if (circle.RadiusX < LeastSize || circle.RadiusY < LeastSize) {
    Line(operation, {circle.Centre - reach, circle.Centre + reach});
    return;
  }
  if (!IsVisible(BoxOf(circle.Centre - reach, circle.Centre + reach), 2 * HalfWidth(operation))) return;
  const bool isFull = circle.Form == CircleForm::Full, isPie = circle.Form == CircleForm::Pie;
  const double sweep = isFull ? 2 * std::numbers::pi : circle.EndAngle - circle.StartAngle;
  shape_.Clear();
  if (isPie) shape_.Add(circle.Centre);
  shape_.AddArc(circle.Centre, circle.RadiusX, circle.RadiusY, circle.StartAngle, sweep);
  shape_.Close();
  if (circle.RadiusX != circle.RadiusY) {
    PaintPath(operation, circle.Inside, circle.Form != CircleForm::Arc);
    return;
  }
  Paint(operation, circle.Inside, circle.Form != CircleForm::Arc, [&](double half) {
    if (isFull) {
      stroke_.StrokeCircle(circle.Centre, circle.RadiusX, half);
    } else {
      stroke_.StrokeArc(circle.Centre, circle.RadiusX, circle.StartAngle, sweep, half);
    }
    if (!isPie) return;
    stroke_.StrokeSegment(circle.Centre, PointOnCircle(circle, circle.StartAngle), half);
    stroke_.StrokeSegment(circle.Centre, PointOnCircle(circle, circle.EndAngle), half);
  });
}

void GdiRenderer::Dot(const Operation& operation, const PointShape& point) {
  Line(operation, {point.At, point.At});
}

void GdiRenderer::Text(const Operation& operation, const TextShape& shape, std::string_view text,
                       const FontFace& face) {
  const Point along = {std::cos(shape.Angle), -std::sin(shape.Angle)};
  const Point end = shape.Start + along * shape.Length;
  // No character reaches farther from its baseline than this.
  if (!IsVisible(BoxOf(shape.Start, end), 2.6 * shape.Size)) return;
  const Point reach = transform_.At(end) - transform_.At(shape.Start);
  const double alongX = along.X * transform_.PixelsPerMmX, alongY = along.Y * transform_.PixelsPerMmY;
  const DeviceText placed = {transform_.At(shape.Start), std::atan2(-alongY, alongX),
                             shape.Size * transform_.PixelsPerMmY, std::hypot(reach.X, reach.Y),
                             operation.Ink};
  Expect(stock_.Fonts.Draw(context_, placed, text, face), "the device cannot draw a text");
}

void GdiRenderer::Image(const Operation&, const PictureShape& shape, const Picture& picture) {
  if (shape.Width < LeastSize || shape.Height < LeastSize) return;
  const Point opposite = shape.Corner + Point{shape.Width, shape.Height};
  if (!IsVisible(BoxOf(shape.Corner, opposite), 0)) return;
  const std::vector<std::uint32_t>* const pixels = stock_.Pictures.PixelsOf(picture);
  if (!pixels) {
    if (failure_.empty()) failure_ = "the picture " + picture.Name + " cannot be decoded";
    return;
  }
  const POINT from = Rounded(transform_.At(shape.Corner)), to = Rounded(transform_.At(opposite));
  const PixelBox box = {static_cast<int>(from.x), static_cast<int>(from.y),
                        static_cast<int>(std::max(to.x, from.x + 1)),
                        static_cast<int>(std::max(to.y, from.y + 1))};
  const PixelView source = {pixels->data(), static_cast<int>(picture.Width),
                            static_cast<int>(picture.Height)};
  if (strokes_ == GdiStrokes::Pens) {
    StretchPicture(box, source);
  } else {
    BlendPicture(box, source);
  }
}

void GdiRenderer::BlendPicture(const PixelBox& box, const PixelView& picture) {
  const PixelBox seen = {std::max(box.Left, static_cast<int>(shown_.left)),
                         std::max(box.Top, static_cast<int>(shown_.top)),
                         std::min(box.Right, static_cast<int>(shown_.right)),
                         std::min(box.Bottom, static_cast<int>(shown_.bottom))};
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  GdiBitmap bitmap(seen.Width(), seen.Height());
  Expect(static_cast<bool>(bitmap), "there is no memory for a picture");
  if (!bitmap) return;
  const PixelBox part = {seen.Left - box.Left, seen.Top - box.Top, seen.Right - box.Left,
                         seen.Bottom - box.Top};
  const std::vector<std::uint32_t> scaled = ScalePicture(picture, box.Width(), box.Height(), part);
  std::copy(scaled.begin(), scaled.end(), bitmap.Pixels());
  const BitmapDc source(bitmap);
  constexpr BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  Expect(GdiAlphaBlend(context_, seen.Left, seen.Top, seen.Width(), seen.Height(), source.Handle(), 0, 0,
                       seen.Width(), seen.Height(), blend) != 0,
         "the device cannot draw a picture");
}

void GdiRenderer::StretchPicture(const PixelBox& box, const PixelView& picture) {
  // No more than the device can show.
  const int width = std::min(picture.Width, box.Width()), height = std::min(picture.Height, box.Height());
  const std::vector<std::uint32_t> opaque =
      OnWhite(ScalePicture(picture, width, height, {0, 0, width, height}), width);
  BITMAPINFO info = TopDownPixels(width, height);
  info.bmiHeader.biHeight = height;
  SetStretchBltMode(context_, HALFTONE);
  SetBrushOrgEx(context_, 0, 0, nullptr);
  const int lines = StretchDIBits(context_, box.Left, box.Top, box.Width(), box.Height(), 0, 0, width, height,
                                  opaque.data(), &info, DIB_RGB_COLORS, SRCCOPY);
  Expect(lines != 0, "the device cannot draw a picture");
}

}  // namespace vaxel
