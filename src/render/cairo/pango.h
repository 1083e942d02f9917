// Text in the fonts and scripts that Cairo alone cannot set.
#pragma once

#include <cairo.h>
#include <pango/pango.h>

#include <memory>
#include <string>
#include <string_view>

#include "render/cairo_module.h"

namespace vaxel {

struct PangoDeleter {
  void operator()(void* object) const;
};

// Text through Pango, unhinted, so that it is as long in every size and on every device, and without kerning
// and ligatures.
class PangoText : public SystemText {
 public:
  PangoText();

  FaceMetrics Metrics(const FontFace& face) override;
  double Width(const FontFace& face, std::string_view text) override;
  std::string Replacement(const FontFace& face) override;
  std::string Lacking(const FontFace& face, std::string_view text) override;
  void Draw(cairo_t* context, const TextShape& shape, std::string_view text, const FontFace& face,
            double reach) override;

 private:
  void SelectFace(const FontFace& face);
  double LayOut(std::string_view stretch);

  std::unique_ptr<PangoFontMap, PangoDeleter> fonts_;
  std::unique_ptr<PangoContext, PangoDeleter> context_;
  std::unique_ptr<PangoLayout, PangoDeleter> layout_;
  FontFace face_;
};

}  // namespace vaxel
