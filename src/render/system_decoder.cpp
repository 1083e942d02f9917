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

bool SystemDecoder::HasDecoder() {
  if (!decoder_ && outcome_) {
    auto made = MakeDecoder();
    if (made) {
      decoder_ = *std::move(made);
    } else {
      outcome_ = made.Why();
    }
  }
  return decoder_ != nullptr;
}

Result<> SystemDecoder::Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) {
  return HasDecoder() ? decoder_->Decode(picture, pixels) : outcome_;
}

Result<> SystemDecoder::Check(const Picture& picture) {
  return HasDecoder() ? decoder_->Check(picture) : outcome_;
}

}  // namespace vaxel
