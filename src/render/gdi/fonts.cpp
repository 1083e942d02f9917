#include "render/gdi/fonts.h"

#include <algorithm>
#include <cmath>

#include "base/units.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr double PointsPerInch = 72;
// Pixels, so that the rounding to pixels does not count.
constexpr int RulerHeight = 2048;
// Handles of the system are few; a dial has a direction for every figure of its scale.
constexpr std::size_t MaxFonts = 400;
// Larger ones are far beyond what a page shows, and some systems cannot make them.
constexpr double MaxHeight = 20'000;

// Whether the unit continues the character that the one before it began.
bool IsContinuation(wchar_t unit) {
  const bool lowSurrogate = unit >= 0xDC00 && unit < 0xE000;
  const bool combining = unit >= 0x0300 && unit < 0x0370;
  return lowSurrogate || combining;
}

FontDescription DescriptionOf(const FontFace& face, double size) {
  FontDescription description;
  description.Name = face.Name;
  description.Size = size;
  description.Weight = face.Bold ? FW_BOLD : FW_NORMAL;
  description.Bold = face.Bold;
  description.Italic = face.Italic;
  return description;
}

// The size in points whose height, which CLogFont truncates, is this one.
double PointsOf(int height, int pixelsPerInch) {
  return (height + 0.25) * PointsPerInch / pixelsPerInch;
}

}  // namespace

DeviceFonts::Handle GdiFonts::WidthFonts::Create(const DeviceFontRequest& request) {
  DeviceFontRequest wider = request;
  wider.Width = Width;
  return GdiDeviceFonts::Create(wider);
}

GdiFonts::Ruler::Ruler(const FontFace& face) : Font(Maker), Context(CreateCompatibleDC(nullptr)) {
  Font.LogFont(DescriptionOf(face, PointsOf(RulerHeight, Maker.PixelsPerInch())));
  SelectObject(Context.get(), Font.Handle());
  TEXTMETRICW metrics{};
  GetTextMetricsW(Context.get(), &metrics);
  AverageWidth = static_cast<double>(metrics.tmAveCharWidth) / RulerHeight;
}

const GdiFonts::Ruler& GdiFonts::RulerFor(const FontFace& face) {
  std::unique_ptr<Ruler>& ruler = rulers_[face];
  if (!ruler) ruler = std::make_unique<Ruler>(face);
  return *ruler;
}

void GdiFonts::Measure(const Ruler& ruler, std::wstring_view text) {
  ends_.clear();
  double width = 0;
  // In stretches: the extent's numbers are small on some systems.
  constexpr std::size_t stretch = 1000;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t count = std::min(stretch, text.size() - i);
    while (i + count < text.size() && IsContinuation(text[i + count])) ++count;
    steps_.assign(count, 0);
    SIZE size{};
    GetTextExtentExPointW(ruler.Context.get(), text.data() + i, static_cast<int>(count), 0, nullptr,
                          steps_.data(), &size);
    for (const INT end : steps_) ends_.push_back(width + static_cast<double>(end) / RulerHeight);
    width = ends_.back();
    i += count;
  }
}

HGDIOBJ GdiFonts::FontFor(const FontKey& key) {
  if (fonts_.size() >= MaxFonts && !fonts_.contains(key)) fonts_.clear();
  std::unique_ptr<DeviceFont>& font = fonts_[key];
  if (!font) {
    const auto& [face, height, width, tenths] = key;
    font = std::make_unique<DeviceFont>(nudgesRightAngles_);
    if (pixelsPerInch_ == 0) pixelsPerInch_ = font->Maker.PixelsPerInch();
    font->Maker.Width = width;
    font->Font.Rotation(static_cast<float>(tenths) / 10);
    font->Font.LogFont(DescriptionOf(face, PointsOf(height, pixelsPerInch_)));
    font->Holder.reset(CreateCompatibleDC(nullptr));
    SelectObject(font->Holder.get(), font->Font.Handle());
  }
  return font->Font.Handle();
}

// In ends_ are pixels along the baseline.
bool GdiFonts::DrawStretch(HDC context, const DeviceText& text, std::wstring_view content, std::size_t from,
                           std::size_t to) {
  const double begin = from == 0 ? 0 : ends_[from - 1];
  const Point start = text.Start + Point{std::cos(text.Angle), -std::sin(text.Angle)} * begin;
  steps_.clear();
  long place = 0;
  for (std::size_t i = from; i < to; ++i) {
    const long end = std::lround(ends_[i] - begin);
    steps_.push_back(static_cast<INT>(end - place));
    place = end;
  }
  return ExtTextOutW(context, static_cast<int>(std::lround(start.X)), static_cast<int>(std::lround(start.Y)),
                     0, nullptr, content.data() + from, static_cast<UINT>(to - from), steps_.data()) != 0;
}

bool GdiFonts::Draw(HDC context, const DeviceText& text, std::string_view content, const FontFace& face) {
  const std::wstring wide = Widen(content);
  const int height = static_cast<int>(std::lround(std::min(text.Size, MaxHeight)));
  if (wide.empty() || height < 1) return true;
  const Ruler& ruler = RulerFor(face);
  Measure(ruler, wide);
  const double natural = ends_.back() * text.Size;
  // A font in place of another may be wider or narrower than what was measured.
  const double fit = natural > 0 && text.Length > 0 ? text.Length / natural : 1;
  const int width =
      std::abs(fit - 1) > 1e-3 ? static_cast<int>(std::lround(ruler.AverageWidth * height * fit)) : 0;
  for (double& end : ends_) end *= text.Size * fit;

  const double degrees = text.Angle * DegreesPerRadian;
  const int tenths = static_cast<int>(std::lround(degrees * 10));
  const HGDIOBJ font = FontFor({face, height, width, tenths});
  if (!font) return false;
  const SelectedObject selected(context, font);
  SetTextAlign(context, TA_BASELINE | TA_LEFT);
  SetBkMode(context, TRANSPARENT);
  SetTextColor(context, text.Ink);
  // Fonts turn by whole tenths of a degree; a text that would so end beside its place is set in stretches.
  constexpr double tolerance = 0.3;
  const double astray = std::abs(degrees - tenths / 10.0) / DegreesPerRadian;
  double longest = tolerance / std::max(astray, 1e-9);
  if (text.SetsEach && tenths % 900 != 0) longest = 0;
  for (std::size_t from = 0; from < wide.size();) {
    const double begin = from == 0 ? 0 : ends_[from - 1];
    std::size_t to = from + 1;
    while (to < wide.size() && (IsContinuation(wide[to]) || ends_[to] - begin <= longest)) ++to;
    if (!DrawStretch(context, text, wide, from, to)) return false;
    from = to;
  }
  return true;
}

}  // namespace vaxel
