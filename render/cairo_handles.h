#pragma once

#include <cairo.h>

#include <memory>

namespace vaxel {

struct CairoDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using UniqueSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using UniqueContext = std::unique_ptr<cairo_t, CairoDeleter>;

}  // namespace vaxel
