#include "render/gdi/view.h"
#include "resources/text_id.h"

#include <emmintrin.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace vaxel {
namespace {

// Each pixel is the mean of this many by this many that are drawn. The reduction is written for it.
constexpr int Multiple = 4;
// Of the bitmap that is drawn into: so small that it stays near the processor.
constexpr int BandBytes = 4 << 20;

// The sums of each part of the colour of 4 by 4 pixels, in the lower half.
__m128i SumOfBlock(const std::uint32_t* pixels, std::size_t stride) {
  const __m128i zero = _mm_setzero_si128();
  __m128i sum = zero;
  for (int row = 0; row < Multiple; ++row, pixels += stride) {
    const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    sum = _mm_add_epi16(sum, _mm_add_epi16(_mm_unpacklo_epi8(four, zero), _mm_unpackhi_epi8(four, zero)));
  }
  return _mm_add_epi16(sum, _mm_srli_si128(sum, 8));
}

void ReduceRow(const std::uint32_t* drawn, int width, std::uint32_t* row) {
  const std::size_t stride = static_cast<std::size_t>(width) * Multiple;
  const __m128i half = _mm_set1_epi16(Multiple * Multiple / 2);
  for (int x = 0; x < width; ++x, drawn += Multiple) {
    const __m128i mean = _mm_srli_epi16(_mm_add_epi16(SumOfBlock(drawn, stride), half), 4);
    row[x] = 0xFF000000 | static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(mean, mean)));
  }
}

void FillPixels(GdiBitmap& bitmap, const PixelBox& box, std::uint32_t pixel) {
  for (int y = std::max(0, box.Top); y < std::min(bitmap.Height(), box.Bottom); ++y) {
    std::uint32_t* const row = bitmap.Pixels() + static_cast<std::ptrdiff_t>(y) * bitmap.Width();
    for (int x = std::max(0, box.Left); x < std::min(bitmap.Width(), box.Right); ++x) row[x] = pixel;
  }
}

// The lines are a pixel of the picture wide, and cover just that one.
void DrawBehind(GdiBitmap& band, const BoxBehind& box, const DeviceTransform& place) {
  // What lies outside is not drawn, however far away it is.
  const auto pixel = [](double at, int length) {
    return static_cast<int>(std::floor(std::clamp(at, -2.0 * Multiple, length + 2.0 * Multiple) / Multiple)) *
           Multiple;
  };
  const Point corner = place.At(box.Corner), opposite = place.At(box.Opposite);
  const int left = pixel(corner.X, band.Width()), right = pixel(opposite.X, band.Width());
  const int top = pixel(corner.Y, band.Height()), bottom = pixel(opposite.Y, band.Height());
  const std::uint32_t ink = OpaquePixel(box.Ink);
  FillPixels(band, {left, top, right + Multiple, top + Multiple}, ink);
  FillPixels(band, {left, bottom, right + Multiple, bottom + Multiple}, ink);
  FillPixels(band, {left, top, left + Multiple, bottom + Multiple}, ink);
  FillPixels(band, {right, top, right + Multiple, bottom + Multiple}, ink);
}

}  // namespace

bool GdiView::DrawRows(std::size_t page, const ViewFrame& frame, const RowTaker& take,
                       const PlayWatch& goOn) {
  const int drawnWidth = frame.Width * Multiple;
  const int rowBytes = drawnWidth * Multiple * static_cast<int>(sizeof(std::uint32_t));
  const int bandRows = std::clamp(BandBytes / rowBytes, 1, frame.Height);
  GdiBitmap band(drawnWidth, bandRows * Multiple);
  std::vector<std::uint32_t> rows(static_cast<std::size_t>(frame.Width) * static_cast<std::size_t>(bandRows));
  if (!band) {
    if (outcome_) outcome_ = Failure{.Text = TextId::DrawingMemory};
    return false;
  }
  const BitmapDc context(band);
  DeviceTransform place = frame.Place.Enlarged(Multiple);
  std::optional<double> leastWidth;
  if (frame.IsForFile) leastWidth = 1 / std::min(frame.Place.PixelsPerMmX, frame.Place.PixelsPerMmY);
  // A mirrored page is drawn as it is, so that the texts are too, where it then turns over into its place.
  const Page& shown = list_.Pages()[page];
  if (shown.IsMirrored) place.OffsetX = drawnWidth - place.OffsetX - shown.Width * place.PixelsPerMmX;
  GdiRenderer renderer(context, place, stock_, leastWidth);
  for (int top = 0; top < frame.Height; top += bandRows) {
    const int count = std::min(bandRows, frame.Height - top);
    std::fill_n(band.Pixels(), band.PixelCount(), OpaquePixel(frame.Paper));
    place.OffsetY = (frame.Place.OffsetY - top) * Multiple;
    for (const BoxBehind& box : frame.Behind) DrawBehind(band, box, place);
    renderer.Place(place);
    PlayPage(list_, page, renderer, goOn);
    GdiFlush();
    for (int y = 0; y < count; ++y) {
      std::uint32_t* const row =
          rows.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(frame.Width);
      ReduceRow(band.Pixels() + static_cast<std::size_t>(y) * Multiple * static_cast<std::size_t>(drawnWidth),
                frame.Width, row);
      if (shown.IsMirrored) std::reverse(row, row + frame.Width);
    }
    if (!take(rows.data(), count)) return false;
  }
  if (outcome_) outcome_ = renderer.Outcome();
  return true;
}

GdiBitmap GdiView::Draw(std::size_t page, const ViewFrame& frame, const PlayWatch& goOn) {
  GdiBitmap bitmap(frame.Width, frame.Height);
  if (!bitmap) {
    if (outcome_) outcome_ = Failure{.Text = TextId::DrawingMemory};
    return {};
  }
  std::uint32_t* next = bitmap.Pixels();
  const auto keep = [&](const std::uint32_t* pixels, int rows) {
    next = std::copy_n(pixels, static_cast<std::size_t>(rows) * static_cast<std::size_t>(frame.Width), next);
    return true;
  };
  const bool drawn = DrawRows(page, frame, keep, goOn);
  return drawn ? std::move(bitmap) : GdiBitmap();
}

}  // namespace vaxel
