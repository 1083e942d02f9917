// The module's entry: PDF documents, and the table of what the module offers.
#include <cairo-pdf.h>
#include <cairo.h>

#include <array>
#include <cstddef>
#include <ctime>
#include <exception>
#include <optional>
#include <string>
#include <variant>

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

// Cairo keeps a page as a whole before it writes it. So many bytes it takes, as measured: for each stroke and
// each filling, for each corner, each piece of a contour, each byte of a text.
constexpr std::size_t PerPainting = 1150, PerCorner = 26, PerPiece = 60, PerByte = 34;
constexpr std::size_t MostOfPage = 750'000 * PerPainting;

std::size_t MemoryOf(const DisplayList& list, const Operation& operation) {
  const auto paintings = [&](const Fill& inside) {
    return (inside.Solid != 0 && operation.Width > 0 ? 2 : 1) * PerPainting;
  };
  struct Measure {
    const DisplayList& List;
    decltype(paintings)& Paintings;

    std::size_t operator()(const LineShape&) const { return PerPainting; }
    std::size_t operator()(const PictureShape&) const { return PerPainting; }
    std::size_t operator()(const RectangleShape& box) const { return Paintings(box.Inside); }
    std::size_t operator()(const CircleShape& circle) const { return Paintings(circle.Inside); }
    std::size_t operator()(const PolygonShape& polygon) const {
      return Paintings(polygon.Inside) + polygon.Count * PerCorner;
    }
    std::size_t operator()(const ContourShape& contour) const {
      return Paintings(contour.Inside) + contour.Count * PerPiece;
    }
    std::size_t operator()(const TextShape& text) const {
      return PerPainting + List.TextOf(text).size() * PerByte;
    }
  };
  return std::visit(Measure{list, paintings}, operation.Figure);
}

// How many operations like those of a page there may be on it, where it has more.
std::optional<std::size_t> TooManyFor(const DisplayList& list, const Page& page) {
  std::size_t memory = 0;
  for (std::size_t i = 0; i < page.Count; ++i) memory += MemoryOf(list, list.At(page.First + i));
  if (memory <= MostOfPage) return std::nullopt;
  return static_cast<std::size_t>(static_cast<double>(page.Count) * MostOfPage / static_cast<double>(memory));
}

WriteResult WritePdf(const DisplayList& list, const DocumentInfo& info, PictureDecoder* decoder,
                     ByteSink& sink) {
  for (const Page& page : list.Pages()) {
    if (const auto most = TooManyFor(list, page))
      return {Failure{.Text = TextId::PdfTooLarge, .Words = std::to_string(*most)}};
  }
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
