#include "render/gdi/text.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
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

bool HasGlyph(HDC context, wchar_t character) {
  WORD glyph = 0;
  const DWORD read = GetGlyphIndicesW(context, &character, 1, &glyph, GGI_MARK_NONEXISTING_GLYPHS);
  constexpr WORD none = 0xFFFF;
  return read == 1 && glyph != none;
}

// All outline fonts of this machine: where a font lacks a character, Windows takes it from another one.
class InstalledFonts {
 public:
  bool HaveGlyph(wchar_t character) {
    const auto [known, isNew] = known_.try_emplace(character, false);
    if (isNew) known->second = Find(character);
    return known->second;
  }

 private:
  static int CALLBACK Note(const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM families) {
    // A name with the sign is that of a font turned for vertical lines.
    const bool isOwn = type == TRUETYPE_FONTTYPE && font->lfFaceName[0] != L'@';
    if (isOwn) reinterpret_cast<std::set<std::wstring>*>(families)->insert(font->lfFaceName);
    return 1;
  }

  bool Find(wchar_t character) {
    LOGFONTW any{};
    any.lfCharSet = DEFAULT_CHARSET;
    if (families_.empty()) {
      EnumFontFamiliesExW(context_.get(), &any, Note, reinterpret_cast<LPARAM>(&families_), 0);
    }
    return std::any_of(families_.begin(), families_.end(), [&](const std::wstring& family) {
      any.lfFaceName[family.copy(any.lfFaceName, LF_FACESIZE - 1)] = L'\0';
      const UniqueGdi<HFONT> font(CreateFontIndirectW(&any));
      const SelectedObject selected(context_.get(), font.get());
      return HasGlyph(context_.get(), character);
    });
  }

  UniqueDc context_{CreateCompatibleDC(nullptr)};
  std::set<std::wstring> families_;
  std::map<wchar_t, bool> known_;
};

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

  std::string Lacking(const FontFace& face, std::string_view text) override {
    SelectFace(face);
    for (const wchar_t unit : Widen(text)) {
      // Half a character, of which the system cannot be asked in this way.
      const bool isHalf = unit >= 0xD800 && unit < 0xE000;
      if (isHalf || HasGlyph(Context(), unit) || installed_.HaveGlyph(unit)) continue;
      return Narrow(std::wstring(1, unit));
    }
    return {};
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
  InstalledFonts installed_;
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
