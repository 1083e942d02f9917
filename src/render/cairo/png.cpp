#include "render/cairo/png.h"

#include <cairo.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "render/cairo/handles.h"
#include "render/cairo/renderer.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

constexpr double MaxSide = 32767;  // of a Cairo picture, pixels
constexpr double MaxArea = 400e6;  // pixels
// So many pixels are drawn at a time: 64 MB.
constexpr std::size_t MostOfBand = 16'000'000;

void WriteToSink(png_structp png, png_bytep bytes, png_size_t count) {
  auto* sink = static_cast<ByteSink*>(png_get_io_ptr(png));
  sink->Write({reinterpret_cast<const char*>(bytes), count});
}

void FlushNothing(png_structp) {}

// Cairo keeps a pixel as 0x00RRGGBB in the machine's own byte order.
void ToRgbRow(const unsigned char* pixels, std::vector<png_byte>& row) {
  const auto* pixel = reinterpret_cast<const std::uint32_t*>(pixels);
  for (std::size_t i = 0; i < row.size(); i += 3, ++pixel) {
    row[i] = static_cast<png_byte>(*pixel >> 16);
    row[i + 1] = static_cast<png_byte>(*pixel >> 8);
    row[i + 2] = static_cast<png_byte>(*pixel);
  }
}

// Writes one PNG file. An error of libpng jumps out of the functions that call it: nothing in them must need
// to be released.
class PngEncoder {
 public:
  PngEncoder(std::size_t width, ByteSink& sink)
      : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr)),
        info_(png_ ? png_create_info_struct(png_) : nullptr),
        row_(3 * width),
        sink_(sink) {}
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;
  ~PngEncoder() { png_destroy_write_struct(&png_, &info_); }

  // The results are false when that cannot be written.
  bool Begin(std::size_t width, std::size_t height, double dpi) {
    if (!info_ || setjmp(png_jmpbuf(png_))) return false;
    const auto pixelsPerMetre = static_cast<png_uint_32>(std::lround(dpi / MillimetresPerInch * 1000));
    png_set_write_fn(png_, &sink_, WriteToSink, FlushNothing);
    // A drawing of lines is mostly one colour: little work makes it nearly as small as much work.
    png_set_compression_level(png_, 3);
    png_set_filter(png_, 0, PNG_FILTER_NONE);
    png_set_IHDR(png_, info_, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png_, info_, pixelsPerMetre, pixelsPerMetre, PNG_RESOLUTION_METER);
    png_write_info(png_, info_);
    return true;
  }

  bool AddRows(cairo_surface_t* surface, std::size_t rows) {
    if (setjmp(png_jmpbuf(png_))) return false;
    const unsigned char* pixels = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (std::size_t y = 0; y < rows; ++y, pixels += stride) {
      ToRgbRow(pixels, row_);
      png_write_row(png_, row_.data());
    }
    return true;
  }

  bool End() {
    if (setjmp(png_jmpbuf(png_))) return false;
    png_write_end(png_, nullptr);
    return true;
  }

 private:
  png_structp png_;
  png_infop info_;
  std::vector<png_byte> row_;
  ByteSink& sink_;
};

// Draws a page band by band, from the top.
class BandPainter {
 public:
  BandPainter(std::size_t width, std::size_t rows, double scale, PictureDecoder* decoder)
      : surface_(
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(rows))),
        context_(cairo_create(surface_.get())),
        scale_(scale) {
    cairo_scale(context_.get(), scale, scale);
    renderer_.emplace(context_.get(), decoder, 1 / scale);
  }

  // The pixels of the rows from this one on. What stands of a picture in several bands is the same as in one,
  // for they are whole pixels apart.
  cairo_surface_t* Paint(const DisplayList& list, std::size_t page, std::size_t row) {
    cairo_save(context_.get());
    cairo_set_source_rgb(context_.get(), 1, 1, 1);
    cairo_paint(context_.get());
    cairo_restore(context_.get());
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, scale_, 0, 0, scale_, 0, -static_cast<double>(row));
    cairo_set_matrix(context_.get(), &matrix);
    PlayPage(list, page, *renderer_);
    cairo_surface_flush(surface_.get());
    return surface_.get();
  }
  WriteResult Written() const { return renderer_->Written(); }

 private:
  UniqueSurface surface_;
  UniqueContext context_;
  double scale_;
  std::optional<CairoRenderer> renderer_;
};

}  // namespace

WriteResult WritePng(const DisplayList& list, std::size_t page, double dpi, PictureDecoder* decoder,
                     ByteSink& sink) {
  const Page& drawn = list.Pages()[page];
  const double scale = dpi / MillimetresPerInch;
  const double width = std::ceil(drawn.Width * scale - 1e-6);
  const double height = std::ceil(drawn.Height * scale - 1e-6);
  if (!(width >= 1 && height >= 1 && width <= MaxSide && height <= MaxSide && width * height <= MaxArea)) {
    return {Failure{.Text = TextId::CliPngSize}};
  }
  const auto columns = static_cast<std::size_t>(width), rows = static_cast<std::size_t>(height);
  const std::size_t bandRows = std::min(rows, std::max(MostOfBand / columns, std::size_t{1}));
  BandPainter painter(columns, bandRows, scale, decoder);
  PngEncoder encoder(columns, sink);
  bool isEncoded = encoder.Begin(columns, rows, dpi);
  for (std::size_t row = 0; row < rows && isEncoded; row += bandRows) {
    cairo_surface_t* const band = painter.Paint(list, page, row);
    if (WriteResult result = painter.Written(); !result.Outcome) return result;
    isEncoded = encoder.AddRows(band, std::min(bandRows, rows - row));
  }
  WriteResult result = painter.Written();
  if (!isEncoded || !encoder.End()) result.Outcome = Failure{.Text = TextId::PngNotEncoded};
  return result;
}

}  // namespace vaxel
