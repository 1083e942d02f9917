// A text as figures, for what no device sets as text.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>
#include <vector>

#include "drawing/font_face.h"
#include "render/gdi/fonts.h"

namespace vaxel {

// Polygons in pixels of the device, to be filled together by the non-zero rule.
struct TextOutlines {
  std::vector<POINT> Corners;
  std::vector<INT> Lengths;  // the number of corners of each
};

// The outlines of a text as it would be set, left and right changed about where it starts. There are none
// when no font can be had for it; those of blanks are empty.
std::optional<TextOutlines> MirroredOutlines(GdiFonts& fonts, const DeviceText& text,
                                             std::string_view content, const FontFace& face);

}  // namespace vaxel
