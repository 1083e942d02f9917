#include "render/system_decoder.h"

#ifdef _WIN32
#include "render/gdi/pictures.h"
#else
#include "render/cairo_module.h"
#endif

namespace vaxel {
namespace {

Result<std::unique_ptr<PictureDecoder>> MakeDecoder() {
#ifdef _WIN32
  return MakeImagingDecoder();
#else
  return LoadPixbuf();
#endif
}

}  // namespace

Result<> SystemDecoder::Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) {
  if (!decoder_ && outcome_) {
    auto made = MakeDecoder();
    if (made) {
      decoder_ = *std::move(made);
    } else {
      outcome_ = made.Why();
    }
  }
  return decoder_ ? decoder_->Decode(picture, pixels) : outcome_;
}

}  // namespace vaxel
