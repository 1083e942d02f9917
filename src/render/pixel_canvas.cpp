#include "render/pixel_canvas.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace vaxel {
namespace {

// The first pixel, of those up to limit, whose middle is not before the place.
int FirstFrom(double place, int limit) {
  return static_cast<int>(std::ceil(std::clamp(place, 0.0, limit + 0.5) - 0.5));
}

std::uint32_t Over(std::uint32_t above, std::uint32_t below) {
  const std::uint32_t rest = 255 - (above >> 24);
  std::uint32_t result = above;
  for (int shift = 0; shift < 32; shift += 8) {
    result += ((below >> shift & 0xFF) * rest + 127) / 255 << shift;
  }
  return result;
}

}  // namespace

void PixelCanvas::AddSide(Point from, Point to) {
  const int turn = from.Y < to.Y ? 1 : -1;
  if (turn < 0) std::swap(from, to);
  const int first = FirstFrom(from.Y, height_), last = FirstFrom(to.Y, height_) - 1;
  if (first > last) return;
  const double step = (to.X - from.X) / (to.Y - from.Y);
  sides_.push_back({first, last, from.X + (first + 0.5 - from.Y) * step, step, turn});
}

void PixelCanvas::Fill(const Contours& contours, const DeviceTransform& transform, Colour ink) {
  sides_.clear();
  for (std::size_t i = 0; i < contours.Count(); ++i) {
    const std::span<const Point> contour = contours.At(i);
    if (contour.size() < 3) continue;
    Point before = transform.At(contour.back());
    for (const Point& corner : contour) {
      const Point pixel = transform.At(corner);
      AddSide(before, pixel);
      before = pixel;
    }
  }
  if (sides_.empty()) return;
  std::sort(sides_.begin(), sides_.end(), [](const Side& a, const Side& b) { return a.First < b.First; });
  active_.clear();
  const std::uint32_t pixel = OpaquePixel(ink);
  auto next = sides_.begin();
  for (int y = next->First; y < height_ && (next != sides_.end() || !active_.empty()); ++y) {
    for (; next != sides_.end() && next->First == y; ++next) active_.push_back(*next);
    FillRow(y, pixel);
    std::erase_if(active_, [y](const Side& side) { return side.Last == y; });
    for (Side& side : active_) side.X += side.Step;
  }
}

void PixelCanvas::FillRow(int y, std::uint32_t pixel) {
  // They are nearly in order, as they were in the row above.
  for (std::size_t i = 1; i < active_.size(); ++i) {
    for (std::size_t j = i; j > 0 && active_[j].X < active_[j - 1].X; --j)
      std::swap(active_[j], active_[j - 1]);
  }
  std::uint32_t* const row = pixels_ + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
  int winding = 0, from = 0;
  for (const Side& side : active_) {
    if (winding == 0) from = FirstFrom(side.X, width_);
    winding += side.Turn;
    if (winding == 0) std::fill(row + from, row + FirstFrom(side.X, width_), pixel);
  }
}

void PixelCanvas::Blend(const PixelView& picture, const PixelBox& box) {
  const PixelBox seen = {std::max(box.Left, 0), std::max(box.Top, 0), std::min(box.Right, width_),
                         std::min(box.Bottom, height_)};
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  const std::vector<std::uint32_t> scaled =
      ScalePicture(picture, box.Width(), box.Height(),
                   {seen.Left - box.Left, seen.Top - box.Top, seen.Right - box.Left, seen.Bottom - box.Top});
  auto next = scaled.begin();
  for (int y = seen.Top; y < seen.Bottom; ++y) {
    std::uint32_t* const row = pixels_ + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    for (int x = seen.Left; x < seen.Right; ++x) row[x] = Over(*next++, row[x]);
  }
}

}  // namespace vaxel
