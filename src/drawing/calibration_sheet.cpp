#include <algorithm>
#include <cmath>
#include <string>

#include "drawing/sheet_layout.h"
#include "drawing/sheet_pen.h"

namespace vaxel {
namespace {

constexpr double ThinWidth = 0.1, LineWidth = 0.2;

// From the left and lower edges of the area: the lines of the rulers, and where they begin.
constexpr double RulerEdge = 12, RulerStart = 20;
// What the last figure of a ruler needs behind it, and the square around itself.
constexpr double Behind = 8, Around = 12;
constexpr double NoteHeight = 5;
constexpr double LargestSquare = 150;

double WholeCentimetres(double length) {
  return std::max(0.0, std::floor(length / 10 + 1e-9) * 10);
}

// Draws in millimetres from the lower-left corner of the area, y upward, which is how the sheet is measured.
class SheetMaker {
 public:
  SheetMaker(CalibrationSheet& sheet, double width, double height, TextMeasurer* measurer)
      : sheet_(sheet), height_(height), pen_(sheet.Drawing, measurer) {
    sheet.Drawing.BeginPage(width, height);
    sheet.Drawing.PlaceOrigin({0, height});
  }

  // One ruler lies level along the lower edge, the other stands along the left one.
  void Ruler(bool isUp, double length) {
    pen_.Line(On(isUp, 0, 0), On(isUp, length, 0), LineWidth);
    for (int millimetre = 0; millimetre <= std::lround(length); ++millimetre) {
      const bool isTen = millimetre % 10 == 0, isFive = millimetre % 5 == 0;
      const double mark = isTen ? 4 : isFive ? 2.5 : 1.5;
      pen_.Line(On(isUp, millimetre, 0), On(isUp, millimetre, mark), isTen ? LineWidth : ThinWidth);
      if (isTen) Figure(isUp, millimetre);
    }
    pen_.Text(On(isUp, length / 2, -5), SheetPen::At::Middle,
              (isUp ? "y: " : "x: ") + std::to_string(std::lround(length)) + " mm", isUp);
  }

  void Square(double corner, double side) {
    const double centre = corner + side / 2, end = corner + side;
    pen_.Rectangle(At(corner, corner), At(end, end), LineWidth);
    pen_.Circle(At(centre, centre), side / 2, LineWidth);
    pen_.Line(At(corner, corner), At(end, end), ThinWidth);
    pen_.Line(At(corner, end), At(end, corner), ThinWidth);
    constexpr double leastForText = 30;
    if (side < leastForText) return;
    pen_.Text(At(centre, corner + 2), SheetPen::At::Middle, std::to_string(std::lround(side)) + " mm");
  }

  void Note(double x, double y, const std::string& text, double most) {
    pen_.Text(At(x, y), SheetPen::At::Start, text, false, most);
  }

 private:
  Point At(double x, double y) const { return {x, height_ - y}; }
  // A place along a ruler, and from its line into the sheet.
  Point On(bool isUp, double along, double inward) const {
    return isUp ? At(RulerEdge + inward, RulerStart + along) : At(RulerStart + along, RulerEdge + inward);
  }
  void Figure(bool isUp, int millimetre) {
    const std::string text = std::to_string(millimetre);
    if (isUp) {
      pen_.Text(On(true, millimetre - 1, 5), SheetPen::At::Start, text);
    } else {
      pen_.Text(On(false, millimetre, 5), SheetPen::At::Middle, text);
    }
  }

  CalibrationSheet& sheet_;
  double height_;
  SheetPen pen_;
};

}  // namespace

CalibrationSheet MakeCalibrationSheet(double widthMm, double heightMm, const std::vector<std::string>& notes,
                                      TextMeasurer* measurer) {
  CalibrationSheet sheet;
  SheetMaker maker(sheet, widthMm, heightMm, measurer);
  // What the largest factors leave of the area.
  const double width = widthMm / MostCalibration, height = heightMm / MostCalibration;
  const double across = WholeCentimetres(width - RulerStart - Behind);
  const double up = WholeCentimetres(height - RulerStart - Behind);
  if (across == 0 || up == 0) return sheet;
  sheet.NominalX = across;
  sheet.NominalY = up;
  maker.Ruler(false, across);
  maker.Ruler(true, up);
  const double corner = RulerStart + Around;
  const double room = std::min(width - corner, height - corner) - Behind;
  const double side = std::min(WholeCentimetres(room), LargestSquare);
  if (side > 0) maker.Square(corner, side);
  // Above the square or, where that is the wider room, beside it.
  const double squareEnd = corner + side + NoteHeight;
  const bool isBeside = width > height;
  const double x = isBeside ? squareEnd : corner;
  const double lowest = isBeside ? corner : squareEnd;
  double y = height - Behind;
  for (const std::string& note : notes) {
    if (y < lowest) break;
    maker.Note(x, y, note, width - x - Behind);
    y -= NoteHeight;
  }
  return sheet;
}

}  // namespace vaxel
