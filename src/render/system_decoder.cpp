#include "render/system_decoder.h"

#ifdef _WIN32
#include "render/gdi/pictures.h"
#else
#include "render/cairo_module.h"
#endif

namespace vaxel {
namespace {

std::unique_ptr<PictureDecoder> MakeDecoder(std::string& error) {
#ifdef _WIN32
  return MakeImagingDecoder(error);
#else
  return LoadPixbuf(error);
#endif
}

}  // namespace

bool SystemDecoder::Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) {
  if (!decoder_ && failure_.empty()) decoder_ = MakeDecoder(failure_);
  return decoder_ && decoder_->Decode(picture, pixels);
}

}  // namespace vaxel
