// What every output is: something that display lists are played to.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "drawing/display_list.h"

namespace vaxel {

// Shows or writes the operations of a display list. A renderer does not throw: one that fails says so in its
// own way when it has been played.
class Renderer {
 public:
  virtual ~Renderer() = default;

  // number counts from 1.
  virtual void BeginPage(const Page& page, std::size_t number) = 0;
  virtual void EndPage() = 0;
  virtual void Line(const Operation& operation, const LineShape& line) = 0;
  virtual void Rectangle(const Operation& operation, const RectangleShape& rectangle) = 0;
  virtual void Polygon(const Operation& operation, const PolygonShape& polygon,
                       std::span<const Point> corners) = 0;
  virtual void Contour(const Operation& operation, const ContourShape& contour,
                       std::span<const ContourArc> pieces) = 0;
  virtual void Circle(const Operation& operation, const CircleShape& circle) = 0;
  virtual void Text(const Operation& operation, const TextShape& shape, std::string_view text,
                    const FontFace& face) = 0;
  virtual void Image(const Operation& operation, const PictureShape& shape, const Picture& picture) = 0;
};

// Asked now and then with the number of an operation in its page, from 0: false leaves out this one and what
// comes after it.
using PlayWatch = std::function<bool(std::size_t operation)>;

// Plays one page (from 0), or all of them, in the order in which they were drawn.
void PlayPage(const DisplayList& list, std::size_t page, Renderer& renderer, const PlayWatch& goOn = {});
// The same of a page as it was before one of its operations.
void PlayPageBefore(const Operation& end, const DisplayList& list, std::size_t page, Renderer& renderer);
void PlayAll(const DisplayList& list, Renderer& renderer, const PlayWatch& goOn = {});

// The operation of a polygon as it is drawn where a stroke is exactly as wide as it says: that of a stroke
// has no outline.
Operation WithExactWidth(const Operation& operation, const PolygonShape& polygon);
// The corners of a stroke (PolygonUse::Stroke), widened about its axis to leastWidth where it is thinner.
std::array<Point, 4> WidenedStroke(std::span<const Point> corners, double leastWidth);

// The point of a circle, or of a contour's piece, at an angle; y runs downward.
Point PointOnCircle(const CircleShape& circle, double angle);
Point PointOnArc(const ContourArc& arc, double angle);

}  // namespace vaxel
