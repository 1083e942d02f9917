// Boxes of one colour.
#pragma once

#include <windows.h>

#include "winbase/gdi_handles.h"

namespace vaxel {

inline void FillBox(HDC context, const RECT& box, COLORREF colour) {
  const UniqueGdi<HBRUSH> brush(CreateSolidBrush(colour));
  FillRect(context, &box, brush.get());
}

}  // namespace vaxel
