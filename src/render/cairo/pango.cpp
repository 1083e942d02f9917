// The entry of the module for text, and all that is in it.
#include "render/cairo/pango.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/text.h"
#include "render/cairo/handles.h"

namespace vaxel {
namespace {

// Pango counts in 1/1024 of a unit with 32 bits: in a font of this size a stretch of this many characters is
// measured to a millionth of the size and stays far below the largest number.
constexpr double FontUnits = 1000;
constexpr std::size_t MaxStretch = 1000;

using UniqueDescription =
    std::unique_ptr<PangoFontDescription,
                    decltype([](PangoFontDescription* d) { pango_font_description_free(d); })>;

double InSizes(int pangoUnits) {
  return pangoUnits / (FontUnits * PANGO_SCALE);
}

UniqueDescription DescriptionOf(const FontFace& face) {
  UniqueDescription description(pango_font_description_new());
  pango_font_description_set_family(description.get(), face.Name.c_str());
  pango_font_description_set_weight(description.get(), face.Bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(description.get(), face.Italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(description.get(), FontUnits * PANGO_SCALE);
  return description;
}

// Takes a stretch off the text, between characters.
std::string_view TakeStretch(std::string_view& text) {
  std::size_t length = std::min(text.size(), MaxStretch);
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) ++length;
  const std::string_view stretch = text.substr(0, length);
  text.remove_prefix(length);
  return stretch;
}

// Moves every second stretch of glyphs by PlacedStep times the factor.
void StepBaseline(PangoLayoutLine* line, int factor) {
  constexpr auto step = static_cast<int>(PlacedStep * FontUnits * PANGO_SCALE);
  for (const GSList* run = line->runs; run; run = run->next) {
    const PangoGlyphString* glyphs = static_cast<PangoGlyphItem*>(run->data)->glyphs;
    for (int i = 0; i < glyphs->num_glyphs; ++i) {
      if (i / PlacedStretch % 2 == 1) glyphs->glyphs[i].geometry.y_offset += factor * step;
    }
  }
}

}  // namespace

void PangoDeleter::operator()(void* object) const {
  g_object_unref(object);
}

PangoText::PangoText()
    : fonts_(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT)),
      context_(pango_font_map_create_context(fonts_.get())),
      layout_(pango_layout_new(context_.get())) {
  pango_cairo_context_set_font_options(context_.get(), UnhintedFontOptions().get());
  pango_context_set_round_glyph_positions(context_.get(), FALSE);
  pango_layout_context_changed(layout_.get());
  pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
  PangoAttrList* attributes = pango_attr_list_new();
  pango_attr_list_insert(attributes, pango_attr_font_features_new("kern=0, liga=0, clig=0"));
  pango_layout_set_attributes(layout_.get(), attributes);
  pango_attr_list_unref(attributes);
}

void PangoText::SelectFace(const FontFace& face) {
  if (face == face_) return;
  face_ = face;
  pango_layout_set_font_description(layout_.get(), DescriptionOf(face).get());
}

// Returns the length in parts of the size.
double PangoText::LayOut(std::string_view stretch) {
  // A text is measured before it is drawn: the layout is then there already.
  if (stretch != pango_layout_get_text(layout_.get())) {
    pango_layout_set_text(layout_.get(), stretch.data(), static_cast<int>(stretch.size()));
  }
  PangoRectangle logical{};
  pango_layout_line_get_extents(pango_layout_get_line_readonly(layout_.get(), 0), nullptr, &logical);
  return InSizes(logical.width);
}

FaceMetrics PangoText::Metrics(const FontFace& face) {
  PangoFontMetrics* metrics = pango_context_get_metrics(context_.get(), DescriptionOf(face).get(), nullptr);
  const double thickness = std::max(InSizes(pango_font_metrics_get_underline_thickness(metrics)), 0.01);
  const FaceMetrics result = {
      InSizes(pango_font_metrics_get_ascent(metrics)), InSizes(pango_font_metrics_get_descent(metrics)),
      InSizes(pango_font_metrics_get_underline_position(metrics)) - thickness / 2, thickness};
  pango_font_metrics_unref(metrics);
  return result;
}

double PangoText::Width(const FontFace& face, std::string_view text) {
  SelectFace(face);
  double width = 0;
  while (!text.empty()) width += LayOut(TakeStretch(text));
  return width;
}

std::string PangoText::Replacement(const FontFace& face) {
  PangoFont* font = pango_context_load_font(context_.get(), DescriptionOf(face).get());
  if (!font) return {};
  const std::string family =
      pango_font_family_get_name(pango_font_face_get_family(pango_font_get_face(font)));
  g_object_unref(font);
  return EqualIgnoringCase(family, face.Name) ? std::string() : family;
}

std::string PangoText::Lacking(const FontFace& face, std::string_view text) {
  SelectFace(face);
  while (!text.empty()) {
    std::string_view stretch = TakeStretch(text);
    LayOut(stretch);
    if (pango_layout_get_unknown_glyphs_count(layout_.get()) == 0) continue;
    while (!stretch.empty()) {
      const std::string_view character =
          stretch.substr(0, static_cast<std::size_t>(g_utf8_next_char(stretch.data()) - stretch.data()));
      LayOut(character);
      if (pango_layout_get_unknown_glyphs_count(layout_.get()) > 0) return std::string(character);
      stretch.remove_prefix(character.size());
    }
  }
  return {};
}

void PangoText::Draw(cairo_t* context, const TextShape& shape, std::string_view text, const FontFace& face,
                     double reach) {
  const double width = Width(face, text);
  if (width == 0) return;
  const double scale = shape.Size / FontUnits;
  // A fallback font, or one in place of a standard one, may be wider or narrower than what was measured.
  const double fit = std::abs(shape.Length - width * shape.Size) > shape.Size * 1e-3 * width
                         ? shape.Length / (width * shape.Size)
                         : 1;
  const Point along = {std::cos(shape.Angle), -std::sin(shape.Angle)};
  double before = 0;  // mm
  while (!text.empty()) {
    const double length = LayOut(TakeStretch(text)) * shape.Size * fit;
    const Point from = shape.Start + along * before;
    const Point to = from + along * length;
    before += length;
    const double farthest = std::max({std::abs(from.X), std::abs(from.Y), std::abs(to.X), std::abs(to.Y)});
    if (farthest + 2 * shape.Size > reach || fit == 0) continue;
    cairo_save(context);
    cairo_translate(context, from.X, from.Y);
    cairo_rotate(context, -shape.Angle);
    cairo_scale(context, scale * fit, scale);
    cairo_move_to(context, 0, 0);
    PangoLayoutLine* const line = pango_layout_get_line_readonly(layout_.get(), 0);
    StepBaseline(line, 1);
    pango_cairo_show_layout_line(context, line);
    StepBaseline(line, -1);
    cairo_restore(context);
    cairo_new_path(context);
  }
}

}  // namespace vaxel

extern "C" __attribute__((visibility("default"))) vaxel::SystemText* VaxelPango() {
  return new vaxel::PangoText;
}
