// Pictures on a Cairo context.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <map>
#include <vector>

#include "drawing/picture.h"
#include "render/cairo/handles.h"

namespace vaxel {

// Pictures as Cairo draws them, decoded once however often they are drawn. They must outlive the document: a
// JPEG picture goes into a PDF file as it is.
class CairoPictures {
 public:
  explicit CairoPictures(PictureDecoder* decoder) : decoder_(decoder) {}

  // Null when the picture cannot be decoded.
  cairo_surface_t* SurfaceOf(const Picture& picture);

 private:
  // The surface is that of the pixels, not of a copy.
  struct Decoded {
    std::vector<std::uint32_t> Pixels;
    UniqueSurface Surface;
  };

  PictureDecoder* decoder_;
  std::map<const Picture*, Decoded> decoded_;
};

}  // namespace vaxel
