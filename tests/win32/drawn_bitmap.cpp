#include "tests/win32/drawn_bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vaxel::test {
namespace {

double Darkness(std::uint32_t pixel) {
  return 1 - static_cast<double>(pixel & 0xFF) / 255;
}

template <class Use>
void ForEachPixel(const GdiBitmap& bitmap, Use use) {
  for (int y = 0; y < bitmap.Height(); ++y) {
    for (int x = 0; x < bitmap.Width(); ++x) use(x, y, PixelAt(bitmap, x, y));
  }
}

}  // namespace

DisplayList ListOf(const DrawFunction& draw) {
  DisplayList list;
  list.BeginPage(100, 100);
  draw(list);
  return list;
}

GdiBitmap Drawn(const DisplayList& list, const DrawnSettings& settings, Result<>* outcome) {
  GdiBitmap bitmap(settings.Width, settings.Height);
  std::fill_n(bitmap.Pixels(), bitmap.PixelCount(), 0xFFFFFFFF);
  const BitmapDc context(bitmap);
  GdiStock stock(settings.Decoder, settings.NudgesRightAngles);
  GdiRenderer renderer = settings.UsesPens
                             ? GdiRenderer(context.Handle(), settings.Transform, stock, list)
                             : GdiRenderer(context, settings.Transform, stock, settings.LeastWidth);
  PlayPage(list, 0, renderer);
  GdiFlush();
  if (outcome) *outcome = renderer.Outcome();
  return bitmap;
}

std::uint32_t PixelAt(const GdiBitmap& bitmap, int x, int y) {
  return bitmap.Pixels()[y * bitmap.Width() + x] & 0xFFFFFF;
}

PixelEdges InkEdges(const GdiBitmap& bitmap) {
  PixelEdges edges{1e9, 1e9, -1e9, -1e9};
  ForEachPixel(bitmap, [&](int x, int y, std::uint32_t pixel) {
    if (pixel == 0xFFFFFF) return;
    edges = {std::min(edges.Left, x + 0.0), std::min(edges.Top, y + 0.0), std::max(edges.Right, x + 1.0),
             std::max(edges.Bottom, y + 1.0)};
  });
  return edges.Left > edges.Right ? PixelEdges() : edges;
}

double InkArea(const GdiBitmap& bitmap) {
  double area = 0;
  ForEachPixel(bitmap, [&](int, int, std::uint32_t pixel) { area += Darkness(pixel); });
  return area;
}

Point InkMiddle(const GdiBitmap& bitmap) {
  Point sum;
  ForEachPixel(bitmap, [&](int x, int y, std::uint32_t pixel) {
    sum = sum + Point{x + 0.5, y + 0.5} * Darkness(pixel);
  });
  return sum * (1 / InkArea(bitmap));
}

std::string Difference(const PixelEdges& seen, const PixelEdges& expected, double tolerance) {
  const double farthest =
      std::max({std::abs(seen.Left - expected.Left), std::abs(seen.Top - expected.Top),
                std::abs(seen.Right - expected.Right), std::abs(seen.Bottom - expected.Bottom)});
  if (farthest <= tolerance) return {};
  char text[200];
  std::snprintf(text, sizeof text, "%g %g %g %g instead of %.3f %.3f %.3f %.3f", seen.Left, seen.Top,
                seen.Right, seen.Bottom, expected.Left, expected.Top, expected.Right, expected.Bottom);
  return text;
}

}  // namespace vaxel::test
