#include "win32/ruler_painter.h"

#include <cmath>

#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr int FontHeight = 10;  // of 1/96 inch
constexpr COLORREF PointerInk = RGB(200, 0, 0);

UniqueGdi<HFONT> MakeFont(int height, int turn) {
  return UniqueGdi<HFONT>(CreateFontW(-height, 0, turn, turn, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                      OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH,
                                      L"Segoe UI"));
}

int LengthOf(RulerMarkLength length, int thickness) {
  switch (length) {
    case RulerMarkLength::Short:
      return thickness / 5;
    case RulerMarkLength::Middle:
      return thickness / 3;
    case RulerMarkLength::Long:
      break;
  }
  return thickness - 1;
}

int PixelOf(const RulerMark& mark) {
  return static_cast<int>(std::lround(mark.Pixel));
}

void FillBox(HDC context, const RECT& box, int systemColour) {
  FillRect(context, &box, GetSysColorBrush(systemColour));
}

void FillInk(HDC context, const RECT& box, COLORREF ink) {
  SetBkColor(context, ink);
  ExtTextOutW(context, 0, 0, ETO_OPAQUE, &box, L"", 0, nullptr);
}

// Paints a strip aside and shows it at once, so that it does not flicker under the pointer.
template <class Painter>
void Aside(HDC context, int width, int height, Painter paint) {
  const UniqueGdi<HBITMAP> bitmap(CreateCompatibleBitmap(context, width, height));
  const UniqueDc memory(CreateCompatibleDC(context));
  if (!bitmap || !memory) return;
  const SelectedObject selected(memory.get(), bitmap.get());
  FillBox(memory.get(), {0, 0, width, height}, COLOR_BTNFACE);
  SetBkMode(memory.get(), TRANSPARENT);
  SetTextColor(memory.get(), GetSysColor(COLOR_BTNTEXT));
  paint(memory.get());
  BitBlt(context, 0, 0, width, height, memory.get(), 0, 0, SRCCOPY);
}

}  // namespace

int RulerPainter::Thickness(UINT dpi) const {
  return rulers_ ? ToPixels(RulerThickness, dpi) : 0;
}

void RulerPainter::Prepare(UINT dpi) {
  if (dpi == dpi_) return;
  dpi_ = dpi;
  level_ = MakeFont(ToPixels(FontHeight, dpi), 0);
  upright_ = MakeFont(ToPixels(FontHeight, dpi), 900);
}

void RulerPainter::PaintAcross(HDC context, int thickness, const std::optional<POINT>& pointer) const {
  const SelectedObject font(context, level_.get());
  for (const RulerMark& mark : rulers_->Across) {
    const int x = PixelOf(mark);
    FillBox(context, {x, thickness - LengthOf(mark.Length, thickness), x + 1, thickness}, COLOR_BTNTEXT);
    const std::wstring text = Widen(mark.Text);
    if (!text.empty()) TextOutW(context, x + 2, 0, text.c_str(), static_cast<int>(text.size()));
  }
  if (pointer) FillInk(context, {pointer->x, 0, pointer->x + 1, thickness}, PointerInk);
}

void RulerPainter::PaintDown(HDC context, int thickness, const std::optional<POINT>& pointer) const {
  const SelectedObject font(context, upright_.get());
  for (const RulerMark& mark : rulers_->Down) {
    const int y = PixelOf(mark);
    FillBox(context, {thickness - LengthOf(mark.Length, thickness), y, thickness, y + 1}, COLOR_BTNTEXT);
    const std::wstring text = Widen(mark.Text);
    // Upward from the mark.
    if (!text.empty()) TextOutW(context, 0, y - 2, text.c_str(), static_cast<int>(text.size()));
  }
  if (pointer) FillInk(context, {0, pointer->y, thickness, pointer->y + 1}, PointerInk);
}

void RulerPainter::Paint(HDC context, const SIZE& size, UINT dpi, const std::optional<POINT>& pointer) {
  if (!rulers_) return;
  Prepare(dpi);
  const int thickness = Thickness(dpi);
  Aside(context, thickness, size.cy, [&](HDC strip) { PaintDown(strip, thickness, pointer); });
  Aside(context, size.cx, thickness, [&](HDC strip) {
    PaintAcross(strip, thickness, pointer);
    // Where the rulers meet neither of them counts.
    FillBox(strip, {0, 0, thickness, thickness}, COLOR_BTNFACE);
  });
}

}  // namespace vaxel
