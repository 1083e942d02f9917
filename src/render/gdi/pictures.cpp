#include "render/gdi/pictures.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "render/gdi/imaging.h"
#include "resources/text_id.h"

namespace vaxel {
namespace {

class ImagingDecoder : public PictureDecoder {
 public:
  explicit ImagingDecoder(UniqueCom<IWICImagingFactory> factory) : factory_(std::move(factory)) {}

  Result<> Decode(const Picture& picture, std::vector<std::uint32_t>& pixels) override {
    const auto stream = Obtained<IWICStream>([&](IWICStream** made) { return factory_->CreateStream(made); });
    if (!stream) return Failure{.Text = TextId::PictureNoMemory};
    std::string ended;
    if (picture.IsCutShort) ended = picture.Bytes + EndOf(picture.Format);
    const std::string& file = picture.IsCutShort ? ended : picture.Bytes;
    // The stream only reads, though it asks for memory that it could change.
    auto* bytes = reinterpret_cast<BYTE*>(const_cast<char*>(file.data()));
    HRESULT result = stream->InitializeFromMemory(bytes, static_cast<DWORD>(file.size()));
    if (FAILED(result)) return FailureOf(result);
    const auto decoder = Obtained<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
      return result = factory_->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                                        made);
    });
    if (!decoder) return FailureOf(result);
    const auto frame = Obtained<IWICBitmapFrameDecode>(
        [&](IWICBitmapFrameDecode** made) { return result = decoder->GetFrame(0, made); });
    if (!frame) return FailureOf(result);
    const auto converter = Obtained<IWICFormatConverter>(
        [&](IWICFormatConverter** made) { return result = factory_->CreateFormatConverter(made); });
    return converter ? CopyPixels(*frame, *converter, picture, pixels) : Result<>(FailureOf(result));
  }

 private:
  // With it decoders that want an end go as far as there is one.
  static const char* EndOf(PictureFormat format) { return format == PictureFormat::Jpeg ? "\xFF\xD9" : ""; }

  static Failure FailureOf(HRESULT result) {
    switch (result) {
      case E_OUTOFMEMORY:
        return {.Text = TextId::PictureNoMemory};
      case WINCODEC_ERR_COMPONENTNOTFOUND:
      case WINCODEC_ERR_COMPONENTINITIALIZEFAILURE:
        return {.Text = TextId::ImagingMissing};
      default:
        return {.Text = TextId::PictureDamaged};
    }
  }

  static Result<> CopyPixels(IWICBitmapFrameDecode& frame, IWICFormatConverter& converter,
                             const Picture& picture, std::vector<std::uint32_t>& pixels) try {
    UINT width = 0, height = 0;
    HRESULT result = converter.Initialize(&frame, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                          nullptr, 0, WICBitmapPaletteTypeCustom);
    if (SUCCEEDED(result)) result = converter.GetSize(&width, &height);
    if (FAILED(result)) return FailureOf(result);
    if (width > picture.Width || height > picture.Height) return Failure{.Text = TextId::PictureDamaged};
    pixels.resize(std::size_t{width} * height);
    const UINT read = CopyRows(converter, picture, width, height, pixels, result);
    if (FAILED(result) && !(picture.IsCutShort && read > 0)) return FailureOf(result);
    if (!PlaceFrame(picture, width, height, pixels)) return Failure{.Text = TextId::PictureDamaged};
    return {};
  } catch (const std::bad_alloc&) {
    return Failure{.Text = TextId::PictureNoMemory};
  }

  // A picture that is cut short is read in pieces, so that those before its end are had.
  static UINT CopyRows(IWICFormatConverter& converter, const Picture& picture, UINT width, UINT height,
                       std::vector<std::uint32_t>& pixels, HRESULT& result) {
    constexpr UINT inPieces = 8;
    const UINT most = picture.IsCutShort ? inPieces : height;
    const auto stride = static_cast<UINT>(width * sizeof(std::uint32_t));
    for (UINT read = 0; read < height; read += most) {
      const UINT rows = std::min(most, height - read);
      const WICRect piece = {0, static_cast<INT>(read), static_cast<INT>(width), static_cast<INT>(rows)};
      result = converter.CopyPixels(&piece, stride, stride * rows,
                                    reinterpret_cast<BYTE*>(&pixels[std::size_t{width} * read]));
      if (FAILED(result)) return read;
    }
    return height;
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
