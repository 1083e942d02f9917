#include "render/gdi/text.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "base/text.h"
#include "base/utf8.h"
#include "drawing/standard_faces.h"
#include "winbase/gdi_handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Measures in a font of this many pixels, so that the rounding to pixels does not count.
constexpr int FontPixels = 2048;

class GdiMeasurer : public TextMeasurer {
 public:
  GdiMeasurer() : font_(fonts_) {}
  // A font in use cannot be deleted.
  ~GdiMeasurer() override { SelectObject(Context(), GetStockObject(SYSTEM_FONT)); }
  GdiMeasurer(const GdiMeasurer&) = delete;
  GdiMeasurer& operator=(const GdiMeasurer&) = delete;

  FaceMetrics Metrics(const FontFace& face) override {
    SelectFace(face);
    OUTLINETEXTMETRICW metrics{};
    metrics.otmSize = sizeof metrics;
    if (GetOutlineTextMetricsW(Context(), sizeof metrics, &metrics) == 0) return standIn_.Metrics(face);
    const double thickness = std::max(InSizes(metrics.otmsUnderscoreSize), 0.01);
    return {InSizes(metrics.otmTextMetrics.tmAscent), InSizes(metrics.otmTextMetrics.tmDescent),
            InSizes(metrics.otmsUnderscorePosition) - thickness / 2, thickness};
  }

  double Width(const FontFace& face, std::string_view text) override {
    SelectFace(face);
    // Long texts in stretches: the extent's numbers are small on some systems.
    constexpr std::size_t stretch = 1000;
    double width = 0;
    const std::wstring wide = Widen(text);
    for (std::size_t i = 0; i < wide.size();) {
      SIZE size{};
      std::size_t count = std::min(stretch, wide.size() - i);
      // Not between the two halves of one character.
      if (i + count < wide.size() && wide[i + count] >= 0xDC00 && wide[i + count] < 0xE000) ++count;
      GetTextExtentPoint32W(Context(), wide.data() + i, static_cast<int>(count), &size);
      width += InSizes(size.cx);
      i += count;
    }
    return width;
  }

  std::string Replacement(const FontFace& face) override {
    SelectFace(face);
    wchar_t name[LF_FACESIZE] = {};
    GetTextFaceW(Context(), LF_FACESIZE, name);
    const std::string used = Narrow(name);
    return EqualIgnoringCase(used, face.Name) ? std::string() : used;
  }

 private:
  HDC Context() const { return context_.get(); }
  static double InSizes(double pixels) { return pixels / FontPixels; }

  void SelectFace(const FontFace& face) {
    if (face == face_ && font_.Handle()) return;
    face_ = face;
    FontDescription description;
    description.Name = face.Name;
    description.Size = FontPixels * 72.0 / fonts_.PixelsPerInch();
    description.Weight = face.Bold ? FW_BOLD : FW_NORMAL;
    description.Italic = face.Italic;
    // A font in use cannot be deleted.
    SelectObject(Context(), GetStockObject(SYSTEM_FONT));
    font_.LogFont(description);
    SelectObject(Context(), font_.Handle());
  }

  UniqueDc context_{CreateCompatibleDC(nullptr)};
  GdiDeviceFonts fonts_;
  CLogFont font_;
  FontFace face_;
  StandInMeasurer standIn_;
};

}  // namespace

int GdiDeviceFonts::PixelsPerInch() {
  const HWND desktop = GetDesktopWindow();
  const HDC context = GetDC(desktop);
  const int pixels = GetDeviceCaps(context, LOGPIXELSY);
  ReleaseDC(desktop, context);
  return pixels > 0 ? pixels : 96;
}

DeviceFonts::Handle GdiDeviceFonts::Create(const DeviceFontRequest& request) {
  LOGFONTW font{};
  font.lfHeight = request.Height;
  font.lfWidth = request.Width;
  font.lfEscapement = request.Escapement;
  font.lfOrientation = request.Orientation;
  font.lfWeight = request.Weight;
  font.lfItalic = request.Italic;
  font.lfUnderline = request.Underline;
  font.lfStrikeOut = request.Strikethrough;
  font.lfCharSet = static_cast<BYTE>(request.CharacterSet);
  font.lfOutPrecision = static_cast<BYTE>(request.OutPrecision);
  font.lfClipPrecision = static_cast<BYTE>(request.ClipPrecision);
  font.lfQuality = static_cast<BYTE>(request.Quality);
  font.lfPitchAndFamily = static_cast<BYTE>(request.PitchAndFamily);
  const std::wstring name = Widen(request.FaceName);
  // The last place is the terminator's.
  name.copy(font.lfFaceName, LF_FACESIZE - 1);
  return CreateFontIndirectW(&font);
}

void GdiDeviceFonts::Delete(Handle font) {
  DeleteObject(font);
}

std::unique_ptr<TextMeasurer> MakeGdiMeasurer() {
  return std::make_unique<GdiMeasurer>();
}

}  // namespace vaxel
