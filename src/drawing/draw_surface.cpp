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

Point SizeOf(const RunTarget& target, bool isTurned) {
  return isTurned ? Point{target.HeightMm, target.WidthMm} : Point{target.WidthMm, target.HeightMm};
}

}  // namespace

void DrawSurface::Begin(const RunTarget& target) {
  target_ = target;
  measurer_ = target.Measurer ? target.Measurer : &standIn_;
  faceSelected_ = false;
  deviceSize_ = SizeOf(target, target.IsTurned);
  Z = IsPrinter() ? target.Zoom : target.Zmm * target.Zoom;
  list_->BeginPage(deviceSize_.X, deviceSize_.Y);
  ScaleToDevice();
  centreSet_ = isFilm_ = false;
  CentreByDefault();
  ResetState();
}

void DrawSurface::ScaleToDevice() {
  size_ = {deviceSize_.X / Z, deviceSize_.Y / Z};
  scaleX_ = deviceSize_.X / size_.X;
  scaleY_ = deviceSize_.Y / -size_.Y;
}

void DrawSurface::CentreByDefault() {
  CentreX = Middle().X + target_.OffX / Z;
  CentreY = Middle().Y + target_.OffY / Z;
  MarkCentre();
  MoveTo(Origin());
}

void DrawSurface::SetCentre(Point surfacePoint) {
  CentreX = surfacePoint.X;
  CentreY = surfacePoint.Y;
  CTX = CTY = 0;
  centreSet_ = true;
  MoveTo(surfacePoint);
}

void DrawSurface::ShiftBy(Point way) {
  CTX += way.X;
  CTY += way.Y;
}

void DrawSurface::ResetState() {
  CTX = CTY = 0;
  ForeColor = Black;
  DrawWidth = 1;
  SquareEnds = false;
  Font = {};
  SetFontSizes({});
}

void DrawSurface::SetFontSizes(const FontSizeRegisters& sizes) {
  FontSizes = sizes;
  Font.Size = FontSizes.Current() * Z;
}

// A script that draws page after page without an end is a film: it shows one picture at a time for as long as
// its user likes.
void DrawSurface::NextPage() {
  // A file gets all of them.
  const bool hasRoom = !target_.IsPixelDevice || list_->HasRoomForPages();
  isFilm_ = isFilm_ || (!IsPrinter() && !(target_.KeepsPages && hasRoom));
  if (isFilm_) {
    list_->Clear();
  } else {
    list_->BeginPage(deviceSize_.X, deviceSize_.Y);
  }
}

double DrawSurface::LeastWidth() const {
  return target_.IsPixelDevice ? 1 : std::min(1.0, LeastFileWidthMm / target_.PixelMm);
}

// The surface counts upward from its lower-left corner, the device downward from its upper-left one.
Point DrawSurface::ToDevice(Point point) const {
  return {Checked(point.X * scaleX_), Checked((point.Y - size_.Y) * scaleY_)};
}

void DrawSurface::CountOperation() const {
  constexpr unsigned few = 64;
  if (++operations_ % few == 0 && OnMuchDrawn) OnMuchDrawn();
}

Operation DrawSurface::NewOperation(const Stroke& stroke, Shape figure) const {
  CountOperation();
  return {Checked(stroke.Width * target_.PixelMm), stroke.Ink, SourceLine, figure};
}

void DrawSurface::Line(Point from, Point to, const Stroke& stroke) {
  list_->Add(NewOperation(stroke, LineShape{ToDevice(from), ToDevice(to)}));
  MoveTo(to);
}

void DrawSurface::Rectangle(Point corner, Point opposite, const Stroke& stroke, const Fill& inside) {
  list_->Add(NewOperation(stroke, RectangleShape{ToDevice(corner), ToDevice(opposite), inside}));
}

void DrawSurface::Polygon(std::span<const Point> points, const Stroke& stroke, const Fill& inside) {
  corners_.clear();
  for (const Point& point : points) corners_.push_back(ToDevice(point));
  list_->AddPolygon(corners_, inside, NewOperation(stroke));
}

void DrawSurface::SquareStroke(const std::array<Point, 4>& corners, Colour ink) {
  CountOperation();
  std::array<Point, 4> placed;
  std::transform(corners.begin(), corners.end(), placed.begin(),
                 [this](const Point& corner) { return ToDevice(corner); });
  const double outline = target_.IsPixelDevice ? target_.PixelMm : 0;
  list_->AddPolygon(placed, Fill(ink), {outline, ink, SourceLine, {}}, PolygonUse::Stroke);
}

void DrawSurface::Contour(std::span<const ContourArc> pieces, const Stroke& stroke, const Fill& inside) {
  pieces_.clear();
  for (const ContourArc& piece : pieces) {
    pieces_.push_back({ToDevice(piece.Centre), std::abs(Checked(piece.Radius * scaleX_)),
                       std::remainder(piece.StartAngle, Turn), piece.Sweep});
  }
  list_->AddContour(pieces_, inside, NewOperation(stroke));
}

void DrawSurface::PaintPicture(std::shared_ptr<const Picture> picture, Point corner, Point size) {
  const Point upperLeft = ToDevice({corner.X, corner.Y + size.Y});
  ToDevice({corner.X + size.X, corner.Y});  // a corner that is out of range is a fault too
  list_->AddPicture(std::move(picture), {upperLeft, size.X * std::abs(scaleX_), size.Y * std::abs(scaleY_)},
                    {0, Black, SourceLine, {}});
}

