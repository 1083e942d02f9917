// Fonts of Windows, through the wide forms of its calls.
#pragma once

#include <memory>

#include "drawing/font_face.h"
#include "render/gdi/log_font.h"

namespace vaxel {

class GdiDeviceFonts : public DeviceFonts {
 public:
  int PixelsPerInch() override;
  Handle Create(const DeviceFontRequest& request) override;
  void Delete(Handle font) override;
};

std::unique_ptr<TextMeasurer> MakeGdiMeasurer();

}  // namespace vaxel
