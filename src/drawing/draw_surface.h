// The one surface that a run draws on. It holds the state that drawing commands share, turns drawing units
// into device millimetres and records every operation into the display list.
//
// A drawing unit is Z millimetres of the device (1 mm of paper on a printer with zoom 1). Surface
// coordinates are drawing units from the lower-left corner, x to the right and y upward. A script's point
// lies at the graphic centre plus the shift of CT plus its own coordinates. Drawing throws a DrawingFault.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/contour.h"
#include "base/point.h"
#include "base/units.h"
#include "drawing/colour.h"
#include "drawing/display_list.h"
#include "drawing/font_face.h"
#include "drawing/picture.h"
#include "drawing/standard_faces.h"
#include "drawing/text_layout.h"

namespace vaxel {

enum class TargetKind : std::uint8_t { Screen, Printer };

enum class PageOrientation : std::uint8_t { Portrait = 1, Landscape = 2 };

// What a run is told of the device that it draws for.
struct RunTarget {
  TargetKind Kind = TargetKind::Screen;
  double WidthMm = 200, HeightMm = 200;      // the drawable area, in portrait on a printer; greater than 0
  double PixelMm = MillimetresPerInch / 96;  // the size of a device pixel
  // Windows, printers and metafiles draw with their pixels: no stroke is thinner than one, and one with
  // square ends is outlined with it. Else strokes are for files and exactly as wide as they say.
  bool IsPixelDevice = true;
  double Zoom = 1;            // screen zoom, or printer zoom; greater than 0
  double Zmm = 1;             // reported millimetres of the screen that show a true one
  double OffX = 0, OffY = 0;  // shift of the default screen centre, device mm, y upward
  // Of all fonts but the standard ones; null: a stand-in. It must outlive the run.
  TextMeasurer* Measurer = nullptr;
  // Null: pictures are drawn without a look at their data. It must outlive the run.
  PictureDecoder* Decoder = nullptr;
};

struct Font {
  std::string Name = "Times New Roman";
  double Size = 10;  // points of the device, of which Z make a point of the drawing
  bool Bold = false, Italic = false, Underline = false;
};

// Points of the drawing: 25.4/72 drawing units.
struct FontSizeRegisters {
  double Base = 10;        // the size when the run began
  double Standard = 10;    // the standing size that the script has set
  double Multiplier = 1;   // by which the size in force differs from it
  double Coefficient = 1;  // by which the font in force multiplies it

  double Current() const { return Standard * Multiplier * Coefficient; }
};

class DrawSurface {
 public:
  // Records into list, which must outlive the surface.
  explicit DrawSurface(DisplayList& list) : list_(&list) {}

  // Sets the surface up for a run: scale, default centre, state, first page.
  void Begin(const RunTarget& target);

  TargetKind Kind() const { return target_.Kind; }
  bool IsPrinter() const { return target_.Kind == TargetKind::Printer; }

  // Surface coordinates and lengths are in drawing units, widths in device pixels.
  void Clear();
  void NewPage();
  // Maps the surface's rectangle to the whole device; a negative height makes y grow upward.
  void SetScale(double left, double top, double width, double height);
  const RunTarget& Target() const { return target_; }
  // The current point moves to the second point.
  void Line(double x1, double y1, double x2, double y2, Colour colour);
  // Opposite corners; filled with FillColor.
  void Rectangle(double x1, double y1, double x2, double y2, Colour colour, bool filled);
  // Closed; filled with FillColor.
  void Polygon(std::span<const Point> points, Colour colour, bool filled);
  // The corners of a stroke with square ends, as PolygonUse::Stroke has them; solid.
  void SquareStroke(const std::array<Point, 4>& corners, Colour colour);
  // As Polygon, for arcs and the straight lines between them.
  void Contour(std::span<const ContourArc> pieces, Colour colour, bool filled);
  // Angles in radians, counter-clockwise from startAngle to endAngle; aspect = height / width, the radius
  // being half the width. Filled with FillColor when FillStyle says so and form is not an arc; an arc ends as
  // SquareEnds says.
  void Circle(double cx, double cy, double radius, Colour colour, CircleForm form = CircleForm::Full,
              double startAngle = 0, double endAngle = 0, double aspect = 1);
  void PSet(double x, double y, Colour colour);
  // Scaled into the box whose lower left corner is given; its sizes must be above 0.
  void PaintPicture(std::shared_ptr<const Picture> picture, Point corner, double width, double height);
  // Text in Font. Its extent, in drawing units.
  TextExtent MeasureText(std::string_view text);
  double TextWidth(std::string_view text) { return MeasureText(text).Length; }
  double TextHeight(std::string_view text) { return MeasureText(text).Height(); }
  // The upper-left corner of the text's cell; the current point moves to its upper-right one.
  void TextOut(double x, double y, std::string_view text, Colour colour);
  // The start of the baseline, which is turned counter-clockwise by an angle in degrees; the current point
  // moves to its end.
  void TextOutRotated(Point start, double rotation, std::string_view text, Colour colour);
  // The family that the target uses in place of Font's; empty where it has that one.
  std::string FontReplacement();
  // Printer only: turns the page that is being drawn and sets the scale anew. A centre that the script has
  // set stays; one that it has not is the middle of the turned page.
  void SetOrientation(PageOrientation orientation);

