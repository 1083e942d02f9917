// The boxes that the operations of a display list lie in.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "drawing/display_list.h"

namespace vaxel {

// Device millimetres, y downward. It is empty until a point is added.
struct Box {
  double Left = INFINITY, Right = -INFINITY, Top = INFINITY, Bottom = -INFINITY;

  bool IsEmpty() const { return Left > Right; }
  double Width() const { return Right - Left; }
  double Height() const { return Bottom - Top; }
  void Add(const Point& point);
  void Unite(const Box& other);
  void Grow(double by);
};

// Which part of a text counts: the list knows where its baseline runs, but not the shapes of its letters.
enum class TextInk : std::uint8_t {
  Certain,  // where nearly every text has ink
  Possible  // with the accents and tails of all usual faces
};

// Makes boxes of the operations of one list, which must outlive it.
class BoxMaker {
 public:
  BoxMaker(const DisplayList& list, TextInk ink) : list_(list), ink_(ink) {}

  // With the width of its stroke. The box of a text of blanks is empty.
  Box Of(const Operation& operation);

 private:
  void Add(const LineShape& line);
  void Add(const RectangleShape& rectangle);
  void Add(const PolygonShape& polygon);
  void Add(const ContourShape& contour);
  void Add(const CircleShape& circle);
  void Add(const TextShape& text);
  void Add(const PictureShape& picture);

  const DisplayList& list_;
  TextInk ink_;
  Box box_;
  // These are kept for their memory.
  std::vector<Point> corners_;
  std::vector<ContourArc> pieces_;
};

}  // namespace vaxel