void DrawSurface::Circle(const CircleFigure& figure, const Stroke& stroke, const Fill& inside) {
  CircleShape circle{ToDevice(figure.Centre),
                     std::abs(Checked(figure.Radius * scaleX_)),
                     std::abs(Checked(figure.Radius * figure.Aspect * scaleY_)),
                     0,
                     0,
                     inside,
                     figure.Form,
                     stroke.SquareEnds && figure.Form == CircleForm::Arc};
  if (figure.Form != CircleForm::Full) {
    circle.StartAngle = std::remainder(figure.From, Turn);
    double sweep = std::fmod(figure.To - figure.From, Turn);
    if (sweep <= 0) sweep += Turn;
    circle.EndAngle = circle.StartAngle + sweep;
  }
  list_->Add(NewOperation(stroke, circle));
}

void DrawSurface::SelectFace(const vaxel::Font& font) {
  if (faceSelected_ && face_.Bold == font.Bold && face_.Italic == font.Italic && face_.Name == font.Name)
    return;
  faceSelected_ = true;
  face_ = {font.Name, font.Bold, font.Italic};
  table_ = StandardFace(face_);
  metrics_ = table_ ? table_->Metrics() : measurer_->Metrics(face_);
}

double DrawSurface::WidthInFace(std::string_view text) {
  const std::optional<double> width = table_ ? table_->Width(text) : std::nullopt;
  isMeasured_ = !width;
  return width ? *width : measurer_->Width(face_, text);
}

// The text is the one that was measured last: one in a standard face has all its characters.
void DrawSurface::LookForLackingCharacter(std::string_view text) {
  if (!isMeasured_ || !OnLackingCharacter) return;
  const std::string character = measurer_->Lacking(face_, text);
  if (!character.empty()) OnLackingCharacter(character);
}

template <class Use>
void DrawSurface::ForEachPiece(std::string text, Use use) {
  // The superscripts that a font may lack begin with these bytes; so does the thin blank.
  const auto holds = [&](const char* bytes) { return text.find(bytes) != std::string::npos; };
  if (table_ && (holds("\xE2\x81") || holds("\xE2\x80\xAF"))) {
    for (TextPiece& piece : PiecesOf(text, *table_)) use(std::move(piece));
  } else if (!text.empty()) {
    use(TextPiece{std::move(text)});
  }
}

TextExtent DrawSurface::MeasureText(std::string_view text, const vaxel::Font& font) {
  SelectFace(font);
  const double size = Checked(font.Size * MillimetresPerPoint) / Z;
  double length = 0;
  ForEachPiece(DrawableText(text),
               [&](const TextPiece& piece) { length += WidthInFace(piece.Text) * piece.Scale; });
  return {length * size, metrics_.Ascent * size, metrics_.Descent * size};
}

void DrawSurface::Text(Point start, double rotation, std::string_view text, const vaxel::Font& font,
                       Colour ink) {
  SelectFace(font);
  const double size = Checked(font.Size * MillimetresPerPoint);
  const TextFrame frame(rotation);
  const double angle = std::remainder(rotation, 360) * RadiansPerDegree;
  double length = 0;
  ForEachPiece(DrawableText(text), [&](TextPiece piece) {
    CountOperation();
    const double pieceSize = size * piece.Scale;
    const double pieceLength = Checked(WidthInFace(piece.Text) * pieceSize);
    LookForLackingCharacter(piece.Text);
    const Point from = start + frame.Along * (length / Z) + frame.Up * (piece.Rise * size / Z);
    list_->AddText(std::move(piece.Text), face_, {ToDevice(from), angle, pieceSize, pieceLength},
                   {0, ink, SourceLine, {}});
    length += pieceLength;
  });
  const Point end = start + frame.Along * (length / Z);
  ToDevice(end);  // an end that is out of range is a fault too
  if (font.Underline) Underline(start, frame, length / Z, font.Size, ink);
  MoveTo(end);
}

// The line's round ends reach from the text's start to its end.
void DrawSurface::Underline(Point start, const TextFrame& frame, double length, double fontSize, Colour ink) {
  const double unit = fontSize * MillimetresPerPoint / Z;
  const double thickness = metrics_.UnderlineThickness * unit;
  if (length <= thickness) return;
  const Point from = start + frame.Up * (metrics_.UnderlinePosition * unit) + frame.Along * (thickness / 2);
  const Point to = from + frame.Along * (length - thickness);
  list_->Add({Checked(thickness * Z), ink, SourceLine, LineShape{ToDevice(from), ToDevice(to)}});
}

std::string DrawSurface::FontReplacement() {
  SelectFace(Font);
  return table_ ? std::string() : measurer_->Replacement(face_);
}

void DrawSurface::SetOrientation(PageOrientation orientation) {
  const bool turned = orientation == PageOrientation::Landscape;
  deviceSize_ = SizeOf(target_, turned);
  list_->ResizePage(deviceSize_.X, deviceSize_.Y);
  ScaleToDevice();
  if (!centreSet_) CentreByDefault();
  MarkCentre();
}

}  // namespace vaxel
