#include "render/cairo/png.h"

#include <cairo.h>
#include <png.h>

#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "render/cairo/handles.h"
#include "render/cairo/renderer.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

constexpr double MaxSide = 32767;  // of a Cairo picture, pixels
constexpr double MaxArea = 400e6;  // pixels: 1.6 GB while it is drawn

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

// Everything that must be released lives outside: an error of libpng jumps out of this function.
bool Encode(png_structp png, png_infop info, cairo_surface_t* surface, double dpi, std::vector<png_byte>& row,
            ByteSink& sink) {
  if (setjmp(png_jmpbuf(png))) return false;
  const auto width = static_cast<png_uint_32>(cairo_image_surface_get_width(surface));
  const auto height = static_cast<png_uint_32>(cairo_image_surface_get_height(surface));
  const auto pixelsPerMetre = static_cast<png_uint_32>(std::lround(dpi / MillimetresPerInch * 1000));
  png_set_write_fn(png, &sink, WriteToSink, FlushNothing);
  // A drawing of lines is mostly one colour: little work makes it nearly as small as much work.
  png_set_compression_level(png, 3);
  png_set_filter(png, 0, PNG_FILTER_NONE);
  png_set_IHDR(png, info, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_pHYs(png, info, pixelsPerMetre, pixelsPerMetre, PNG_RESOLUTION_METER);
  png_write_info(png, info);
  const unsigned char* pixels = cairo_image_surface_get_data(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  for (png_uint_32 y = 0; y < height; ++y, pixels += stride) {
    ToRgbRow(pixels, row);
    png_write_row(png, row.data());
  }
  png_write_end(png, nullptr);
  return true;
}

Result<> EncodeSurface(cairo_surface_t* surface, double dpi, ByteSink& sink) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  std::vector<png_byte> row(3 * static_cast<std::size_t>(cairo_image_surface_get_width(surface)));
  const bool done = info && Encode(png, info, surface, dpi, row, sink);
  png_destroy_write_struct(&png, &info);
  if (!done) return Failure{.Text = TextId::PngNotEncoded};
  return {};
}

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
  const UniqueSurface surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height)));
  const UniqueContext context(cairo_create(surface.get()));
  cairo_set_source_rgb(context.get(), 1, 1, 1);
  cairo_paint(context.get());
  cairo_scale(context.get(), scale, scale);
  CairoRenderer renderer(context.get(), decoder, 1 / scale);
  PlayPage(list, page, renderer);
  WriteResult result = renderer.Written();
  if (!result.Outcome) return result;
  cairo_surface_flush(surface.get());
  result.Outcome = EncodeSurface(surface.get(), dpi, sink);
  return result;
}

}  // namespace vaxel
