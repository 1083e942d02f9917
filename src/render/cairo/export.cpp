// The module's entry: PDF documents, and the table of what the module offers.
#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
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

// Cairo keeps a page as a whole before it writes it. So many bytes that takes, as measured: for each stroke
// and each filling, for each corner, each piece of a contour, each byte of a text.
constexpr std::size_t PerPainting = 1070, PerCorner = 10, PerPiece = 20, PerByte = 33;
// Of the drawing and of the page that is being written.
constexpr std::size_t MostOfAll = 750'000 * (PerPainting + sizeof(Operation));

// What operations take in the drawing, and what Cairo takes for them.
struct Memory {
  std::size_t Drawn = 0, Kept = 0;
};

struct MemoryMeter {
  const DisplayList& List;
  const Operation& Drawn;

  Memory operator()(const LineShape&) const { return Figure(Fill(false, Black)); }
  Memory operator()(const PictureShape&) const { return Figure(Fill(false, Black)); }
  Memory operator()(const RectangleShape& box) const { return Figure(box.Inside); }
  Memory operator()(const CircleShape& circle) const { return Figure(circle.Inside); }
  Memory operator()(const PolygonShape& polygon) const {
    return Figure(polygon.Inside, polygon.Count, sizeof(Point), PerCorner);
  }
  Memory operator()(const ContourShape& contour) const {
    return Figure(contour.Inside, contour.Count, sizeof(ContourArc), PerPiece);
  }
  Memory operator()(const TextShape& text) const {
    return Figure(Fill(false, Black), List.TextOf(text).size(), 1, PerByte);
  }

 private:
  Memory Figure(const Fill& inside, std::size_t parts = 0, std::size_t drawn = 0,
                std::size_t kept = 0) const {
    const std::size_t paintings = inside.Solid != 0 && Drawn.Width > 0 ? 2 : 1;
    return {sizeof(Operation) + parts * drawn, paintings * PerPainting + parts * kept};
  }
};

// How many operations like those of a page there may be on it, where it has more.
std::optional<std::size_t> TooManyFor(const DisplayList& list, const Page& page) {
  Memory memory;
  std::size_t decoding = 0;  // the largest picture is held twice while it is decoded
  for (std::size_t i = 0; i < page.Count; ++i) {
    const Operation& operation = list.At(page.First + i);
    const auto [drawn, kept] = std::visit(MemoryMeter{list, operation}, operation.Figure);
    memory = {memory.Drawn + drawn, memory.Kept + kept};
    if (const auto* const picture = std::get_if<PictureShape>(&operation.Figure))
      decoding = std::max(decoding, list.PictureOf(*picture).DecodedBytes());
  }
  const std::size_t others =
      list.Bytes() - std::min(list.Bytes(), memory.Drawn) + list.DecodedBytes() + decoding;
  const std::size_t own = memory.Drawn + memory.Kept;
  if (others + own <= MostOfAll) return std::nullopt;
  const double share =
      static_cast<double>(MostOfAll - std::min(others, MostOfAll)) / static_cast<double>(own);
  return static_cast<std::size_t>(static_cast<double>(page.Count) * share);
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
