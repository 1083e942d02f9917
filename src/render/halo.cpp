#include "render/halo.h"

#include <algorithm>
#include <cmath>

namespace vaxel {
namespace {

// Of the ink, where the glow is strongest: what lies under it must still be seen.
constexpr int MostInk = 150;  // of 255
constexpr std::size_t MostLooks = 4'000'000;
constexpr double PieceLength = 24;  // pixels: the box of a longer slanting piece would be mostly empty

// The part of a way, from 0 to 1, in which a coordinate lies between two bounds.
bool Clip(double from, double way, double least, double most, double& begin, double& end) {
  if (way == 0) return from >= least && from <= most;
  const double a = (least - from) / way, b = (most - from) / way;
  begin = std::max(begin, std::min(a, b));
  end = std::min(end, std::max(a, b));
  return begin <= end;
}

}  // namespace

Halo::Halo(const std::vector<OperationOutline>& outlines, const HaloFrame& frame)
    : width_(frame.Width),
      height_(frame.Height),
      reach_(frame.Reach),
      left_(MostLooks),
      strengths_(static_cast<std::size_t>(frame.Width) * static_cast<std::size_t>(frame.Height)) {
  const auto at = [&](Point point) { return frame.Corner + point * frame.PixelsPerMm; };
  for (const OperationOutline& outline : outlines) {
    if (left_ == 0) break;
    const double half = outline.Width * frame.PixelsPerMm / 2;
    const std::vector<Point>& points = outline.Points;
    for (std::size_t i = 1; i < points.size(); ++i) AddStroke(at(points[i - 1]), at(points[i]), half);
    const bool isPoint = points.size() == 1;
    if (isPoint || (outline.IsClosed && !points.empty()))
      AddStroke(at(points.back()), at(points.front()), half);
  }
}

// What is seen of it, in pieces.
void Halo::AddStroke(Point from, Point to, double half) {
  const double margin = half + reach_;
  const Point way = to - from;
  double begin = 0, end = 1;
  if (!Clip(from.X, way.X, -margin, width_ + margin, begin, end) ||
      !Clip(from.Y, way.Y, -margin, height_ + margin, begin, end))
    return;
  const Point first = from + way * begin, last = from + way * end;
  const double length = std::hypot(last.X - first.X, last.Y - first.Y);
  const bool isStraight = way.X == 0 || way.Y == 0;
  const int pieces = isStraight ? 1 : std::max(1, static_cast<int>(std::ceil(length / PieceLength)));
  for (int i = 0; i < pieces; ++i) {
    const auto point = [&](int n) { return first + (last - first) * (static_cast<double>(n) / pieces); };
    AddPiece(point(i), point(i + 1), half);
  }
}

void Halo::AddPiece(Point from, Point to, double half) {
  const double margin = half + reach_;
  const auto pixel = [](double place, int size) {
    return static_cast<int>(std::clamp(std::floor(place), 0.0, static_cast<double>(size)));
  };
  const int left = pixel(std::min(from.X, to.X) - margin, width_);
  const int right = pixel(std::max(from.X, to.X) + margin + 1, width_);
  const int top = pixel(std::min(from.Y, to.Y) - margin, height_);
  const int bottom = pixel(std::max(from.Y, to.Y) + margin + 1, height_);
  const std::size_t looks = static_cast<std::size_t>(right - left) * static_cast<std::size_t>(bottom - top);
  if (looks > left_) {
    left_ = 0;
    return;
  }
  left_ -= looks;
  const Point way = to - from;
  const double square = way.X * way.X + way.Y * way.Y;
  for (int y = top; y < bottom; ++y) {
    std::uint8_t* const row = &strengths_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)];
    for (int x = left; x < right; ++x) {
      if (row[x] == 255) continue;
      const Point seen = Point{x + 0.5, y + 0.5} - from;
      const double along = square > 0 ? (seen.X * way.X + seen.Y * way.Y) / square : 0;
      const Point off = seen - way * std::clamp(along, 0.0, 1.0);
      const double away = off.X * off.X + off.Y * off.Y;
      if (away >= margin * margin) continue;
      const double beyond = std::sqrt(away) - half;
      // Half of the way at full strength: a thin stroke must be seen to be marked.
      const double fade = std::min(1.0, 2 * (1 - std::max(0.0, beyond) / reach_));
      row[x] = std::max(row[x], static_cast<std::uint8_t>(std::lround(255 * fade)));
    }
  }
}

void Halo::BlendInto(std::uint32_t* pixels, Colour ink) const {
  const std::uint32_t inks[] = {BlueOf(ink), GreenOf(ink), RedOf(ink)};
  for (std::size_t i = 0; i < strengths_.size(); ++i) {
    if (strengths_[i] == 0) continue;
    const std::uint32_t share = strengths_[i] * static_cast<std::uint32_t>(MostInk) / 255;
    std::uint32_t blended = 0xFF000000;
    for (int channel = 0; channel < 3; ++channel) {
      const int shift = 8 * channel;
      const std::uint32_t under = pixels[i] >> shift & 0xFF;
      blended |= (under * (255 - share) + inks[channel] * share) / 255 << shift;
    }
    pixels[i] = blended;
  }
}

}  // namespace vaxel
