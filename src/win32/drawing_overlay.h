// What the graphic area shows above the drawing, and no file and no paper ever has.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "app/graphic_view.h"
#include "app/main_window.h"
#include "drawing/operation_search.h"
#include "render/gdi/bitmap.h"
#include "render/halo.h"

namespace vaxel {

class DrawingOverlay {
 public:
  // Places are millimetres of the page.
  void SetHalo(std::vector<OperationOutline> outlines);
  void SetMeasuring(const std::optional<MeasuringLine>& line) { measuring_ = line; }
  bool IsEmpty() const { return outlines_.empty() && !measuring_; }

  // Paints above the drawing, which the bitmap, of the area's size, holds already. Without a place, as while
  // the drawing grows, there is no halo.
  void Paint(const BitmapDc& bitmap, const std::optional<PagePlace>& place, UINT dpi);

 private:
  void PaintMeasuring(HDC context, const SIZE& size, UINT dpi) const;

  std::vector<OperationOutline> outlines_;
  std::optional<MeasuringLine> measuring_;
  std::optional<Halo> halo_;  // for the size and place below
  SIZE size_{0, 0};
  PagePlace place_;
  UINT dpi_ = 0;
};

}  // namespace vaxel
