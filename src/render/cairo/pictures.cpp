#include "render/cairo/pictures.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace vaxel {
namespace {

UniqueSurface SurfaceOfPixels(const Picture& picture, const std::vector<std::uint32_t>& pixels) {
  UniqueSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(picture.Width),
                                                   static_cast<int>(picture.Height)));
  unsigned char* row = cairo_image_surface_get_data(surface.get());
  if (!row) return nullptr;
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (std::size_t y = 0; y < picture.Height; ++y, row += stride) {
    std::memcpy(row, &pixels[y * picture.Width], picture.Width * sizeof(std::uint32_t));
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

}  // namespace

cairo_surface_t* CairoPictures::SurfaceOf(const Picture& picture) {
  const auto known = surfaces_.find(&picture);
  if (known != surfaces_.end()) return known->second.get();
  std::vector<std::uint32_t> pixels;
  UniqueSurface surface;
  if (decoder_ && decoder_->Decode(picture, pixels)) surface = SurfaceOfPixels(picture, pixels);
  // Of a file that is cut short each reader would show something else.
  const bool isTaken = picture.Format == PictureFormat::Jpeg && !picture.IsFourInks && !picture.IsCutShort;
  if (surface && isTaken) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(picture.Bytes.data());
    cairo_surface_set_mime_data(surface.get(), CAIRO_MIME_TYPE_JPEG, bytes, picture.Bytes.size(), nullptr,
                                nullptr);
  }
  return surfaces_.emplace(&picture, std::move(surface)).first->second.get();
}

}  // namespace vaxel
