#include "render/gdi/renderer.h"
#include "render/gdi/text_outlines.h"
#include "resources/text_id.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

#include "base/units.h"

namespace vaxel {
namespace {

// Millimetres: what is smaller has no inside.
constexpr double LeastSize = 1e-6;
// Pixels by which the sides that stand for a curve may lie beside it.
constexpr double Tolerance = 0.1;
// Pixels: a wider pen would show that it ends square to the last of the curve's sides, whose ends are rounded
// to pixels, and not to the curve.
constexpr double WidestSquarePen = 4;
// The largest number that the device's own arithmetic can take.
constexpr double MaxUnits = 50'000'000;

LONG RoundedUnit(double value) {
  return static_cast<LONG>(std::floor(std::clamp(value, -MaxUnits, MaxUnits) + 0.5));
}

POINT Rounded(Point pixel) {
  return {RoundedUnit(pixel.X), RoundedUnit(pixel.Y)};
}

bool IsOpaque(const PixelView& picture) {
  const std::uint32_t* const end =
      picture.Pixels + static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height);
  return std::all_of(picture.Pixels, end, [](std::uint32_t pixel) { return pixel >> 24 == 255; });
}

}  // namespace

const std::vector<std::uint32_t>* GdiPictures::PixelsOf(const Picture& picture) {
  Decoded& known = decoded_[&picture];
  if (known.Bytes != picture.Bytes.data() || known.Size != picture.Bytes.size()) {
    known = {picture.Bytes.data(), picture.Bytes.size()};
    if (decoder_ && !decoder_->Decode(picture, known.Pixels)) known.Pixels.clear();
  }
  const bool isWhole = known.Pixels.size() == std::size_t{picture.Width} * picture.Height;
  return isWhole ? &known.Pixels : nullptr;
}

GdiRenderer::GdiRenderer(HDC context, const DeviceTransform& transform, GdiStock& stock,
                         const DisplayList& list)
    : context_(context), stock_(stock), list_(&list) {
  Place(transform);
}

GdiRenderer::GdiRenderer(const BitmapDc& target, const DeviceTransform& transform, GdiStock& stock,
                         std::optional<double> leastWidth)
    : context_(target.Handle()), stock_(stock), leastWidth_(leastWidth) {
  Place(transform);
  GdiBitmap& bitmap = target.Bitmap();
  canvas_.emplace(bitmap.Pixels(), bitmap.Width(), bitmap.Height());
}

void GdiRenderer::Place(const DeviceTransform& transform) {
  transform_ = transform;
  const double across = std::abs(transform.PixelsPerMmX), down = transform.PixelsPerMmY;
  pixelMm_ = 1 / std::min(across, down);
  const double tolerance = Tolerance / std::max(across, down);
  shape_.SetTolerance(tolerance);
  stroke_.SetTolerance(tolerance);
}

void GdiRenderer::Expect(bool succeeded, TextId failure) {
  if (!succeeded && outcome_) outcome_ = Failure{.Text = failure};
}

void GdiRenderer::BeginPage(const Page&, std::size_t number) {
  page_ = number - 1;
  saved_ = SaveDC(context_);
  Expect(saved_ != 0, TextId::DeviceNotDrawable);
  SetPolyFillMode(context_, WINDING);
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
  // What a printer or a metafile shows in the end is not known here.
  if (!canvas_) return true;
  const Point reach = {width / 2, width / 2};
  const Point from = transform_.At(Point{box.Left, box.Top} - reach);
  const Point to = transform_.At(Point{box.Right, box.Bottom} + reach);
  return from.X <= canvas_->Width() && to.X >= 0 && from.Y <= canvas_->Height() && to.Y >= 0;
}

double GdiRenderer::HalfWidth(const Operation& operation) const {
  return std::max(operation.Width, leastWidth_.value_or(pixelMm_)) / 2;
}

void GdiRenderer::SelectInk(Colour ink) {
  if (!brush_ || brushInk_ != ink) {
    UniqueGdi<HBRUSH> brush(CreateSolidBrush(ink));
    Expect(brush != nullptr, TextId::DeviceBrushes);
    if (!brush) return;
    SelectObject(context_, brush.get());
    brush_ = std::move(brush);
    brushInk_ = ink;
  } else {
    SelectObject(context_, brush_.get());
  }
}

