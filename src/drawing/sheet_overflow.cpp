#include "drawing/sheet_overflow.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "drawing/operation_box.h"

namespace vaxel {
namespace {

constexpr double LeastOverflow = 0.3;

// Most operations of large drawings are strokes within the sheet, which can be told at a glance.
bool IsStrokeWithin(const Operation& operation, const Page& page) {
  const auto* const line = std::get_if<LineShape>(&operation.Figure);
  if (!line) return false;
  const double margin = LeastOverflow - operation.Width / 2;
  const auto isWithin = [&](const Point& point) {
    return point.X >= -margin && point.X <= page.Width + margin && point.Y >= -margin &&
           point.Y <= page.Height + margin;
  };
  return isWithin(line->From) && isWithin(line->To);
}

SheetOverflow OverflowOf(const DisplayList& list, const Page& page) {
  SheetOverflow all;
  double farthest = LeastOverflow;
  BoxMaker maker(list, TextInk::Certain);
  const auto take = [](double& side, double reach) {
    if (reach > LeastOverflow) side = std::max(side, reach);
  };
  for (std::size_t i = page.First; i < page.First + page.Count; ++i) {
    const Operation& operation = list.At(i);
    if (IsStrokeWithin(operation, page)) continue;
    const Box box = maker.Of(operation);
    const double left = -box.Left, right = box.Right - page.Width;
    const double top = -box.Top, bottom = box.Bottom - page.Height;
    const double reach = std::max({left, right, top, bottom});
    if (!(reach > LeastOverflow)) continue;
    take(all.Left, left);
    take(all.Right, right);
    take(all.Top, top);
    take(all.Bottom, bottom);
    if (reach <= farthest) continue;
    farthest = reach;
    all.Line = operation.SourceLine;
  }
  if (page.IsMirrored) std::swap(all.Left, all.Right);
  return all;
}

}  // namespace

std::vector<SheetOverflow> FindSheetOverflows(const DisplayList& list) {
  std::vector<SheetOverflow> overflows;
  for (std::size_t page = 0; page < list.Pages().size(); ++page) {
    SheetOverflow overflow = OverflowOf(list, list.Pages()[page]);
    overflow.Page = page;
    if (overflow.Left + overflow.Right + overflow.Top + overflow.Bottom > 0) overflows.push_back(overflow);
  }
  return overflows;
}

}  // namespace vaxel
