// How the fields of the status line share its width.
#pragma once

#include <array>

#include "app/main_window.h"

namespace vaxel {

struct FieldSpan {
  int Left = 0, Width = 0;  // a field without width is not shown
};

// In units of 1/96 inch. The field for messages gets what the others leave; those for pages and for what is
// measured have a place while they say something.
std::array<FieldSpan, StatusFields> StatusSpans(int width, bool hasPages, bool hasReading);

}  // namespace vaxel
