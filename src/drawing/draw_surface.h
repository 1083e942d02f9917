// The one surface that a run draws on. It holds the state that drawing commands share, turns drawing units
// into device millimetres and records every operation into the display list.
//
// A drawing unit is Z millimetres of the device (1 mm of paper on a printer with zoom 1). Surface
// coordinates are drawing units from the lower-left corner, x to the right and y upward. A script's point
// lies at the graphic centre plus the shift of CT plus its own coordinates. Drawing throws a DrawingFault.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
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
  // The pages of a screen are kept, for a pixel device as far as there is room for them; else only the last
  // one is.
  bool KeepsPages = false;
  // A printer's page lies until the script says otherwise.
  bool IsTurned = false;
  double Zoom = 1;            // screen zoom, or printer zoom; greater than 0
  double Zmm = 1;             // reported millimetres of the screen that show a true one
  double OffX = 0, OffY = 0;  // shift of the default screen centre, device mm, y upward
  // Measures all fonts but the standard ones; null: a stand-in. It must outlive the run.
  TextMeasurer* Measurer = nullptr;
  // Decodes pictures; null: they are drawn without a look at their data. It must outlive the run.
  PictureDecoder* Decoder = nullptr;
};

struct Font {
  std::string Name = "Times New Roman";
  double Size = 10;  // points of the device, of which Z make a point of the drawing
  bool Bold = false, Italic = false, Underline = false;
};

// Sizes are in points of the drawing: 1/72 inch of drawing units.
struct FontSizeRegisters {
  double Standard = 10;    // the standing size that the script has set
  double Multiplier = 1;   // by which the size in force differs from it
  double Coefficient = 1;  // by which the font in force multiplies it

  double Current() const { return Standard * Multiplier * Coefficient; }
};

// How a straight line, a curve or an outline is drawn.
struct Stroke {
  Colour Ink = Black;
  double Width = 1;         // device pixels, at least LeastWidth(); 0: a filled figure has no outline
  bool SquareEnds = false;  // of an arc; else round
};

// A circle or an ellipse with level axes, or the part of it that runs counter-clockwise between two
// directions.
struct CircleFigure {
  Point Centre;
  double Radius = 0;        // half the width
  double Aspect = 1;        // height / width
  double From = 0, To = 0;  // radians, 0 to the right; equal directions are a whole turn apart
  CircleForm Form = CircleForm::Full;
};

class DrawSurface {
 public:
  // The surface records into list, which must outlive it.
  explicit DrawSurface(DisplayList& list) : list_(&list) {}

  // Sets the surface up for a run: scale, default centre, state, first page.
  void Begin(const RunTarget& target);

  const RunTarget& Target() const { return target_; }
  bool IsPrinter() const { return target_.Kind == TargetKind::Printer; }

  // Surface coordinates and lengths are in drawing units, widths in device pixels.
  // Begins another page: on a screen that keeps none it clears the surface.
  void NextPage();
  // The current point moves to the second point.
  void Line(Point from, Point to, const Stroke& stroke);
  // The rectangle lies between opposite corners.
  void Rectangle(Point corner, Point opposite, const Stroke& stroke, const Fill& inside = {});
  // The polygon is closed.
  void Polygon(std::span<const Point> points, const Stroke& stroke, const Fill& inside = {});
  // The corners of a stroke with square ends, as PolygonUse::Stroke has them; solid.
  void SquareStroke(const std::array<Point, 4>& corners, Colour ink);
  // Draws like Polygon, for arcs and the straight lines between them.
  void Contour(std::span<const ContourArc> pieces, const Stroke& stroke, const Fill& inside = {});
  // An arc is not filled.
  void Circle(const CircleFigure& figure, const Stroke& stroke, const Fill& inside = {});
  // The picture is scaled into the box whose lower left corner is given; its sizes must be above 0.
  void PaintPicture(std::shared_ptr<const Picture> picture, Point corner, Point size);
  // The extent is in drawing units.
  TextExtent MeasureText(std::string_view text, const vaxel::Font& font);
  // Writes from the start of the baseline, which is turned counter-clockwise by an angle in degrees; the
  // current point moves to its end.
  void Text(Point start, double rotation, std::string_view text, const vaxel::Font& font, Colour ink);
  // The family that the target uses in place of Font's; it is empty where the target has that one.
  std::string FontReplacement();
  // For a printer alone: turns the page that is being drawn and sets the scale anew. A centre that the script
  // has set stays; one that it has not is the middle of the turned page.
  void SetOrientation(PageOrientation orientation);

