#pragma once

#include <cstddef>
#include <string>

#include "drawing/display_list.h"
#include "render/byte_sink.h"

namespace vaxel {

// See CairoFunctions::WritePng.
std::string WritePng(const DisplayList& list, std::size_t page, double dpi, ByteSink& sink);

}  // namespace vaxel
