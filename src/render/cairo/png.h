// PNG files by way of Cairo.
#pragma once

#include <cstddef>

#include "base/byte_sink.h"
#include "drawing/display_list.h"
#include "render/cairo_module.h"

namespace vaxel {

// See CairoFunctions::WritePng.
WriteResult WritePng(const DisplayList& list, std::size_t page, double dpi, PictureDecoder* decoder,
                     ByteSink& sink);

}  // namespace vaxel