  // Device pixel in drawing units; also its size in millimetres of the drawing, by which widths given in
  // "mm" are divided, so that they grow with the zoom as the drawing does.
  double PixelSize() const { return target_.PixelMm / Z; }
  // Of a stroke, in device pixels: 1, or in files the printers' pixel of 1/600 inch where that is finer.
  double LeastWidth() const;
  // The point on which an unplaced drawing is centred: the middle of the screen area or of the page.
  Point Middle() const { return {W / 2, H / 2}; }
  // Where the script's own 0,0 lies.
  Point Origin() const { return {CentreX + CTX, CentreY + CTY}; }
  // The current point in script coordinates.
  Point CurrentScriptPoint() const { return Point{CurrentX, CurrentY} - Origin(); }
  void MoveTo(Point surfacePoint) {
    CurrentX = surfacePoint.X;
    CurrentY = surfacePoint.Y;
  }
  // Sets the size of all following text, in FontSizes and Font.
  void SetFontSizes(const FontSizeRegisters& sizes);
  // Places the graphic centre, returns the CT shift to 0 and moves the current point to the centre.
  void SetCentre(Point surfacePoint);

  double W = 0, H = 0;  // size of the surface in drawing units
  double Z = 1;         // device millimetres of one drawing unit
  double CentreX = 0, CentreY = 0;
  double CTX = 0, CTY = 0;
  double CurrentX = 0, CurrentY = 0;
  Colour ForeColor = Black;
  // Device pixels, at least LeastWidth(); 0: filled figures have no outline.
  double DrawWidth = 1;
  bool SquareEnds = false;  // of arcs; else round
  bool FillStyle = false;
  Colour FillColor = Black;
  vaxel::Font Font;
  FontSizeRegisters FontSizes;
  std::uint32_t SourceLine = 0;  // the script line to which operations are ascribed

 private:
  void ScaleToDevice();
  void CentreByDefault();
  void ResetState();
  Point ToDevice(double x, double y) const;
  Operation NewOperation(Colour colour, Shape figure = {}) const;
  void SelectFace();
  double WidthInFace(std::string_view text);
  void Underline(Point start, const TextFrame& frame, double length, Colour colour);
  template <class Use>
  void ForEachPiece(std::string text, Use use);

  DisplayList* list_;
  RunTarget target_;
  StandInMeasurer standIn_;
  TextMeasurer* measurer_ = &standIn_;
  bool faceSelected_ = false;
  FontFace face_;                     // for which the two below hold
  const FaceTable* table_ = nullptr;  // of a standard face
  FaceMetrics metrics_;
  Point deviceSize_;  // mm, the page as it is turned now
  bool centreSet_ = false;
  std::vector<Point> corners_;      // of the polygon being drawn; kept for its memory
  std::vector<ContourArc> pieces_;  // of the contour being drawn, likewise
  double left_ = 0, top_ = 0, scaleX_ = 1, scaleY_ = 1;
};

}  // namespace vaxel
