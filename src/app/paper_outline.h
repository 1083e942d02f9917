// The sheet of paper that the window shows behind the drawing.
#pragma once

#include "app/platform.h"
#include "base/point.h"
#include "drawing/display_list.h"

namespace vaxel {

struct PaperBox {
  Point Corner, Opposite;  // the upper-left and the lower-right one
};

// In millimetres of the screen's page, from its upper-left corner.
struct PaperOutline {
  PaperBox Paper;
  PaperBox Printable;  // what the printer can print on
};

// Where the sheet lies around a page of the screen: printed is the same page as a printer run draws it, of
// which the origin and the size count, and scale the millimetres of the screen that show one of paper.
PaperOutline OutlineOf(const Page& shown, double scale, const Page& printed, const PrinterSheet& sheet);

}  // namespace vaxel
