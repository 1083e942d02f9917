#include "drawing/display_list.h"

namespace vaxel {

std::span<const Point> DisplayList::Corners(const PolygonShape& polygon, std::vector<Point>& buffer) const {
  buffer.clear();
  for (std::size_t i = 0; i < polygon.Count; ++i) buffer.push_back(corners_[polygon.First + i]);
  return buffer;
}

void DisplayList::BeginPage(double width, double height) {
  pages_.push_back({width, height, operations_.size(), 0});
}

void DisplayList::ResizePage(double width, double height) {
  pages_.back().Width = width;
  pages_.back().Height = height;
}

void DisplayList::Clear() {
  operations_.clear();
  corners_.clear();
  if (pages_.empty()) return;
  const Page current = pages_.back();
  pages_.clear();
  BeginPage(current.Width, current.Height);
}

void DisplayList::Add(const Operation& operation) {
  if (operations_.size() == MaxOperations) throw OperationLimitExceeded();
  operations_.push_back(operation);
  ++pages_.back().Count;
}

void DisplayList::AddPolygon(std::span<const Point> corners, const Fill& inside, Operation operation) {
  // A polygon counts for its corners too, so that the limit bounds the memory whatever is drawn.
  if (corners_.size() + corners.size() > 4 * MaxOperations) throw OperationLimitExceeded();
  operation.Figure = PolygonShape{static_cast<std::uint32_t>(corners_.size()),
                                  static_cast<std::uint32_t>(corners.size()), inside};
  Add(operation);
  for (const Point& corner : corners) corners_.push_back(corner);
}

}  // namespace vaxel
