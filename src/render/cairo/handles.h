// Cairo's objects, owned.
#pragma once

#include <cairo.h>

#include <memory>

namespace vaxel {

struct CairoDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
  void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
  void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
  void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
using UniqueSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using UniqueContext = std::unique_ptr<cairo_t, CairoDeleter>;
using UniqueFontFace = std::unique_ptr<cairo_font_face_t, CairoDeleter>;
using UniqueScaledFont = std::unique_ptr<cairo_scaled_font_t, CairoDeleter>;
using UniqueFontOptions = std::unique_ptr<cairo_font_options_t, CairoDeleter>;

// Unhinted, so that a text is as long in every size and on every device, and as long drawn as measured.
inline UniqueFontOptions UnhintedFontOptions() {
  UniqueFontOptions options(cairo_font_options_create());
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  return options;
}

}  // namespace vaxel
