// Files that Windows writes itself. All functions fail when nothing usable was written, and pass on what they
// write only when it is complete.
#pragma once

#include <cstddef>
#include <string>

#include "base/byte_sink.h"
#include "base/result.h"
#include "drawing/display_list.h"

namespace vaxel {

struct GdiExport {
  PictureDecoder* Decoder = nullptr;  // without one there can be no pictures
  bool NudgesRightAngles = false;     // see CLogFont
  std::string Title{};                // of a metafile
};

// An enhanced metafile of the page, at true size, in hundredths of a millimetre.
Result<> WriteEmf(const DisplayList& list, std::size_t page, const GdiExport& how, ByteSink& sink);

// An antialiased picture of the page on white, which says its density. Strokes are as wide as they say. Of 1
// to 32767 pixels a side and 400 million in all.
Result<> WriteGdiPng(const DisplayList& list, std::size_t page, double dpi, const GdiExport& how,
                     ByteSink& sink);

}  // namespace vaxel
