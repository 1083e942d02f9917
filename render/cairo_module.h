// PDF and PNG are made by a module of its own, which is loaded when the first of them is asked for: a run
// that needs neither starts without Cairo and all that it brings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/display_list.h"
#include "render/byte_sink.h"

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
  // Measures what has no table of widths, as the two formats draw it.
  std::unique_ptr<TextMeasurer> (*MakeMeasurer)();
};

// Loads the module on first use. Null, with the reason in error, where there is none.
const CairoFunctions* LoadCairo(std::string& error);

}  // namespace vaxel
