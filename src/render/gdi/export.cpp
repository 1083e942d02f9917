#include "render/gdi/export.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "render/gdi/imaging.h"
#include "render/gdi/renderer.h"
#include "render/gdi/view.h"
#include "resources/text_id.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr double UnitsPerMm = 100;
constexpr double MaxSide = 32767;
constexpr double MaxArea = 400e6;

struct MetafileDeleter {
  using pointer = HENHMETAFILE;
  void operator()(HENHMETAFILE file) const { DeleteEnhMetaFile(file); }
};
using UniqueMetafile = std::unique_ptr<std::remove_pointer_t<HENHMETAFILE>, MetafileDeleter>;

// A metafile in the making.
class MetafileDc {
 public:
  MetafileDc(const RECT& frame, const std::wstring& description)
      : context_(CreateEnhMetaFileW(nullptr, nullptr, &frame, description.c_str())) {}
  ~MetafileDc() {
    if (context_) Close();
  }
  MetafileDc(const MetafileDc&) = delete;
  MetafileDc& operator=(const MetafileDc&) = delete;

  HDC Handle() const { return context_; }
  UniqueMetafile Close() { return UniqueMetafile(CloseEnhMetaFile(std::exchange(context_, nullptr))); }

 private:
  HDC context_;
};

// A unit of the context becomes a hundredth of a millimetre. Who shows the file takes the size of a pixel
// from these numbers of the screen too, so that nothing is lost by their being whole millimetres.
void CountInHundredths(HDC context) {
  const auto units = [context](int what) {
    return GetDeviceCaps(context, what) * static_cast<int>(UnitsPerMm);
  };
  SetMapMode(context, MM_ANISOTROPIC);
  SetWindowExtEx(context, units(HORZSIZE), units(VERTSIZE), nullptr);
  SetViewportExtEx(context, GetDeviceCaps(context, HORZRES), GetDeviceCaps(context, VERTRES), nullptr);
}

// A picture file in memory.
class PngFile {
 public:
  PngFile(int width, int height, double dpi) : width_(width) {
    IStream* stream = nullptr;
    factory_ = MakeImagingFactory();
    if (!factory_ || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) return;
    stream_.reset(stream);
    encoder_ = Obtained<IWICBitmapEncoder>([&](IWICBitmapEncoder** made) {
      return factory_->CreateEncoder(GUID_ContainerFormatPng, nullptr, made);
    });
    if (!encoder_ || FAILED(encoder_->Initialize(stream, WICBitmapEncoderNoCache))) return;
    frame_ = Obtained<IWICBitmapFrameEncode>(
        [&](IWICBitmapFrameEncode** made) { return encoder_->CreateNewFrame(made, nullptr); });
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    isOpen_ = frame_ && SUCCEEDED(frame_->Initialize(nullptr)) &&
              SUCCEEDED(frame_->SetSize(static_cast<UINT>(width), static_cast<UINT>(height))) &&
              SUCCEEDED(frame_->SetResolution(dpi, dpi)) && SUCCEEDED(frame_->SetPixelFormat(&format)) &&
              IsEqualGUID(format, GUID_WICPixelFormat24bppBGR);
  }

  bool Write(const std::uint32_t* pixels, int rows) {
    bytes_.clear();
    const auto count = static_cast<std::size_t>(width_) * static_cast<std::size_t>(rows);
    for (std::size_t i = 0; i < count; ++i) {
      for (const int shift : {0, 8, 16}) bytes_.push_back(static_cast<BYTE>(pixels[i] >> shift));
    }
    return isOpen_ && SUCCEEDED(frame_->WritePixels(static_cast<UINT>(rows), static_cast<UINT>(width_) * 3,
                                                    static_cast<UINT>(bytes_.size()), bytes_.data()));
  }

  // Ends the file and passes it on.
  bool Finish(ByteSink& sink) {
    HGLOBAL memory = nullptr;
    STATSTG state{};
    if (!isOpen_ || FAILED(frame_->Commit()) || FAILED(encoder_->Commit()) ||
        FAILED(stream_->Stat(&state, STATFLAG_NONAME)) ||
        FAILED(GetHGlobalFromStream(stream_.get(), &memory))) {
      return false;
    }
    const auto* bytes = static_cast<const char*>(GlobalLock(memory));
    if (!bytes) return false;
    sink.Write(std::string_view(bytes, static_cast<std::size_t>(state.cbSize.QuadPart)));
    GlobalUnlock(memory);
    return true;
  }

 private:
  int width_;
  // Each needs those before it.
  UniqueCom<IWICImagingFactory> factory_;
  UniqueCom<IStream> stream_;
  UniqueCom<IWICBitmapEncoder> encoder_;
  UniqueCom<IWICBitmapFrameEncode> frame_;
  bool isOpen_ = false;
  std::vector<BYTE> bytes_;
};

}  // namespace

Result<> WriteEmf(const DisplayList& list, std::size_t page, const GdiExport& how, ByteSink& sink) {
  const Page& drawn = list.Pages()[page];
  const RECT frame = {0, 0, static_cast<LONG>(std::lround(drawn.Width * UnitsPerMm)),
                      static_cast<LONG>(std::lround(drawn.Height * UnitsPerMm))};
  // The program and the title, each ended by a zero; one more ends both.
  std::wstring description = L"Vaxel";
  (description += L'\0') += Widen(how.Title);
  description += L'\0';
  MetafileDc context(frame, description);
  if (!context.Handle()) return Failure{.Text = TextId::MetafileMemory};
  CountInHundredths(context.Handle());
  GdiStock stock(how.Decoder, how.NudgesRightAngles);
  GdiRenderer renderer(context.Handle(), {UnitsPerMm, UnitsPerMm, 0, 0}, stock, list);
  PlayPage(list, page, renderer);
  if (!renderer.Outcome()) return renderer.Outcome();
  const UniqueMetafile file = context.Close();
  const UINT size = file ? GetEnhMetaFileBits(file.get(), 0, nullptr) : 0;
  std::string bytes(size, '\0');
  if (size == 0 || GetEnhMetaFileBits(file.get(), size, reinterpret_cast<BYTE*>(bytes.data())) != size)
    return Failure{.Text = TextId::MetafileNotMade};
  sink.Write(bytes);
  return {};
}

Result<> WriteGdiPng(const DisplayList& list, std::size_t page, double dpi, const GdiExport& how,
                     ByteSink& sink) {
  const Page& drawn = list.Pages()[page];
  const double scale = dpi / MillimetresPerInch;
  const double width = std::ceil(drawn.Width * scale - 1e-6), height = std::ceil(drawn.Height * scale - 1e-6);
  const bool fits =
      std::min(width, height) >= 1 && std::max(width, height) <= MaxSide && width * height <= MaxArea;
  if (!fits) return Failure{.Text = TextId::PngSize};
  const ViewFrame frame = {.Width = static_cast<int>(width),
                           .Height = static_cast<int>(height),
                           .Place = {scale, scale, 0, 0},
                           .IsForFile = true};
  PngFile file(frame.Width, frame.Height, dpi);
  GdiView view(list, how.Decoder, how.NudgesRightAngles);
  const bool written = view.DrawRows(
      page, frame, [&](const std::uint32_t* pixels, int rows) { return file.Write(pixels, rows); });
  if (!view.Outcome()) return view.Outcome();
  if (!written || !file.Finish(sink)) return Failure{.Text = TextId::DrawingNotEncoded};
  return {};
}

}  // namespace vaxel
