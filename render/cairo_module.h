// PDF and PNG are made by a module of its own, which is loaded when the first of them is asked for: a run
// that needs neither starts without Cairo and all that it brings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "drawing/display_list.h"
#include "render/byte_sink.h"

namespace vaxel {

struct DocumentInfo {
  std::string Title;
  // Seconds since 1970; the present time when there is none.
  std::optional<std::int64_t> CreationTime;
};

// What the module exports. Each function writes to the sink and returns an empty text, or says in English
// what failed.
struct CairoFunctions {
  std::string (*WritePdf)(const DisplayList& list, const DocumentInfo& info, ByteSink& sink);
  // One page (from 0), so many pixels an inch.
  std::string (*WritePng)(const DisplayList& list, std::size_t page, double dpi, ByteSink& sink);
};

// Loads the module on first use. Null, with the reason in error, where there is none.
const CairoFunctions* LoadCairo(std::string& error);

}  // namespace vaxel
