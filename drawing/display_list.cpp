#include "drawing/display_list.h"

#include <utility>

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
  texts_.clear();
  textBytes_ = 0;
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

void DisplayList::AddText(std::string text, const FontFace& face, TextShape shape, Operation operation) {
  if (textBytes_ + text.size() > MaxTextBytes) throw TextLimitExceeded();
  textBytes_ += text.size();
  shape.Content = static_cast<std::uint32_t>(texts_.size());
  shape.Face = IndexOf(face);
  operation.Figure = shape;
  Add(operation);
  texts_.push_back(std::move(text));
}

std::uint32_t DisplayList::IndexOf(const FontFace& face) {
  if (lastFace_ >= faces_.size() || faces_[lastFace_] != face) {
    const auto [place, isNew] = faceIndex_.try_emplace(face, static_cast<std::uint32_t>(faces_.size()));
    if (isNew) faces_.push_back(face);
    lastFace_ = place->second;
  }
  return lastFace_;
}

}  // namespace vaxel
