#include "app/preview_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr double Margin = 8, RulerMarkDistance = 3;
constexpr double ZoomStep = 1.25, LeastScale = 0.02, MostScale = 400;  // pixels a millimetre

}  // namespace

void PreviewView::Show(PreviewPages pages) {
  pages_ = std::move(pages);
  page_ = std::min(page_, LastPage());
  if (isWhole_) ShowWhole();
}

void PreviewView::Resize(const GraphicArea& area) {
  area_ = area;
  if (isWhole_) ShowWhole();
}

void PreviewView::TurnTo(std::size_t page) {
  page_ = std::min(page, LastPage());
  if (isWhole_) ShowWhole();
}

void PreviewView::ShowWhole() {
  isWhole_ = true;
  const double ruler = RulerThickness * UnitPx(), margin = Margin * UnitPx();
  const PaperBox& paper = Sheet().Paper;
  const Point size = paper.Opposite - paper.Corner;
  const auto scaleFor = [&](double room, double length) {
    return std::max(1.0, room - ruler - 2 * margin) / std::max(length, 1e-6);
  };
  place_.PixelsPerMm = std::clamp(std::min(scaleFor(area_.WidthPx, size.X), scaleFor(area_.HeightPx, size.Y)),
                                  LeastScale, MostScale);
  const Point middle = area_.MiddlePx() + Point{ruler, ruler} * 0.5;
  place_.Corner = middle - (paper.Corner + paper.Opposite) * 0.5 * place_.PixelsPerMm;
}

void PreviewView::Zoom(double steps, Point pixel) {
  isWhole_ = false;
  const double before = place_.PixelsPerMm;
  place_.PixelsPerMm = std::clamp(before * std::pow(ZoomStep, steps), LeastScale, MostScale);
  place_.Corner = pixel - (pixel - place_.Corner) * (place_.PixelsPerMm / before);
}

void PreviewView::Move(Point byPixels) {
  isWhole_ = false;
  place_.Corner = place_.Corner + byPixels;
}

bool PreviewView::HasMargins() const {
  const PaperBox& paper = Sheet().Paper;
  const PaperBox& printable = Sheet().Printable;
  return paper.Corner != printable.Corner || paper.Opposite != printable.Opposite;
}

Rulers PreviewView::Rulers() const {
  const double perPixel = 1 / place_.PixelsPerMm, distance = RulerMarkDistance * UnitPx();
  const double height = pages_.Drawing->Pages()[page_].Height;
  return {RulerMarks({-place_.Corner.X * perPixel, perPixel, area_.WidthPx, distance}),
          RulerMarks({height + place_.Corner.Y * perPixel, -perPixel, area_.HeightPx, distance})};
}

}  // namespace vaxel
