#include "render/gdi/pictures.h"

#include <cstddef>

#include "render/gdi/imaging.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

class ImagingDecoder : public PictureDecoder {
 public:
  explicit ImagingDecoder(UniqueCom<IWICImagingFactory> factory) : factory_(std::move(factory)) {}

  bool Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override {
    const auto stream = Obtained<IWICStream>([&](IWICStream** made) { return factory_->CreateStream(made); });
    // The stream only reads, though it asks for memory that it could change.
    auto* bytes = reinterpret_cast<BYTE*>(const_cast<char*>(picture.Bytes.data()));
    if (!stream || FAILED(stream->InitializeFromMemory(bytes, static_cast<DWORD>(picture.Bytes.size()))))
      return false;
    const auto decoder = Obtained<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
      return factory_->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, made);
    });
    if (!decoder) return false;
    const auto frame = Obtained<IWICBitmapFrameDecode>(
        [&](IWICBitmapFrameDecode** made) { return decoder->GetFrame(0, made); });
    const auto converter = Obtained<IWICFormatConverter>(
        [&](IWICFormatConverter** made) { return factory_->CreateFormatConverter(made); });
    return frame && converter && CopyPixels(*frame, *converter, picture, pixels);
  }

 private:
  static bool CopyPixels(IWICBitmapFrameDecode& frame, IWICFormatConverter& converter, const Picture& picture,
                         std::vector<std::uint32_t>& pixels) {
    UINT width = 0, height = 0;
    if (FAILED(converter.Initialize(&frame, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr,
                                    0, WICBitmapPaletteTypeCustom)) ||
        FAILED(converter.GetSize(&width, &height)) || width > picture.Width || height > picture.Height) {
      return false;
    }
    pixels.resize(std::size_t{width} * height);
    const auto stride = static_cast<UINT>(width * sizeof(std::uint32_t));
    return SUCCEEDED(converter.CopyPixels(nullptr, stride, static_cast<UINT>(stride * height),
                                          reinterpret_cast<BYTE*>(pixels.data()))) &&
           PlaceFrame(picture, width, height, pixels);
  }

  UniqueCom<IWICImagingFactory> factory_;
};

}  // namespace

Result<std::unique_ptr<PictureDecoder>> MakeImagingDecoder() {
  auto factory = MakeImagingFactory();
  if (!factory) return Failure{.Text = TextId::ImagingMissing};
  return std::unique_ptr<PictureDecoder>(std::make_unique<ImagingDecoder>(std::move(factory)));
}

}  // namespace vaxel