void GdiRenderer::SelectStroke(Colour ink, int width, PathEnds ends) {
  const bool isSquare = ends == PathEnds::Square;
  if (!pen_ || penInk_ != ink || penWidth_ != width || isPenSquare_ != isSquare) {
    const LOGBRUSH colour{BS_SOLID, ink, 0};
    // Round joins between the sides of an arc might reach over ends that are near.
    const DWORD style = isSquare ? PS_ENDCAP_FLAT | PS_JOIN_BEVEL : PS_ENDCAP_ROUND | PS_JOIN_ROUND;
    UniqueGdi<HPEN> pen(
        ExtCreatePen(PS_GEOMETRIC | PS_SOLID | style, static_cast<DWORD>(width), &colour, 0, nullptr));
    Expect(pen != nullptr, TextId::DevicePens);
    if (!pen) return;
    SelectObject(context_, pen.get());
    pen_ = std::move(pen);
    penInk_ = ink;
    penWidth_ = width;
    isPenSquare_ = isSquare;
  } else {
    SelectObject(context_, pen_.get());
  }
}

bool GdiRenderer::RoundPoints(std::span<const Point> path) {
  points_.clear();
  bool differ = false;
  for (const Point& point : path) {
    points_.push_back(Rounded(transform_.At(point)));
    differ = differ || points_.back().x != points_.front().x || points_.back().y != points_.front().y;
  }
  return differ;
}

// Not every device draws a stroke without length.
void GdiRenderer::PaintDot(const Operation& operation, Point at) {
  if (operation.Width <= 0) return;
  stroke_.Clear();
  stroke_.StrokeSegment(at, at, HalfWidth(operation));
  FillStroke(operation.Ink);
}

void GdiRenderer::FillStroke(Colour ink) {
  RoundPoints(stroke_.At(0));
  SelectObject(context_, GetStockObject(NULL_PEN));
  SelectInk(ink);
  Expect(::Polygon(context_, points_.data(), static_cast<int>(points_.size())) != 0, TextId::DeviceStroke);
}

void GdiRenderer::PaintWithPen(const Operation& operation, const Fill& inside, std::span<const Point> path,
                               PathEnds ends) {
  if (!RoundPoints(path)) {
    PaintDot(operation, path.front());
    return;
  }
  if (operation.Width > 0) {
    SelectStroke(operation.Ink, static_cast<int>(RoundedUnit(std::max(1.0, operation.Width / pixelMm_))),
                 ends);
  } else {
    SelectObject(context_, GetStockObject(NULL_PEN));
  }
  if (inside.Solid) {
    SelectInk(inside.Ink);
  } else {
    SelectObject(context_, GetStockObject(NULL_BRUSH));
  }
  const auto count = static_cast<int>(points_.size());
  const BOOL drawn = ends == PathEnds::None ? ::Polygon(context_, points_.data(), count)
                                            : Polyline(context_, points_.data(), count);
  Expect(drawn != 0, TextId::DeviceFigure);
}

PixelCanvas& GdiRenderer::Canvas() {
  if (std::exchange(hasPendingTexts_, false)) GdiFlush();
  return *canvas_;
}

// Paints the figure whose edge is the polygon in shape_; stroke adds the outline of its stroke to stroke_.
template <class Stroke>
void GdiRenderer::Paint(const Operation& operation, const Fill& inside, PathEnds ends, Stroke stroke) {
  const std::span<const Point> path = shape_.At(0);
  if (path.empty() || (operation.Width <= 0 && !inside.Solid)) return;
  // What has square ends has no inside.
  const bool isWideAndSquare = ends == PathEnds::Square && operation.Width > WidestSquarePen * pixelMm_;
  if (!canvas_ && !isWideAndSquare) {
    PaintWithPen(operation, inside, path, ends);
    return;
  }
  if (inside.Solid) Canvas().Fill(shape_, transform_, inside.Ink);
  if (operation.Width <= 0) return;
  stroke_.Clear();
  stroke(HalfWidth(operation));
  if (canvas_) {
    Canvas().Fill(stroke_, transform_, operation.Ink);
  } else {
    FillStroke(operation.Ink);
  }
}

void GdiRenderer::PaintPath(const Operation& operation, const Fill& inside, PathEnds ends) {
  Paint(operation, inside, ends,
        [&](double half) { stroke_.StrokePath(shape_.At(0), ends == PathEnds::None, half); });
}

