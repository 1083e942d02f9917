#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/display_list.h"
#include "drawing/font_face.h"
#include "render/cairo_module.h"

namespace vaxel {

struct PangoDeleter {
  void operator()(void* object) const;
};

// Text through Pango, with the system's fonts: unhinted, so that it is as long in every size and on every
// device, and without kerning and ligatures.
class CairoText : public TextMeasurer {
 public:
  CairoText();

  FaceMetrics Metrics(const FontFace& face) override;
  double Width(const FontFace& face, std::string_view text) override;
  std::string Replacement(const FontFace& face) override;

  // Draws with the context's source. reach: how far from its origin the context can count, in mm.
  void Draw(cairo_t* context, const TextShape& shape, std::string_view text, const FontFace& face,
            double reach);

 private:
  void SelectFace(const FontFace& face);
  double LayOut(std::string_view stretch);

  std::unique_ptr<PangoFontMap, PangoDeleter> fonts_;
  std::unique_ptr<PangoContext, PangoDeleter> context_;
  std::unique_ptr<PangoLayout, PangoDeleter> layout_;
  FontFace face_;
};

// The fonts of the list that are not there, the standard ones alone: of the others the run has told already.
std::vector<FontReplacement> ReplacedFonts(const DisplayList& list);

}  // namespace vaxel
