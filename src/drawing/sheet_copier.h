// Copies what is drawn on a page onto a sheet, moved and calibrated.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/display_list.h"
#include "drawing/sheet_layout.h"

namespace vaxel {

class SheetCopier {
 public:
  // Both lists must outlive it. What is copied is added to the page that is being drawn.
  SheetCopier(const DisplayList& source, DisplayList& sheets, const Calibration& factors)
      : source_(source), sheets_(sheets), factors_(factors) {}

  // Copies a page (from 0) moved by shift, mm, and then enlarged by the factors about 0,0. Texts keep their
  // size and strokes their width. What comes after goOn, which is asked now and then, has said no is left
  // out.
  void Copy(std::size_t page, Point shift, const SheetWatch& goOn = {});
  // Where that puts a point.
  Point Placed(Point point, Point shift) const {
    return {(point.X + shift.X) * factors_.X, (point.Y + shift.Y) * factors_.Y};
  }

 private:
  Point Placed(Point point) const { return Placed(point, shift_); }
  Point Enlarged(Point vector) const { return {vector.X * factors_.X, vector.Y * factors_.Y}; }
  void Add(const Operation& operation, LineShape line);
  void Add(const Operation& operation, RectangleShape rectangle);
  void Add(const Operation& operation, CircleShape circle);
  void Add(const Operation& operation, TextShape text);
  void Add(const Operation& operation, PictureShape picture);
  void Add(const Operation& operation, const PolygonShape& polygon);
  void Add(const Operation& operation, const ContourShape& contour);
  void AddWith(Operation operation, const Shape& shape);
  void PlaceStroke();

  const DisplayList& source_;
  DisplayList& sheets_;
  Calibration factors_;
  Point shift_;
  // These are kept for their memory.
  std::vector<Point> corners_;
  std::vector<ContourArc> pieces_;
};

}  // namespace vaxel
