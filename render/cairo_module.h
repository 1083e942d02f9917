// PDF and PNG are made by a module of its own, which is loaded when the first of them is asked for: a run
// that needs neither starts without Cairo and all that it brings. What needs Pango is a second module, for
// few drawings have a text that does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/display_list.h"
#include "drawing/font_face.h"
#include "render/byte_sink.h"

struct _cairo;

namespace vaxel {

struct DocumentInfo {
  std::string Title;
  // Seconds since 1970; the present time when there is none.
  std::optional<std::int64_t> CreationTime;
};

// A font that is not there, and the one that is used in its place.
struct FontReplacement {
  std::string Wanted, Used;
};

// What the module exports. The functions that write return an empty text, or say in English what failed.
struct CairoFunctions {
  std::string (*WritePdf)(const DisplayList& list, const DocumentInfo& info, ByteSink& sink);
  // One page (from 0), so many pixels an inch.
  std::string (*WritePng)(const DisplayList& list, std::size_t page, double dpi, ByteSink& sink);
  // Of the standard fonts that the list uses, those that neither are there nor have one of the same widths.
  std::vector<FontReplacement> (*ReplacedFonts)(const DisplayList& list);
};

// Text in any font of this machine and in any script.
class SystemText : public TextMeasurer {
 public:
  // Draws with the context's source. reach: how far from its origin the context can count, in mm.
  virtual void Draw(_cairo* context, const TextShape& shape, std::string_view text, const FontFace& face,
                    double reach) = 0;
};

// Both load their module on first use. Null, with the reason in error, where there is none.
const CairoFunctions* LoadCairo(std::string& error);
std::unique_ptr<SystemText> LoadPango(std::string& error);

}  // namespace vaxel
