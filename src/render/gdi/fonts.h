// Fonts of Windows that set a text as long as it was measured.
#pragma once

#include <windows.h>

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "drawing/display_list.h"
#include "render/gdi/text.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

// A text as a device sets it: pixels, y downward.
struct DeviceText {
  Point Start;        // of the baseline
  double Angle = 0;   // of the baseline, radians, counter-clockwise
  double Size = 0;    // of the font
  double Length = 0;  // of the baseline
  Colour Ink = Black;
  // Whether each character of a turned text is set by itself: what the device adds up of them may be a pixel
  // beside. What is kept, as in a metafile, should rather stay one text.
  bool SetsEach = false;
};

// Sets texts on any context, each character at the place that the font's unhinted widths, stretched to the
// text's length, give it. The fonts made for that are kept for the next drawing.
class GdiFonts {
 public:
  // nudgesRightAngles: see CLogFont.
  explicit GdiFonts(bool nudgesRightAngles) : nudgesRightAngles_(nudgesRightAngles) {}

  // False when the device has no font for it.
  bool Draw(HDC context, const DeviceText& text, std::string_view content, const FontFace& face);

 private:
  // One that sets a font's characters as wide as they should be.
  class WidthFonts : public GdiDeviceFonts {
   public:
    Handle Create(const DeviceFontRequest& request) override;
    int Width = 0;
  };
  // It stays selected into a context of its own: some systems open the file of a font anew for every text
  // when more than a few fonts are in use by turns.
  struct DeviceFont {
    explicit DeviceFont(bool nudgesRightAngles) : Font(Maker, nudgesRightAngles) {}
    WidthFonts Maker;
    CLogFont Font;
    UniqueDc Holder;
  };
  // A face in a large size, in which it is measured.
  struct Ruler {
    explicit Ruler(const FontFace& face);
    GdiDeviceFonts Maker;
    CLogFont Font;
    UniqueDc Context;
    double AverageWidth = 0;  // in parts of the size
  };
  using FontKey = std::tuple<FontFace, int, int, int>;  // height, width, tenths of a degree

  HGDIOBJ FontFor(const FontKey& key);
  const Ruler& RulerFor(const FontFace& face);
  // Into ends_: where each unit of the text ends, in parts of the size.
  void Measure(const Ruler& ruler, std::wstring_view text);
  bool DrawStretch(HDC context, const DeviceText& text, std::wstring_view content, std::size_t from,
                   std::size_t to);

  bool nudgesRightAngles_;
  int pixelsPerInch_ = 0;
  std::map<FontKey, std::unique_ptr<DeviceFont>> fonts_;
  std::map<FontFace, std::unique_ptr<Ruler>> rulers_;
  std::vector<double> ends_;
  std::vector<INT> steps_;
};

}  // namespace vaxel
