#include "win32/tool_icons.h"

#include <cstddef>
#include <span>

#include "base/point.h"
#include "render/picture_scaling.h"
#include "render/pixel_canvas.h"

namespace vaxel {
namespace {

// The pictures are drawn on a grid of this many units a side, y downward.
constexpr double Grid = 16;
// Drawn that many times as large and reduced, so that slanting edges are smooth.
constexpr int Multiple = 4;

// Corners that are filled with ink, or with the ground where something else lies behind them.
struct Patch {
  std::vector<Point> Corners;
  bool IsGround = false;
};

Patch Box(double left, double top, double right, double bottom, bool isGround = false) {
  return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}, isGround};
}

constexpr bool Ground = true;

std::vector<Patch> Triangle() {
  return {{{{4, 2}, {13.5, 8}, {4, 14}}}};
}

std::vector<Patch> Square() {
  return {Box(3.5, 3.5, 12.5, 12.5)};
}

// The corners of a frame around a sheet.
std::vector<Patch> FrameCorners() {
  return {Box(1, 1, 15, 15), Box(2.5, 2.5, 13.5, 13.5, Ground), Box(5.5, 0, 10.5, 16, Ground),
          Box(0, 5.5, 16, 10.5, Ground), Box(5, 5, 11, 11)};
}

// Paper comes out of a box.
std::vector<Patch> Printer() {
  return {Box(4, 1, 12, 6),    Box(5.2, 2.2, 10.8, 6, Ground),
          Box(1, 5.5, 15, 12), Box(3, 8.5, 13, 15, Ground),
          Box(4, 9.5, 12, 15), Box(5.2, 10.7, 10.8, 13.8, Ground)};
}

// An arrow leaves a tray.
std::vector<Patch> ArrowFromTray() {
  return {{{{2, 9}, {3.5, 9}, {3.5, 12.8}, {12.5, 12.8}, {12.5, 9}, {14, 9}, {14, 14.3}, {2, 14.3}}},
          Box(7.2, 4, 8.8, 10.5),
          {{{8, 1}, {11.8, 5.6}, {4.2, 5.6}}}};
}

std::vector<Patch> PatchesOf(ToolIcon icon) {
  switch (icon) {
    case ToolIcon::Run:
      return Triangle();
    case ToolIcon::Stop:
      return Square();
    case ToolIcon::Fit:
      return FrameCorners();
    case ToolIcon::Print:
      return Printer();
    case ToolIcon::Export:
      return ArrowFromTray();
  }
  return {};
}

}  // namespace

std::vector<std::uint32_t> ToolPicture(ToolIcon icon, int side, Colour ink, Colour ground) {
  const int drawnSide = side * Multiple;
  const auto count = static_cast<std::size_t>(drawnSide) * static_cast<std::size_t>(drawnSide);
  std::vector<std::uint32_t> drawn(count, OpaquePixel(ground));
  PixelCanvas canvas(drawn.data(), drawnSide, drawnSide);
  const double scale = drawnSide / Grid;
  Contours contours;
  for (const Patch& patch : PatchesOf(icon)) {
    contours.Clear();
    for (const Point& corner : patch.Corners) contours.Add(corner);
    contours.Close();
    canvas.Fill(contours, {scale, scale, 0, 0}, patch.IsGround ? ground : ink);
  }
  return ScalePicture({drawn.data(), drawnSide, drawnSide}, side, side, {0, 0, side, side});
}

}  // namespace vaxel
