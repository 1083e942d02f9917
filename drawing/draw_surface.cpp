#include "drawing/draw_surface.h"

#include <cmath>
#include <numbers>

namespace vaxel {
namespace {

double Checked(double value) {
  if (!(std::abs(value) <= MaxCoordinate)) throw CoordinateOverflow();
  return value;
}

}  // namespace

void DrawSurface::Begin(const RunTarget& target) {
  target_ = target;
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
  FillStyle = false;
  Font = {};
  FontSizes = {Font.Size, Font.Size, Font.Size};
  if (!IsPrinter()) Font.Size = FontSizes.Base * Z;
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

void DrawSurface::Circle(double cx, double cy, double radius, Colour colour, CircleForm form,
                         double startAngle, double endAngle, double aspect) {
  CircleShape circle{ToDevice(cx, cy),
                     std::abs(Checked(radius * scaleX_)),
                     std::abs(Checked(radius * aspect * scaleY_)),
                     0,
                     0,
                     {FillStyle && form != CircleForm::Arc, FillColor},
                     form};
  if (form != CircleForm::Full) {
    constexpr double turn = 2 * std::numbers::pi;
    circle.StartAngle = std::remainder(startAngle, turn);
    double sweep = std::fmod(endAngle - startAngle, turn);
    if (sweep <= 0) sweep += turn;
    circle.EndAngle = circle.StartAngle + sweep;
  }
  list_->Add(NewOperation(colour, circle));
}

void DrawSurface::PSet(double x, double y, Colour colour) {
  list_->Add(NewOperation(colour, PointShape{ToDevice(x, y)}));
}

void DrawSurface::SetOrientation(PageOrientation orientation) {
  const bool turned = orientation == PageOrientation::Landscape;
  deviceSize_ = turned ? Point{target_.HeightMm, target_.WidthMm} : Point{target_.WidthMm, target_.HeightMm};
  list_->ResizePage(deviceSize_.X, deviceSize_.Y);
  ScaleToDevice();
  if (!centreSet_) CentreByDefault();
}

}  // namespace vaxel