  // The size of a device pixel in drawing units; also its size in millimetres of the drawing, by which widths
  // given in "mm" are divided, so that they grow with the zoom as the drawing does.
  double PixelSize() const { return target_.PixelMm / Z; }
  // The least width of a stroke in device pixels: 1, or in files the printers' pixel of 1/600 inch where that
  // is finer.
  double LeastWidth() const;
  // The point on which an unplaced drawing is centred: the middle of the screen area or of the page.
  Point Middle() const { return size_ * 0.5; }
  Point Centre() const { return {CentreX, CentreY}; }
  Point Shift() const { return {CTX, CTY}; }
  Point Current() const { return {CurrentX, CurrentY}; }
  // The place of the script's own 0,0.
  Point Origin() const { return Centre() + Shift(); }
  // The graphic centre is now that of the main script, which the list keeps with the page.
  void MarkCentre() { list_->PlaceOrigin({CentreX * scaleX_, (CentreY - size_.Y) * scaleY_}); }
  // The included script and its line that draw from now on, as DisplayList::ComesFromFile has them.
  void ComesFromFile(std::string_view name) { list_->ComesFromFile(name); }
  void ComesFromLine(std::uint32_t line) { list_->ComesFromLine(line); }
  // The page that is being drawn, from 0.
  std::size_t PageIndex() const { return list_->Pages().size() - 1; }
  bool HasRoomFor(const Picture& picture) const { return list_->HasRoomFor(picture); }
  // The current point in script coordinates.
  Point CurrentScriptPoint() const { return Current() - Origin(); }
  void MoveTo(Point surfacePoint) {
    CurrentX = surfacePoint.X;
    CurrentY = surfacePoint.Y;
  }
  // Places the graphic centre, returns the CT shift to 0 and moves the current point to the centre.
  void SetCentre(Point surfacePoint);
  // Adds to the CT shift.
  void ShiftBy(Point way);
  // Sets the size of all following text, in FontSizes and Font.
  void SetFontSizes(const FontSizeRegisters& sizes);
  // The stroke as the properties below have it.
  Stroke StandingStroke(Colour ink) const { return {ink, DrawWidth, SquareEnds}; }

  double Z = 1;  // device millimetres of one drawing unit
  double CentreX = 0, CentreY = 0;
  double CTX = 0, CTY = 0;
  double CurrentX = 0, CurrentY = 0;
  // These hold for a figure or a text of which nothing else is said.
  Colour ForeColor = Black;
  double DrawWidth = 1;     // device pixels, at least LeastWidth()
  bool SquareEnds = false;  // of arcs; else round
  vaxel::Font Font;
  FontSizeRegisters FontSizes;
  // Is told of a character that is drawn and that no font has.
  std::function<void(std::string_view character)> OnLackingCharacter;
  // Is called after every few operations, before another one is added. What it throws ends the drawing there.
  std::function<void()> OnMuchDrawn;
  std::uint32_t SourceLine = 0;  // the script line to which operations are ascribed

 private:
  void ScaleToDevice();
  void CentreByDefault();
  void ResetState();
  Point ToDevice(Point point) const;
  Operation NewOperation(const Stroke& stroke, Shape figure = {}) const;
  void CountOperation() const;
  void SelectFace(const vaxel::Font& font);
  double WidthInFace(std::string_view text);
  void LookForLackingCharacter(std::string_view text);
  void Underline(Point start, const TextFrame& frame, double length, double fontSize, Colour ink);
  template <class Use>
  void ForEachPiece(std::string text, Use use);

  DisplayList* list_;
  mutable unsigned operations_ = 0;  // counted since the run began
  RunTarget target_;
  StandInMeasurer standIn_;
  TextMeasurer* measurer_ = &standIn_;
  bool faceSelected_ = false;
  FontFace face_;                     // for which the two below hold
  const FaceTable* table_ = nullptr;  // of a standard face
  bool isMeasured_ = false;           // the last text was too much for the table
  FaceMetrics metrics_;
  Point deviceSize_;  // mm, the page as it is turned now
  bool centreSet_ = false;
  bool isFilm_ = false;             // the pages that come replace those before them
  std::vector<Point> corners_;      // of the polygon being drawn; kept for its memory
  std::vector<ContourArc> pieces_;  // of the contour being drawn, likewise
  Point size_;                      // of the surface in drawing units
  double scaleX_ = 1, scaleY_ = 1;  // from drawing units to device millimetres
};

}  // namespace vaxel
