#include "render/renderer.h"

#include <cmath>
#include <variant>
#include <vector>

namespace vaxel {
namespace {

// Hands each operation to the renderer's function for its figure.
class Player {
 public:
  Player(const DisplayList& list, Renderer& renderer) : list_(list), renderer_(renderer) {}

  void Play(const Operation& operation) {
    operation_ = &operation;
    std::visit(*this, operation.Figure);
  }

  void operator()(const LineShape& line) { renderer_.Line(*operation_, line); }
  void operator()(const RectangleShape& rectangle) { renderer_.Rectangle(*operation_, rectangle); }
  void operator()(const PolygonShape& polygon) {
    renderer_.Polygon(*operation_, polygon, list_.Corners(polygon, corners_));
  }
  void operator()(const ContourShape& contour) {
    renderer_.Contour(*operation_, contour, list_.Pieces(contour, pieces_));
  }
  void operator()(const CircleShape& circle) { renderer_.Circle(*operation_, circle); }
  void operator()(const TextShape& shape) {
    renderer_.Text(*operation_, shape, list_.TextOf(shape), list_.FaceOf(shape));
  }
  void operator()(const PictureShape& shape) { renderer_.Image(*operation_, shape, list_.PictureOf(shape)); }

 private:
  const DisplayList& list_;
  Renderer& renderer_;
  const Operation* operation_ = nullptr;
  std::vector<Point> corners_;
  std::vector<ContourArc> pieces_;
};

// Without an end and someone to ask: all of it.
void PlayUntil(const Operation* end, const PlayWatch& goOn, const DisplayList& list, std::size_t page,
               Renderer& renderer) {
  constexpr std::size_t between = 64;
  const Page& played = list.Pages()[page];
  Player player(list, renderer);
  renderer.BeginPage(played, page + 1);
  for (std::size_t i = 0; i < played.Count; ++i) {
    const Operation& operation = list.At(played.First + i);
    if (&operation == end || (goOn && i % between == 0 && !goOn(i))) break;
    player.Play(operation);
  }
  renderer.EndPage();
}

}  // namespace

void PlayPage(const DisplayList& list, std::size_t page, Renderer& renderer, const PlayWatch& goOn) {
  PlayUntil(nullptr, goOn, list, page, renderer);
}

void PlayPageBefore(const Operation& end, const DisplayList& list, std::size_t page, Renderer& renderer) {
  PlayUntil(&end, {}, list, page, renderer);
}

void PlayAll(const DisplayList& list, Renderer& renderer, const PlayWatch& goOn) {
  for (std::size_t page = 0; page < list.Pages().size(); ++page) PlayPage(list, page, renderer, goOn);
}

Operation WithExactWidth(const Operation& operation, const PolygonShape& polygon) {
  Operation exact = operation;
  if (polygon.Use == PolygonUse::Stroke) exact.Width = 0;
  return exact;
}

std::array<Point, 4> WidenedStroke(std::span<const Point> corners, double leastWidth) {
  std::array<Point, 4> widened = {corners[0], corners[1], corners[2], corners[3]};
  const Point across = corners[0] - corners[1];
  const double width = std::hypot(across.X, across.Y);
  if (width == 0 || width >= leastWidth) return widened;
  const Point more = across * ((leastWidth / width - 1) / 2);
  for (const std::size_t left : {0U, 3U}) widened[left] = widened[left] + more;
  for (const std::size_t right : {1U, 2U}) widened[right] = widened[right] - more;
  return widened;
}

Point PointOnCircle(const CircleShape& circle, double angle) {
  return {circle.Centre.X + circle.RadiusX * std::cos(angle),
          circle.Centre.Y - circle.RadiusY * std::sin(angle)};
}

Point PointOnArc(const ContourArc& arc, double angle) {
  return {arc.Centre.X + arc.Radius * std::cos(angle), arc.Centre.Y - arc.Radius * std::sin(angle)};
}

}  // namespace vaxel
