#include "win32/drawing_overlay.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "win32/pixels.h"
#include "winbase/gdi_handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr Colour HaloInk = MakeColour(255, 140, 0);
constexpr COLORREF MeasuringInk = RGB(200, 0, 0);
// Units of 1/96 inch.
constexpr int HaloReach = 6, EndLength = 5, TextGap = 12, TextPadding = 3;

UniqueGdi<HFONT> MessageFont(UINT dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  return UniqueGdi<HFONT>(CreateFontIndirectW(&metrics.lfMessageFont));
}

POINT PixelOf(Point place) {
  return {static_cast<LONG>(std::lround(place.X)), static_cast<LONG>(std::lround(place.Y))};
}

void PaintStroke(HDC context, Point from, Point to) {
  const POINT points[] = {PixelOf(from), PixelOf(to)};
  Polyline(context, points, 2);
}

bool IsSame(const PagePlace& a, const PagePlace& b) {
  return a.PixelsPerMm == b.PixelsPerMm && a.Corner.X == b.Corner.X && a.Corner.Y == b.Corner.Y;
}

}  // namespace

void DrawingOverlay::SetHalo(std::vector<OperationOutline> outlines) {
  outlines_ = std::move(outlines);
  halo_.reset();
}

void DrawingOverlay::Paint(const BitmapDc& bitmap, const std::optional<PagePlace>& place, UINT dpi) {
  const SIZE size = {bitmap.Bitmap().Width(), bitmap.Bitmap().Height()};
  if (place && !outlines_.empty()) {
    const bool isSame =
        halo_ && size.cx == size_.cx && size.cy == size_.cy && dpi == dpi_ && IsSame(*place, place_);
    if (!isSame) {
      const auto reach = static_cast<double>(ToPixels(HaloReach, dpi));
      const HaloFrame frame{static_cast<int>(size.cx), static_cast<int>(size.cy), place->PixelsPerMm,
                            place->Corner, reach};
      halo_.emplace(outlines_, frame);
      size_ = size;
      place_ = *place;
      dpi_ = dpi;
    }
    GdiFlush();
    halo_->BlendInto(bitmap.Bitmap().Pixels(), HaloInk);
  }
  if (measuring_) PaintMeasuring(bitmap.Handle(), size, dpi);
}

// The line, a cross stroke at either end, and the figures beside the pointer, within the area.
void DrawingOverlay::PaintMeasuring(HDC context, const SIZE& size, UINT dpi) const {
  const Point from = measuring_->From, to = measuring_->To, way = to - from;
  const double length = std::hypot(way.X, way.Y);
  const UniqueGdi<HPEN> pen(CreatePen(PS_SOLID, ToPixels(1, dpi), MeasuringInk));
  const SelectedObject selectedPen(context, pen.get());
  PaintStroke(context, from, to);
  if (length > 0) {
    const Point across = Point{-way.Y, way.X} * (ToPixels(EndLength, dpi) / length);
    for (const Point& end : {from, to}) PaintStroke(context, end - across, end + across);
  }
  const UniqueGdi<HFONT> font = MessageFont(dpi);
  const SelectedObject selectedFont(context, font.get());
  const std::wstring text = Widen(measuring_->Text);
  SIZE extent{};
  GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &extent);
  const int padding = ToPixels(TextPadding, dpi), gap = ToPixels(TextGap, dpi);
  const LONG width = extent.cx + 2 * padding, height = extent.cy + 2 * padding;
  const POINT pointer = PixelOf(to);
  const LONG left = std::clamp(pointer.x + gap, 0L, std::max(0L, size.cx - width));
  const bool isAbove = pointer.y + gap + height > size.cy;
  const LONG top = std::max(0L, isAbove ? pointer.y - gap - height : pointer.y + gap);
  const RECT box = {left, top, left + width, top + height};
  SetBkColor(context, GetSysColor(COLOR_INFOBK));
  SetTextColor(context, GetSysColor(COLOR_INFOTEXT));
  ExtTextOutW(context, left + padding, top + padding, ETO_OPAQUE, &box, text.c_str(),
              static_cast<UINT>(text.size()), nullptr);
}

}  // namespace vaxel
