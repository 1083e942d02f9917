// Picture files: what the head says, what the decoder of this machine makes of the data, and the picture
// reduced and enlarged.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "drawing/picture.h"
#include "fuzz/target.h"
#include "render/picture_scaling.h"

// The entry of the decoder's module, which is a part of this program.
extern "C" vaxel::PictureDecoder* VaxelPixbuf();

namespace vaxel::fuzz {
namespace {

// Larger ones are not decoded here: that takes the time of many small ones and looks into nothing else.
constexpr std::uint64_t MostPixels = 20'000;

void CheckHead(const Picture& picture) {
  Require(picture.Width >= 1 && picture.Height >= 1, "a picture has pixels");
  Require(std::max(picture.Width, picture.Height) <= Picture::MaxSide, "a picture's sides are bounded");
  Require(std::uint64_t{picture.Width} * picture.Height <= Picture::MaxPixels, "its pixels are bounded");
  Require(std::isfinite(picture.DpiX) && picture.DpiX > 0 && std::isfinite(picture.DpiY) && picture.DpiY > 0,
          "a picture has a density");
}

// Outputs read again what was kept of the file.
void CheckKept(const Picture& picture) {
  Picture again;
  Require(ReadPicture(picture.Bytes, again) == PictureFault::None, "what is kept of a picture is one");
  Require(again.Format == picture.Format && again.Width == picture.Width && again.Height == picture.Height &&
              again.Bytes == picture.Bytes,
          "what is kept of a picture is the same one");
}

void CheckScaled(const PixelView& view) {
  for (const PixelBox& size : {PixelBox{0, 0, 7, 5}, PixelBox{0, 0, 2 * view.Width, 3}}) {
    const PixelBox part = {size.Width() / 3, 1, size.Width(), size.Height()};
    const auto pixels = ScalePicture(view, size.Width(), size.Height(), part);
    Require(pixels.size() == static_cast<std::size_t>(part.Width()) * static_cast<std::size_t>(part.Height()),
            "a part of a picture is as large as it should be");
  }
}

void CheckPixels(const Picture& picture, const std::vector<std::uint32_t>& pixels) {
  Require(pixels.size() == std::size_t{picture.Width} * picture.Height, "a picture has all its pixels");
  for (const std::uint32_t pixel : pixels) {
    const std::uint32_t most = std::max({pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255});
    Require(most <= pixel >> 24, "a colour is multiplied by its alpha");
  }
  CheckScaled({pixels.data(), static_cast<int>(picture.Width), static_cast<int>(picture.Height)});
}

}  // namespace

void TryInput(std::string_view bytes) {
  Picture picture;
  if (ReadPicture(std::string(bytes), picture) != PictureFault::None) return;
  CheckHead(picture);
  CheckKept(picture);
  if (std::uint64_t{picture.Width} * picture.Height > MostPixels) return;
  static const std::unique_ptr<PictureDecoder> decoder(VaxelPixbuf());
  std::vector<std::uint32_t> pixels;
  if (decoder->Decode(picture, pixels)) CheckPixels(picture, pixels);
}

}  // namespace vaxel::fuzz
