// Which operation of a drawing lies at a point, and where the operations of a line lie.
//
// All places and lengths are device millimetres of the page, as in the display list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/display_list.h"

namespace vaxel {

struct FoundOperation {
  std::size_t Index = 0;         // in the display list
  std::uint32_t SourceLine = 0;  // of the main script: of an included one the line that includes it
};

// The operation that someone means who points there. What is drawn later lies above; a filled figure hides
// what lies under it, but not a stroke above it that passes nearer than the tolerance. Texts and pictures are
// hit by their boxes.
std::optional<FoundOperation> OperationAt(const DisplayList& list, std::size_t page, Point point,
                                          double tolerance);

// The outline of an operation: the middle line of a stroke, the edge of a figure, the box of a text.
struct OperationOutline {
  std::vector<Point> Points;
  bool IsClosed = false;
  double Width = 0;  // of the stroke
};

// The outlines of what a line has drawn on a page, at most so many of them, the first ones.
std::vector<OperationOutline> OutlinesOfLine(const DisplayList& list, std::size_t page, std::uint32_t line,
                                             std::size_t most);

}  // namespace vaxel
