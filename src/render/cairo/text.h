// Text on a Cairo context.
#pragma once

#include <cairo.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/display_list.h"
#include "drawing/font_face.h"
#include "drawing/standard_faces.h"
#include "render/cairo/handles.h"
#include "render/cairo_module.h"

namespace vaxel {

// Draws text. In the standard faces, whose characters stand beside one another as they are, Cairo does it
// alone; everything else is for the module with Pango.
class CairoText {
 public:
  // The context must outlive the object. reach: how far from its origin it can count, in mm.
  CairoText(cairo_t* context, double reach);

  // Draws with the context's source.
  void Draw(const TextShape& shape, std::string_view text, const FontFace& face);
  // It fails when there are texts that could not be drawn.
  const Result<>& Outcome() const { return outcome_; }
  // The standard fonts of what was drawn that neither are there nor have one of the same widths.
  const std::vector<FontReplacement>& Replaced() const { return replaced_; }

 private:
  bool DrawPlainly(const TextShape& shape, std::string_view text, const FontFace& face);
  cairo_font_face_t* FontOf(const FontFace& face, const FaceTable& table);

  cairo_t* context_;
  double reach_;
  bool asOutlines_;
  std::map<const FaceTable*, UniqueFontFace> fonts_;  // finding one takes long: each is looked for once
  std::vector<FontReplacement> replaced_;
  std::unique_ptr<SystemText> system_;  // loaded for the first text that needs it
  Result<> outcome_;
};

}  // namespace vaxel