void GdiRenderer::Line(const Operation& operation, const LineShape& line) {
  if (!IsVisible(BoxOf(line.From, line.To), 2 * HalfWidth(operation))) return;
  shape_.Clear();
  shape_.Add(line.From);
  if (line.To != line.From) shape_.Add(line.To);
  shape_.Close();
  PaintPath(operation, {}, PathEnds::Round);
}

void GdiRenderer::Rectangle(const Operation& operation, const RectangleShape& rectangle) {
  const Point from = rectangle.Corner, to = rectangle.Opposite;
  if (!IsVisible(BoxOf(from, to), 2 * HalfWidth(operation))) return;
  shape_.Clear();
  for (const Point corner : {from, Point{to.X, from.Y}, to, Point{from.X, to.Y}}) shape_.Add(corner);
  shape_.Close();
  PaintPath(operation, rectangle.Inside, PathEnds::None);
}

void GdiRenderer::Polygon(const Operation& operation, const PolygonShape& polygon,
                          std::span<const Point> corners) {
  if (corners.empty()) return;
  Operation drawn = operation;
  std::array<Point, 4> stroke;
  if (leastWidth_ && polygon.Use == PolygonUse::Stroke) {
    drawn = WithExactWidth(operation, polygon);
    corners = stroke = WidenedStroke(corners, *leastWidth_);
  }
  Box box = BoxOf(corners.front(), corners.front());
  shape_.Clear();
  for (const Point& corner : corners) {
    box = {std::min(box.Left, corner.X), std::min(box.Top, corner.Y), std::max(box.Right, corner.X),
           std::max(box.Bottom, corner.Y)};
    shape_.Add(corner);
  }
  shape_.Close();
  if (IsVisible(box, 2 * HalfWidth(drawn))) PaintPath(drawn, polygon.Inside, PathEnds::None);
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
  Paint(operation, contour.Inside, PathEnds::None, [&](double half) {
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
  if (circle.Butt) {
    Paint(operation, {}, PathEnds::Square, [&](double half) {
      stroke_.StrokeButtArc(circle.Centre, circle.RadiusX, circle.RadiusY, circle.StartAngle, sweep, half);
    });
    return;
  }
  const PathEnds ends = circle.Form == CircleForm::Arc ? PathEnds::Round : PathEnds::None;
  if (circle.RadiusX != circle.RadiusY) {
    PaintPath(operation, circle.Inside, ends);
    return;
  }
  Paint(operation, circle.Inside, ends, [&](double half) {
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

void GdiRenderer::Text(const Operation& operation, const TextShape& shape, std::string_view text,
                       const FontFace& face) {
  const Point along = {std::cos(shape.Angle), -std::sin(shape.Angle)};
  const Point end = shape.Start + along * shape.Length;
  // No character reaches farther from its baseline than this.
  if (!IsVisible(BoxOf(shape.Start, end), 2.6 * shape.Size)) return;
  const Point reach = transform_.At(end) - transform_.At(shape.Start);
  const double alongX = along.X * std::abs(transform_.PixelsPerMmX),
               alongY = along.Y * transform_.PixelsPerMmY;
  const DeviceText placed = {.Start = transform_.At(shape.Start),
                             .Angle = std::atan2(-alongY, alongX),
                             .Size = shape.Size * transform_.PixelsPerMmY,
                             .Length = std::hypot(reach.X, reach.Y),
                             .Ink = operation.Ink,
                             .SetsEach = canvas_.has_value()};
  const bool isDrawn = transform_.PixelsPerMmX < 0 ? PaintMirrored(placed, text, face)
                                                   : stock_.Fonts.Draw(context_, placed, text, face);
  Expect(isDrawn, TextId::DeviceText);
  hasPendingTexts_ = true;
}

// Devices set no text in a mirror.
bool GdiRenderer::PaintMirrored(const DeviceText& text, std::string_view content, const FontFace& face) {
  const std::optional<TextOutlines> outlines = MirroredOutlines(stock_.Fonts, text, content, face);
  if (!outlines) return false;
  SelectObject(context_, GetStockObject(NULL_PEN));
  SelectInk(text.Ink);
  return outlines->Lengths.empty() ||
         PolyPolygon(context_, outlines->Corners.data(), outlines->Lengths.data(),
                     static_cast<int>(outlines->Lengths.size())) != 0;
}

void GdiRenderer::Image(const Operation& operation, const PictureShape& shape, const Picture& picture) {
  if (shape.Width < LeastSize || shape.Height < LeastSize) return;
  const Point opposite = shape.Corner + Point{shape.Width, shape.Height};
  if (!IsVisible(BoxOf(shape.Corner, opposite), 0)) return;
  const std::vector<std::uint32_t>* const pixels = stock_.Pictures.PixelsOf(picture);
  if (!pixels) {
    if (outcome_) outcome_ = Failure{.Text = TextId::PictureNotDecoded, .Words = picture.Name};
    return;
  }
  POINT from = Rounded(transform_.At(shape.Corner)), to = Rounded(transform_.At(opposite));
  if (transform_.PixelsPerMmX < 0) std::swap(from.x, to.x);
  const PixelBox box = {static_cast<int>(from.x), static_cast<int>(from.y),
                        static_cast<int>(std::max(to.x, from.x + 1)),
                        static_cast<int>(std::max(to.y, from.y + 1))};
  const PixelView source = {pixels->data(), static_cast<int>(picture.Width),
                            static_cast<int>(picture.Height)};
  if (canvas_) {
    Canvas().Blend(source, box);
  } else {
    StretchPicture(operation, shape, box, source);
  }
}

GdiBitmap GdiRenderer::WithGround(const Operation& operation, const PictureShape& shape,
                                  const PixelView& picture, int width, int height) {
  GdiBitmap bitmap(width, height);
  if (!bitmap) return {};
  std::fill_n(bitmap.Pixels(), bitmap.PixelCount(), OpaquePixel(White));
  const BitmapDc target(bitmap);
  if (!IsOpaque(picture)) {
    const double scaleX = width / shape.Width, scaleY = height / shape.Height;
    GdiRenderer ground(target, {scaleX, scaleY, -shape.Corner.X * scaleX, -shape.Corner.Y * scaleY}, stock_);
    PlayPageBefore(operation, *list_, page_, ground);
    GdiFlush();
  }
  PixelCanvas(bitmap.Pixels(), width, height).Blend(picture, {0, 0, width, height});
  return bitmap;
}

void GdiRenderer::StretchPicture(const Operation& operation, const PictureShape& shape, const PixelBox& box,
                                 const PixelView& picture) {
  // What it holds, or where that is coarse what the eye sees, but no more than the device can show.
  constexpr double pixelsPerMm = 300 / MillimetresPerInch;
  const auto sizeOf = [](int held, double side, int shown) {
    return std::min(std::max(held, static_cast<int>(std::min(side * pixelsPerMm, 4000.0))), shown);
  };
  const bool isOpaque = IsOpaque(picture);
  const int width =
      isOpaque ? std::min(picture.Width, box.Width()) : sizeOf(picture.Width, shape.Width, box.Width());
  const int height =
      isOpaque ? std::min(picture.Height, box.Height()) : sizeOf(picture.Height, shape.Height, box.Height());
  GdiBitmap bitmap = WithGround(operation, shape, picture, width, height);
  Expect(static_cast<bool>(bitmap), TextId::PictureMemory);
  if (!bitmap) return;
  if (transform_.PixelsPerMmX < 0) {
    for (int y = 0; y < height; ++y) {
      std::uint32_t* const row =
          bitmap.Pixels() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
      std::reverse(row, row + width);
    }
  }
  // The last row first: not every reader of a metafile knows the other order.
  for (int y = 0; y < height / 2; ++y) {
    std::uint32_t* const row =
        bitmap.Pixels() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    std::swap_ranges(
        row, row + width,
        bitmap.Pixels() + static_cast<std::size_t>(height - 1 - y) * static_cast<std::size_t>(width));
  }
  BITMAPINFO info = TopDownPixels(width, height);
  info.bmiHeader.biHeight = height;
  SetStretchBltMode(context_, HALFTONE);
  SetBrushOrgEx(context_, 0, 0, nullptr);
  const int lines = StretchDIBits(context_, box.Left, box.Top, box.Width(), box.Height(), 0, 0, width, height,
                                  bitmap.Pixels(), &info, DIB_RGB_COLORS, SRCCOPY);
  Expect(lines != 0, TextId::DevicePicture);
}

}  // namespace vaxel
