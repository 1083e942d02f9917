#include "render/gdi/text_outlines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "winbase/gdi_handles.h"

namespace vaxel {
namespace {

// Outlines are made in units this much finer than pixels, as far as fonts are made in that size.
constexpr double Finer = 4, LargestFont = 20'000;

// Draws the text into a path, flattened to straight sides, of which the kinds tell where a polygon begins.
bool TakePath(GdiFonts& fonts, const DeviceText& text, std::string_view content, const FontFace& face,
              std::vector<POINT>& corners, std::vector<BYTE>& kinds) {
  const UniqueDc memory(CreateCompatibleDC(nullptr));
  if (!memory || !BeginPath(memory.get())) return false;
  const bool isSet = fonts.Draw(memory.get(), text, content, face);
  if (!EndPath(memory.get()) || !isSet) return false;
  FlattenPath(memory.get());
  const int count = GetPath(memory.get(), nullptr, nullptr, 0);
  if (count < 0) return false;
  corners.resize(static_cast<std::size_t>(count));
  kinds.resize(corners.size());
  return count == 0 || GetPath(memory.get(), corners.data(), kinds.data(), count) == count;
}

}  // namespace

std::optional<TextOutlines> MirroredOutlines(GdiFonts& fonts, const DeviceText& text,
                                             std::string_view content, const FontFace& face) {
  const double scale = std::clamp(LargestFont / std::max(1.0, text.Size), 1.0, Finer);
  DeviceText finer = text;
  finer.Start = {};
  finer.Size *= scale;
  finer.Length *= scale;
  std::vector<BYTE> kinds;
  TextOutlines outlines;
  if (!TakePath(fonts, finer, content, face, outlines.Corners, kinds)) return std::nullopt;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i] == PT_MOVETO || outlines.Lengths.empty()) outlines.Lengths.push_back(0);
    ++outlines.Lengths.back();
    POINT& corner = outlines.Corners[i];
    corner = {std::lround(text.Start.X - static_cast<double>(corner.x) / scale),
              std::lround(text.Start.Y + static_cast<double>(corner.y) / scale)};
  }
  return outlines;
}

}  // namespace vaxel
