#include "tests/render/cairo_picture.h"

#include <png.h>

#include <algorithm>
#include <cmath>

namespace vaxel::test {

Picture::Picture(const std::string& fileName, double pixelsPerMm) : scale_(pixelsPerMm) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, fileName.c_str())) return;
  image.format = PNG_FORMAT_RGB;
  rgb_.resize(PNG_IMAGE_SIZE(image));
  const png_color white = {255, 255, 255};
  if (!png_image_finish_read(&image, &white, rgb_.data(), 0, nullptr)) return;
  width_ = image.width;
  height_ = image.height;
}

template <class Use>
void Picture::ForEachPixel(const Box& box, Use use) const {
  const auto pixel = [this](double mm, std::size_t most) {
    return static_cast<std::size_t>(std::clamp(std::round(mm * scale_), 0.0, static_cast<double>(most)));
  };
  for (std::size_t y = pixel(box.Top, height_); y < pixel(box.Bottom, height_); ++y) {
    for (std::size_t x = pixel(box.Left, width_); x < pixel(box.Right, width_); ++x) {
      const std::uint8_t* const rgb = &rgb_[3 * (y * width_ + x)];
      use(static_cast<double>(x), static_cast<double>(y), 1 - (rgb[0] + rgb[1] + rgb[2]) / 765.0);
    }
  }
}

Picture::Box Picture::InkBox(const Box& within) const {
  Box box{1e9, 1e9, -1e9, -1e9};
  ForEachPixel(within, [&](double x, double y, double ink) {
    if (ink < 0.5) return;
    box = {std::min(box.Left, x / scale_), std::min(box.Top, y / scale_),
           std::max(box.Right, (x + 1) / scale_), std::max(box.Bottom, (y + 1) / scale_)};
  });
  return box;
}

double Picture::InkIn(const Box& box) const {
  double sum = 0;
  ForEachPixel(box, [&](double, double, double ink) { sum += ink; });
  return sum / (scale_ * scale_);
}

Picture::Place Picture::CentreOfInk(const Box& box) const {
  double sum = 0, sumX = 0, sumY = 0;
  ForEachPixel(box, [&](double x, double y, double ink) {
    sum += ink;
    sumX += ink * (x + 0.5);
    sumY += ink * (y + 0.5);
  });
  return {sumX / sum / scale_, sumY / sum / scale_};
}

Colour Picture::ColourAt(const Place& place) const {
  const auto x = static_cast<std::size_t>(place.X * scale_), y = static_cast<std::size_t>(place.Y * scale_);
  const std::uint8_t* const rgb = &rgb_.at(3 * (y * width_ + x));
  return MakeColour(rgb[0], rgb[1], rgb[2]);
}

}  // namespace vaxel::test
