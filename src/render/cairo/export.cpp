// The module's entry: PDF documents, and the table of what the module offers.
#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <exception>
#include <string>

#include "base/units.h"
#include "render/cairo/handles.h"
#include "render/cairo/png.h"
#include "render/cairo/renderer.h"
#include "render/cairo/text.h"
#include "render/cairo_module.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

constexpr double PointsPerMillimetre = 72 / MillimetresPerInch;

cairo_status_t WriteToSink(void* sink, const unsigned char* bytes, unsigned int count) {
  static_cast<ByteSink*>(sink)->Write({reinterpret_cast<const char*>(bytes), count});
  return CAIRO_STATUS_SUCCESS;
}

// Gives each page of the document its own size.
class PdfRenderer : public CairoRenderer {
 public:
  PdfRenderer(cairo_t* context, cairo_surface_t* surface, PictureDecoder* decoder)
      : CairoRenderer(context, decoder), surface_(surface) {}

  void BeginPage(const Page& page, std::size_t number) override {
    cairo_pdf_surface_set_size(surface_, page.Width * PointsPerMillimetre, page.Height * PointsPerMillimetre);
    CairoRenderer::BeginPage(page, number);
  }

 private:
  cairo_surface_t* surface_;
};

std::string TimeText(std::int64_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  std::tm parts{};
  if (!gmtime_r(&time, &parts)) return {};
  std::array<char, 40> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text.data(), length};
}

// Cairo keeps a page as a whole before it writes it, about a kilobyte for each operation.
constexpr std::size_t MostOnPage = 750'000;

bool IsTooLarge(const DisplayList& list) {
  return std::any_of(list.Pages().begin(), list.Pages().end(),
                     [](const Page& page) { return page.Count > MostOnPage; });
}

WriteResult WritePdf(const DisplayList& list, const DocumentInfo& info, PictureDecoder* decoder,
                     ByteSink& sink) {
  if (IsTooLarge(list)) return {Failure{.Text = TextId::PdfTooLarge, .Words = std::to_string(MostOnPage)}};
  const UniqueSurface surface(cairo_pdf_surface_create_for_stream(WriteToSink, &sink, 1, 1));
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, info.Title.c_str());
  const std::string time = TimeText(info.CreationTime.value_or(std::time(nullptr)));
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, time.c_str());
  const UniqueContext context(cairo_create(surface.get()));
  cairo_scale(context.get(), PointsPerMillimetre, PointsPerMillimetre);
  PdfRenderer renderer(context.get(), surface.get(), decoder);
  PlayAll(list, renderer);
  WriteResult result = renderer.Written();
  if (!result.Outcome) return result;
  cairo_surface_finish(surface.get());
  const cairo_status_t written = cairo_surface_status(surface.get());
  if (written != CAIRO_STATUS_SUCCESS) result.Outcome = Failure{.Words = cairo_status_to_string(written)};
  return result;
}

// Nothing may be thrown into the program: it may have a C++ runtime of its own.
template <class Function>
WriteResult WithoutThrowing(Function function) {
  try {
    return function();
  } catch (const std::exception& error) {
    return {Failure{.Words = error.what()}};
  }
}

constexpr CairoFunctions Functions = {
    [](const DisplayList& list, const DocumentInfo& info, PictureDecoder* decoder, ByteSink& sink) {
      return WithoutThrowing([&] { return WritePdf(list, info, decoder, sink); });
    },
    [](const DisplayList& list, std::size_t page, double dpi, PictureDecoder* decoder, ByteSink& sink) {
      return WithoutThrowing([&] { return WritePng(list, page, dpi, decoder, sink); });
    }};

}  // namespace
}  // namespace vaxel

extern "C" __attribute__((visibility("default"))) const vaxel::CairoFunctions* VaxelCairo() {
  return &vaxel::Functions;
}
