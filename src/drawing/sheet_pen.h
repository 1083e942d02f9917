// What sheets bring of their own, in thin black strokes and small letters.
#pragma once

#include <cstdint>
#include <string>

#include "drawing/display_list.h"
#include "drawing/font_face.h"

namespace vaxel {

// Draws on the page of a list that is being drawn, in its millimetres, with the source line 0.
class SheetPen {
 public:
  static constexpr double TextSize = 2.8;  // mm, 8 points

  // Both must outlive it; without a measurer texts are measured by the standard faces alone.
  SheetPen(DisplayList& list, TextMeasurer* measurer) : list_(list), measurer_(measurer) {}

  void Line(Point from, Point to, double width);
  void Rectangle(Point corner, Point opposite, double width);
  void Circle(Point centre, double radius, double width);
  // What of a text lies at its point.
  enum class At : std::uint8_t { Start, Middle, End };
  // Writes on a baseline, level or, turned, running upward. Of a text that is longer than most the end is
  // left out.
  void Text(Point point, At at, std::string text, bool isTurned = false, double most = MaxCoordinate);

 private:
  double LengthOf(const std::string& text);

  DisplayList& list_;
  TextMeasurer* measurer_;
};

}  // namespace vaxel
