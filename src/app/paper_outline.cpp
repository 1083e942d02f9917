#include "app/paper_outline.h"

namespace vaxel {

PaperOutline OutlineOf(const Page& shown, double scale, const Page& printed, const PrinterSheet& sheet) {
  // From the corner of the printable area, where a printed page begins.
  const auto onScreen = [&](Point paper) { return shown.Origin + (paper - printed.Origin) * scale; };
  const Point corner = {-sheet.LeftMm, -sheet.TopMm};
  return {{onScreen(corner), onScreen(corner + Point{sheet.WidthMm, sheet.HeightMm})},
          {onScreen({}), onScreen({printed.Width, printed.Height})}};
}

}  // namespace vaxel
