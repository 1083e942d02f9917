#include "render/cairo/pictures.h"

#include <cstdint>
#include <vector>

namespace vaxel {
namespace {

UniqueSurface SurfaceOf(const Picture& picture, std::vector<std::uint32_t>& pixels) {
  const auto width = static_cast<int>(picture.Width), height = static_cast<int>(picture.Height);
  const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
  auto* bytes = reinterpret_cast<unsigned char*>(pixels.data());
  return UniqueSurface(
      cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, width, height, stride));
}

}  // namespace

cairo_surface_t* CairoPictures::SurfaceOf(const Picture& picture) {
  const auto [known, isNew] = decoded_.try_emplace(&picture);
  auto& [pixels, surface] = known->second;
  if (!isNew) return surface.get();
  if (decoder_ && decoder_->Decode(picture, pixels)) surface = vaxel::SurfaceOf(picture, pixels);
  // Of a file that is cut short each reader would show something else.
  const bool isTaken = picture.Format == PictureFormat::Jpeg && !picture.IsFourInks && !picture.IsCutShort;
  if (surface && isTaken) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(picture.Bytes.data());
    cairo_surface_set_mime_data(surface.get(), CAIRO_MIME_TYPE_JPEG, bytes, picture.Bytes.size(), nullptr,
                                nullptr);
  }
  return surface.get();
}

}  // namespace vaxel
