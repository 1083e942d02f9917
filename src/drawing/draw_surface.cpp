#include "drawing/draw_surface.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "drawing/drawing_fault.h"

namespace vaxel {
namespace {

constexpr double MillimetresPerPoint = MillimetresPerInch / 72;
constexpr double Turn = 2 * std::numbers::pi;
constexpr double LeastFileWidthMm = MillimetresPerInch / 600;

double Checked(double value) {
  if (!(std::abs(value) <= MaxCoordinate)) throw DrawingFault{DrawingFault::Reason::OutOfRange};
  return value;
}

}  // namespace

void DrawSurface::Begin(const RunTarget& target) {
  target_ = target;
  measurer_ = target.Measurer ? target.Measurer : &standIn_;
  faceSelected_ = false;
  deviceSize_ = {target.WidthMm, target.HeightMm};
  Z = IsPrinter() ? target.Zoom : target.Zmm * target.Zoom;
  list_->BeginPage(deviceSize_.X, deviceSize_.Y);
  ScaleToDevice();
  centreSet_ = false;
  CentreByDefault();
  ResetState();
}

void DrawSurface::ScaleToDevice() {
  W = deviceSize_.X / Z;
  H = deviceSize_.Y / Z;
  SetScale(0, H, W, -H);
}

void DrawSurface::CentreByDefault() {
  CentreX = Middle().X + target_.OffX / Z;
  CentreY = Middle().Y + target_.OffY / Z;
  MoveTo(Origin());
}

void DrawSurface::SetCentre(Point surfacePoint) {
  CentreX = surfacePoint.X;
  CentreY = surfacePoint.Y;
  CTX = CTY = 0;
  centreSet_ = true;
  MoveTo(surfacePoint);
}

void DrawSurface::ResetState() {
  CTX = CTY = 0;
  ForeColor = FillColor = Black;
  DrawWidth = 1;
  SquareEnds = FillStyle = false;
  Font = {};
  SetFontSizes({.Base = Font.Size, .Standard = Font.Size});
}

void DrawSurface::SetFontSizes(const FontSizeRegisters& sizes) {
  FontSizes = sizes;
  Font.Size = FontSizes.Current() * Z;
}

void DrawSurface::Clear() {
  list_->Clear();
}

void DrawSurface::NewPage() {
  list_->BeginPage(deviceSize_.X, deviceSize_.Y);
}

void DrawSurface::SetScale(double left, double top, double width, double height) {
  left_ = left;
  top_ = top;
  scaleX_ = deviceSize_.X / width;
  scaleY_ = deviceSize_.Y / height;
}

double DrawSurface::LeastWidth() const {
  return target_.IsPixelDevice ? 1 : std::min(1.0, LeastFileWidthMm / target_.PixelMm);
}

Point DrawSurface::ToDevice(double x, double y) const {
  return {Checked((x - left_) * scaleX_), Checked((y - top_) * scaleY_)};
}

Operation DrawSurface::NewOperation(Colour colour, Shape figure) const {
  return {Checked(DrawWidth * target_.PixelMm), colour, SourceLine, figure};
}

void DrawSurface::Line(double x1, double y1, double x2, double y2, Colour colour) {
  list_->Add(NewOperation(colour, LineShape{ToDevice(x1, y1), ToDevice(x2, y2)}));
  CurrentX = x2;
  CurrentY = y2;
}

void DrawSurface::Rectangle(double x1, double y1, double x2, double y2, Colour colour, bool filled) {
  list_->Add(NewOperation(colour, RectangleShape{ToDevice(x1, y1), ToDevice(x2, y2), {filled, FillColor}}));
}

void DrawSurface::Polygon(std::span<const Point> points, Colour colour, bool filled) {
  corners_.clear();
  for (const Point& point : points) corners_.push_back(ToDevice(point.X, point.Y));
  list_->AddPolygon(corners_, {filled, FillColor}, NewOperation(colour));
}

void DrawSurface::SquareStroke(const std::array<Point, 4>& corners, Colour colour) {
  std::array<Point, 4> placed;
  std::transform(corners.begin(), corners.end(), placed.begin(),
                 [this](const Point& corner) { return ToDevice(corner.X, corner.Y); });
  const double outline = target_.IsPixelDevice ? target_.PixelMm : 0;
  list_->AddPolygon(placed, {true, colour}, {outline, colour, SourceLine, {}}, PolygonUse::Stroke);
}

void DrawSurface::Contour(std::span<const ContourArc> pieces, Colour colour, bool filled) {
  pieces_.clear();
  for (const ContourArc& piece : pieces) {
    pieces_.push_back({ToDevice(piece.Centre.X, piece.Centre.Y), std::abs(Checked(piece.Radius * scaleX_)),
                       std::remainder(piece.StartAngle, Turn), piece.Sweep});
  }
  list_->AddContour(pieces_, {filled, FillColor}, NewOperation(colour));
}

void DrawSurface::PaintPicture(std::shared_ptr<const Picture> picture, Point corner, double width,
                               double height) {
  const Point upperLeft = ToDevice(corner.X, corner.Y + height);
  ToDevice(corner.X + width, corner.Y);  // a corner that is out of range is a fault too
  const Point size = {width * std::abs(scaleX_), height * std::abs(scaleY_)};
  list_->AddPicture(std::move(picture), {upperLeft, size.X, size.Y}, {0, Black, SourceLine, {}});
}

void DrawSurface::Circle(double cx, double cy, double radius, Colour colour, CircleForm form,
                         double startAngle, double endAngle, double aspect) {
  CircleShape circle{ToDevice(cx, cy),
                     std::abs(Checked(radius * scaleX_)),
                     std::abs(Checked(radius * aspect * scaleY_)),
                     0,
                     0,
                     {FillStyle && form != CircleForm::Arc, FillColor},
                     form,
                     SquareEnds && form == CircleForm::Arc};
  if (form != CircleForm::Full) {
    circle.StartAngle = std::remainder(startAngle, Turn);
    double sweep = std::fmod(endAngle - startAngle, Turn);
    if (sweep <= 0) sweep += Turn;
    circle.EndAngle = circle.StartAngle + sweep;
  }
  list_->Add(NewOperation(colour, circle));
}

void DrawSurface::PSet(double x, double y, Colour colour) {
  list_->Add(NewOperation(colour, PointShape{ToDevice(x, y)}));
}

void DrawSurface::SelectFace() {
  if (faceSelected_ && face_.Bold == Font.Bold && face_.Italic == Font.Italic && face_.Name == Font.Name)
    return;
  faceSelected_ = true;
  face_ = {Font.Name, Font.Bold, Font.Italic};
  table_ = StandardFace(face_);
  metrics_ = table_ ? table_->Metrics() : measurer_->Metrics(face_);
}

double DrawSurface::WidthInFace(std::string_view text) {
  const std::optional<double> width = table_ ? table_->Width(text) : std::nullopt;
  return width ? *width : measurer_->Width(face_, text);
}

template <class Use>
void DrawSurface::ForEachPiece(std::string text, Use use) {
  // The superscripts that a font may lack begin with these bytes.
  if (table_ && text.find("\xE2\x81") != std::string::npos) {
    for (TextPiece& piece : PiecesOf(text, *table_)) use(std::move(piece));
  } else if (!text.empty()) {
    use(TextPiece{std::move(text)});
  }
}

TextExtent DrawSurface::MeasureText(std::string_view text) {
  SelectFace();
  const double size = Checked(Font.Size * MillimetresPerPoint) / Z;
  double length = 0;
  ForEachPiece(DrawableText(text),
               [&](const TextPiece& piece) { length += WidthInFace(piece.Text) * piece.Scale; });
  return {length * size, metrics_.Ascent * size, metrics_.Descent * size};
}

void DrawSurface::TextOut(double x, double y, std::string_view text, Colour colour) {
  SelectFace();
  const double ascent = metrics_.Ascent * Font.Size * MillimetresPerPoint / Z;
  TextOutRotated({x, y - ascent}, 0, text, colour);
  CurrentY = y;
}

void DrawSurface::TextOutRotated(Point start, double rotation, std::string_view text, Colour colour) {
  SelectFace();
  const double size = Checked(Font.Size * MillimetresPerPoint);
  const TextFrame frame(rotation);
  const double angle = std::remainder(rotation, 360) * RadiansPerDegree;
  double length = 0;
  ForEachPiece(DrawableText(text), [&](TextPiece piece) {
    const double pieceSize = size * piece.Scale;
    const double pieceLength = Checked(WidthInFace(piece.Text) * pieceSize);
    const Point from = start + frame.Along * (length / Z) + frame.Up * (piece.Rise * size / Z);
    list_->AddText(std::move(piece.Text), face_, {ToDevice(from.X, from.Y), angle, pieceSize, pieceLength},
                   {0, colour, SourceLine, {}});
    length += pieceLength;
  });
  const Point end = start + frame.Along * (length / Z);
  ToDevice(end.X, end.Y);  // an end that is out of range is a fault too
  if (Font.Underline) Underline(start, frame, length / Z, colour);
  MoveTo(end);
}

// The line's round ends reach from the text's start to its end.
void DrawSurface::Underline(Point start, const TextFrame& frame, double length, Colour colour) {
  const double unit = Font.Size * MillimetresPerPoint / Z;
  const double thickness = metrics_.UnderlineThickness * unit;
  if (length <= thickness) return;
  const Point from = start + frame.Up * (metrics_.UnderlinePosition * unit) + frame.Along * (thickness / 2);
  const Point to = from + frame.Along * (length - thickness);
  list_->Add({Checked(thickness * Z), colour, SourceLine,
              LineShape{ToDevice(from.X, from.Y), ToDevice(to.X, to.Y)}});
}

std::string DrawSurface::FontReplacement() {
  SelectFace();
  return table_ ? std::string() : measurer_->Replacement(face_);
}

void DrawSurface::SetOrientation(PageOrientation orientation) {
  const bool turned = orientation == PageOrientation::Landscape;
  deviceSize_ = turned ? Point{target_.HeightMm, target_.WidthMm} : Point{target_.WidthMm, target_.HeightMm};
  list_->ResizePage(deviceSize_.X, deviceSize_.Y);
  ScaleToDevice();
  if (!centreSet_) CentreByDefault();
}

}  // namespace vaxel
