#include "drawing/display_list.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "drawing/drawing_fault.h"

namespace vaxel {
namespace {

// Figures count for their corners too, so that the limit on operations bounds the memory whatever is drawn.
constexpr std::size_t MaxCornerBytes = 4 * DisplayList::MaxOperations * sizeof(Point);
// A vector that grows holds its elements up to three times for a moment.
constexpr std::size_t BytesOfPage = 3 * sizeof(Page);

template <class Item>
std::span<const Item> Copied(const ChunkedVector<Item>& items, std::size_t first, std::size_t count,
                             std::vector<Item>& buffer) {
  buffer.clear();
  for (std::size_t i = 0; i < count; ++i) buffer.push_back(items[first + i]);
  return buffer;
}

// Moves what lies in a figure itself; the corners of polygons and contours do not.
struct FigureMover {
  Point Way;

  void operator()(LineShape& line) const {
    line.From = line.From + Way;
    line.To = line.To + Way;
  }
  void operator()(RectangleShape& rectangle) const {
    rectangle.Corner = rectangle.Corner + Way;
    rectangle.Opposite = rectangle.Opposite + Way;
  }
  void operator()(CircleShape& circle) const { circle.Centre = circle.Centre + Way; }
  void operator()(TextShape& text) const { text.Start = text.Start + Way; }
  void operator()(PictureShape& picture) const { picture.Corner = picture.Corner + Way; }
  void operator()(const PolygonShape&) const {}
  void operator()(const ContourShape&) const {}
};

}  // namespace

std::span<const Point> DisplayList::Corners(const PolygonShape& polygon, std::vector<Point>& buffer) const {
  return Copied(corners_, polygon.First, polygon.Count, buffer);
}

std::span<const ContourArc> DisplayList::Pieces(const ContourShape& contour,
                                                std::vector<ContourArc>& buffer) const {
  return Copied(pieces_, contour.First, contour.Count, buffer);
}

void DisplayList::Take(std::size_t bytes, std::size_t decodedBytes) {
  if (bytes_ + decodedBytes_ + bytes + decodedBytes > room_)
    throw DrawingFault{DrawingFault::Reason::TooMuchDrawn};
  bytes_ += bytes;
  decodedBytes_ += decodedBytes;
}

void DisplayList::BeginPage(double width, double height) {
  if (pages_.size() == MaxOperations) throw DrawingFault{DrawingFault::Reason::TooManyOperations};
  Take(BytesOfPage);
  const Point origin = pages_.empty() ? Point{} : pages_.back().Origin;
  pages_.push_back({width, height, operations_.size(), 0, origin});
}

void DisplayList::ResizePage(double width, double height) {
  pages_.back().Width = width;
  pages_.back().Height = height;
}

void DisplayList::Move(Shape& figure, Point way) {
  std::visit(FigureMover{way}, figure);
  if (const auto* const polygon = std::get_if<PolygonShape>(&figure)) {
    for (std::size_t i = 0; i < polygon->Count; ++i) {
      Point& corner = corners_[polygon->First + i];
      corner = corner + way;
    }
  } else if (const auto* const contour = std::get_if<ContourShape>(&figure)) {
    for (std::size_t i = 0; i < contour->Count; ++i) {
      Point& centre = pieces_[contour->First + i].Centre;
      centre = centre + way;
    }
  }
}

void DisplayList::FramePage(std::size_t page, Point corner, double width, double height) {
  Page& framed = pages_[page];
  framed.Width = width;
  framed.Height = height;
  framed.Origin = framed.Origin - corner;
  for (std::size_t i = framed.First; i < framed.First + framed.Count; ++i) {
    Move(operations_[i].Figure, Point{} - corner);
  }
}

void DisplayList::Clear() {
  operations_.clear();
  origins_.clear();
  corners_.clear();
  pieces_.clear();
  texts_.clear();
  textBytes_ = 0;
  pictures_.clear();
  pictureBytes_ = 0;
  bytes_ = decodedBytes_ = 0;
  if (pages_.empty()) return;
  const Page current = pages_.back();
  pages_.clear();
  BeginPage(current.Width, current.Height);
  PlaceOrigin(current.Origin);
}

bool DisplayList::HasRoomForPages() const {
  constexpr std::size_t mostPages = 200, share = 10;
  return pages_.size() < mostPages && operations_.size() < MaxOperations / share &&
         textBytes_ < MaxTextBytes / share && pictureBytes_ < MaxPictureBytes / share;
}

void DisplayList::ComesFromFile(std::string_view name) {
  now_ = {};
  if (name.empty()) return;
  const auto known = std::find(originFiles_.begin(), originFiles_.end(), name);
  now_.File = static_cast<std::uint32_t>(known - originFiles_.begin()) + 1;
  if (known == originFiles_.end()) originFiles_.emplace_back(name);
}

std::optional<IncludedPlace> DisplayList::IncludedAt(std::size_t index) const {
  const auto behind = std::upper_bound(origins_.begin(), origins_.end(), index,
                                       [](std::size_t i, const OriginFrom& from) { return i < from.First; });
  if (behind == origins_.begin()) return std::nullopt;
  const Origin& place = std::prev(behind)->Place;
  if (place.File == 0) return std::nullopt;
  return IncludedPlace{originFiles_[place.File - 1], place.Line};
}

void DisplayList::Add(const Operation& operation) {
  if (operations_.size() == MaxOperations) throw DrawingFault{DrawingFault::Reason::TooManyOperations};
  Take(sizeof(Operation));
  if (now_ != (origins_.empty() ? Origin{} : origins_.back().Place)) {
    Take(3 * sizeof(OriginFrom));
    origins_.push_back({operations_.size(), now_});
  }
  operations_.push_back(operation);
  ++pages_.back().Count;
}

template <class Kind, class Item>
Kind DisplayList::Stored(std::span<const Item> items, ChunkedVector<Item>& storage, const Fill& inside) {
  if ((storage.size() + items.size()) * sizeof(Item) > MaxCornerBytes)
    throw DrawingFault{DrawingFault::Reason::TooManyOperations};
  Take(items.size() * sizeof(Item));
  const auto first = static_cast<std::uint32_t>(storage.size());
  for (const Item& item : items) storage.push_back(item);
  return {first, static_cast<std::uint32_t>(items.size()), inside};
}

void DisplayList::AddPolygon(std::span<const Point> corners, const Fill& inside, Operation operation,
                             PolygonUse use) {
  auto polygon = Stored<PolygonShape>(corners, corners_, inside);
  polygon.Use = use;
  operation.Figure = polygon;
  Add(operation);
}

void DisplayList::AddContour(std::span<const ContourArc> pieces, const Fill& inside, Operation operation) {
  operation.Figure = Stored<ContourShape>(pieces, pieces_, inside);
  Add(operation);
}

void DisplayList::AddText(std::string text, const FontFace& face, TextShape shape, Operation operation) {
  if (textBytes_ + text.size() > MaxTextBytes) throw DrawingFault{DrawingFault::Reason::TooMuchText};
  Take(sizeof(std::string) + text.size());
  textBytes_ += text.size();
  shape.Content = static_cast<std::uint32_t>(texts_.size());
  shape.Face = IndexOf(face);
  operation.Figure = shape;
  Add(operation);
  texts_.push_back(std::move(text));
}

void DisplayList::AddPicture(std::shared_ptr<const Picture> picture, PictureShape shape,
                             Operation operation) {
  pictureBytes_ += picture->Bytes.size();
  if (pictureBytes_ > MaxPictureBytes) throw DrawingFault{DrawingFault::Reason::TooManyPictures};
  const auto known = std::find(pictures_.begin(), pictures_.end(), picture);
  shape.Content = static_cast<std::uint32_t>(known - pictures_.begin());
  if (known == pictures_.end()) {
    Take(picture->Bytes.size(), picture->DecodedBytes());
    pictures_.push_back(std::move(picture));
  }
  operation.Figure = shape;
  Add(operation);
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
