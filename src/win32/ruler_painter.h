// The rulers of the graphic area, painted on Windows.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "app/rulers.h"
#include "winbase/gdi_handles.h"

namespace vaxel {

class RulerPainter {
 public:
  void Set(const std::optional<Rulers>& rulers) { rulers_ = rulers; }
  // In pixels; 0 while there are no rulers.
  int Thickness(UINT dpi) const;
  // Over an area of this size, with a line at the pointer where it is known.
  void Paint(HDC context, const SIZE& size, UINT dpi, const std::optional<POINT>& pointer);

 private:
  void Prepare(UINT dpi);
  void PaintAcross(HDC context, int thickness, const std::optional<POINT>& pointer) const;
  void PaintDown(HDC context, int thickness, const std::optional<POINT>& pointer) const;

  std::optional<Rulers> rulers_;
  UINT dpi_ = 0;  // of the fonts
  UniqueGdi<HFONT> level_, upright_;
};

}  // namespace vaxel
