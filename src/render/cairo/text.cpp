#include "render/cairo/text.h"

#include <cairo-ft.h>

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace vaxel {
namespace {

// The family of the font that this machine has for a face; empty when it cannot be told.
std::string FamilyOf(cairo_font_face_t* face) {
  cairo_matrix_t identity;
  cairo_matrix_init_identity(&identity);
  const UniqueFontOptions options(cairo_font_options_create());
  const UniqueScaledFont font(cairo_scaled_font_create(face, &identity, &identity, options.get()));
  FT_Face file = cairo_ft_scaled_font_lock_face(font.get());
  if (!file) return {};
  std::string family = file->family_name ? file->family_name : "";
  cairo_ft_scaled_font_unlock_face(font.get());
  return family;
}

bool IsMetricallySame(std::string_view standard, std::string_view family) {
  if (EqualIgnoringCase(standard, family)) return true;
  const StandardFamily* known = FindStandardFamily(standard);
  return known &&
         std::find(known->SameWidths.begin(), known->SameWidths.end(), family) != known->SameWidths.end();
}

// The glyphs of a text in the context's font, from 0, 0 along its baseline.
class Glyphs {
 public:
  Glyphs(cairo_t* context, std::string_view text) : text_(text) {
    cairo_scaled_font_t* const font = cairo_get_scaled_font(context);
    cairo_scaled_font_text_to_glyphs(font, 0, 0, text.data(), static_cast<int>(text.size()), &glyphs_,
                                     &count_, &clusters_, &clusterCount_, &flags_);
    cairo_text_extents_t extents{};
    cairo_scaled_font_glyph_extents(font, glyphs_, count_, &extents);
    length_ = extents.x_advance;
  }
  ~Glyphs() {
    cairo_glyph_free(glyphs_);
    cairo_text_cluster_free(clusters_);
  }
  Glyphs(const Glyphs&) = delete;
  Glyphs& operator=(const Glyphs&) = delete;

  double Length() const { return length_; }
  bool Complete() const {
    return count_ > 0 && std::none_of(glyphs_, glyphs_ + count_,
                                      [](const cairo_glyph_t& glyph) { return glyph.index == 0; });
  }
  void Fill(cairo_t* context) const {
    cairo_glyph_path(context, glyphs_, count_);
    cairo_fill(context);
  }
  void KeepPlaces(double size) {
    for (int i = 0; i < count_; ++i) {
      if (i / PlacedStretch % 2 == 1) glyphs_[i].y += PlacedStep * size;
    }
  }
  // Also gives the text itself, for documents that can be searched.
  void Show(cairo_t* context) const {
    cairo_show_text_glyphs(context, text_.data(), static_cast<int>(text_.size()), glyphs_, count_, clusters_,
                           clusterCount_, flags_);
  }

 private:
  std::string_view text_;
  cairo_glyph_t* glyphs_ = nullptr;
  int count_ = 0;
  cairo_text_cluster_t* clusters_ = nullptr;
  int clusterCount_ = 0;
  cairo_text_cluster_flags_t flags_{};
  double length_ = 0;
};

}  // namespace

CairoText::CairoText(cairo_t* context, double reach)
    : context_(context),
      reach_(reach),
      // Cairo would move every glyph of a picture to whole pixels.
      asOutlines_(cairo_surface_get_type(cairo_get_target(context)) == CAIRO_SURFACE_TYPE_IMAGE) {
  cairo_set_font_options(context_, UnhintedFontOptions().get());
}

void CairoText::Draw(const TextShape& shape, std::string_view text, const FontFace& face) {
  // Smaller than any device can show, and soon too small for Cairo to compute with.
  constexpr double smallest = 0.001;
  if (shape.Size < smallest || !outcome_ || DrawPlainly(shape, text, face)) return;
  if (!system_) {
    auto loaded = LoadPango();
    if (!loaded) {
      outcome_ = loaded.Why();
      return;
    }
    system_ = *std::move(loaded);
  }
  system_->Draw(context_, shape, text, face, reach_);
}

// False when the text needs more than glyphs beside one another, or leads too far.
bool CairoText::DrawPlainly(const TextShape& shape, std::string_view text, const FontFace& face) {
  const FaceTable* const table = StandardFace(face);
  if (!table) return false;
  cairo_font_face_t* const font = FontOf(face, *table);
  const Point end = shape.Start + Point{std::cos(shape.Angle), -std::sin(shape.Angle)} * shape.Length;
  const double farthest =
      std::max({std::abs(shape.Start.X), std::abs(shape.Start.Y), std::abs(end.X), std::abs(end.Y)});
  if (!table->Width(text) || farthest + 2 * shape.Size > reach_) return false;
  cairo_save(context_);
  cairo_translate(context_, shape.Start.X, shape.Start.Y);
  cairo_rotate(context_, -shape.Angle);
  cairo_set_font_face(context_, font);
  cairo_set_font_size(context_, shape.Size);
  Glyphs glyphs(context_, text);
  const bool complete = glyphs.Complete() && glyphs.Length() > 0;
  if (complete) {
    // A font in place of a standard one may be wider or narrower than what was measured.
    const double fit = shape.Length / glyphs.Length();
    if (std::abs(fit - 1) > 1e-3) cairo_scale(context_, fit, 1);
    if (asOutlines_) {
      glyphs.Fill(context_);
    } else {
      glyphs.KeepPlaces(shape.Size);
      glyphs.Show(context_);
    }
  }
  cairo_restore(context_);
  return complete;
}

cairo_font_face_t* CairoText::FontOf(const FontFace& face, const FaceTable& table) {
  const auto [place, isNew] = fonts_.try_emplace(&table);
  if (!isNew) return place->second.get();
  place->second.reset(cairo_toy_font_face_create(
      face.Name.c_str(), face.Italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
      face.Bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL));
  const std::string used = FamilyOf(place->second.get());
  const bool isKnown = std::any_of(replaced_.begin(), replaced_.end(), [&](const FontReplacement& other) {
    return EqualIgnoringCase(other.Wanted, face.Name);
  });
  if (!used.empty() && !isKnown && !IsMetricallySame(face.Name, used)) {
    replaced_.push_back({face.Name, used});
  }
  return place->second.get();
}

}  // namespace vaxel
