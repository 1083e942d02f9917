#pragma once

#include <cstddef>

#include "drawing/display_list.h"
#include "files/byte_sink.h"
#include "render/cairo_module.h"

namespace vaxel {

// See CairoFunctions::WritePng.
WriteResult WritePng(const DisplayList& list, std::size_t page, double dpi, PictureDecoder* decoder,
                     ByteSink& sink);

}  // namespace vaxel
