#include "render/picture_scaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace vaxel {
namespace {

// What a pixel of the result takes from the pixels of one side of the picture.
struct Share {
  int First = 0;
  std::vector<float> Weights{};  // of the pixels from First on; together 1
};

Share ShareOf(int place, int size, int pictureSize) {
  const double ratio = static_cast<double>(pictureSize) / size;
  Share share;
  if (ratio <= 1) {
    const double centre = std::clamp((place + 0.5) * ratio - 0.5, 0.0, pictureSize - 1.0);
    share.First = std::clamp(static_cast<int>(centre), 0, std::max(0, pictureSize - 2));
    const double beyond = centre - share.First;
    share.Weights.push_back(static_cast<float>(1 - beyond));
    if (pictureSize > 1) share.Weights.push_back(static_cast<float>(beyond));
    return share;
  }
  const double from = place * ratio, to = std::min((place + 1) * ratio, static_cast<double>(pictureSize));
  share.First = static_cast<int>(from);
  for (int i = share.First; i < to && i < pictureSize; ++i) {
    share.Weights.push_back(
        static_cast<float>((std::min(to, i + 1.0) - std::max(from, double{1} * i)) / (to - from)));
  }
  return share;
}

std::vector<Share> SharesOf(int from, int to, int size, int pictureSize) {
  std::vector<Share> shares;
  shares.reserve(static_cast<std::size_t>(to - from));
  for (int place = from; place < to; ++place) shares.push_back(ShareOf(place, size, pictureSize));
  return shares;
}

// Blue, green, red, alpha.
using Parts = std::array<float, 4>;

class Scaler {
 public:
  Scaler(const PixelView& picture, std::vector<Share> columns)
      : picture_(picture), columns_(std::move(columns)) {}

  void AppendRow(const Share& rows, std::vector<std::uint32_t>& result) {
    sum_.assign(columns_.size(), Parts{});
    for (std::size_t i = 0; i < rows.Weights.size(); ++i) {
      const std::vector<Parts>& row = RowOf(rows.First + static_cast<int>(i));
      for (std::size_t x = 0; x < sum_.size(); ++x) {
        for (std::size_t part = 0; part < 4; ++part) sum_[x][part] += rows.Weights[i] * row[x][part];
      }
    }
    for (const Parts& parts : sum_) {
      std::uint32_t pixel = 0;
      for (std::size_t part = 0; part < 4; ++part) {
        pixel |= static_cast<std::uint32_t>(std::clamp(parts[part] + 0.5F, 0.0F, 255.0F)) << (8 * part);
      }
      result.push_back(pixel);
    }
  }

 private:
  // One row of the picture in the columns of the result. Two are kept: rows of an enlarged picture share
  // them.
  const std::vector<Parts>& RowOf(int y) {
    Kept& kept = kept_[static_cast<std::size_t>(y) % kept_.size()];
    if (kept.Y == y) return kept.Row;
    kept.Y = y;
    kept.Row.clear();
    const std::uint32_t* pixels =
        picture_.Pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(picture_.Width);
    for (const Share& column : columns_) {
      Parts parts{};
      const std::uint32_t* pixel = pixels + column.First;
      for (const float weight : column.Weights) {
        for (std::size_t part = 0; part < 4; ++part) {
          parts[part] += weight * static_cast<float>(*pixel >> (8 * part) & 0xFF);
        }
        ++pixel;
      }
      kept.Row.push_back(parts);
    }
    return kept.Row;
  }

  struct Kept {
    int Y = -1;
    std::vector<Parts> Row{};
  };

  PixelView picture_;
  std::vector<Share> columns_;
  std::array<Kept, 2> kept_;
  std::vector<Parts> sum_;
};

}  // namespace

std::vector<std::uint32_t> ScalePicture(const PixelView& picture, int width, int height,
                                        const PixelBox& part) {
  std::vector<std::uint32_t> result;
  result.reserve(static_cast<std::size_t>(part.Width()) * static_cast<std::size_t>(part.Height()));
  Scaler scaler(picture, SharesOf(part.Left, part.Right, width, picture.Width));
  for (int y = part.Top; y < part.Bottom; ++y) scaler.AppendRow(ShareOf(y, height, picture.Height), result);
  return result;
}

}  // namespace vaxel
