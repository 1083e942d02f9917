#include "drawing/page_bounds.h"

namespace vaxel {

std::optional<Box> BoundsOf(const DisplayList& list, std::size_t page) {
  const Page& drawn = list.Pages()[page];
  BoxMaker maker(list, TextInk::Possible);
  Box bounds;
  for (std::size_t i = drawn.First; i < drawn.First + drawn.Count; ++i) bounds.Unite(maker.Of(list.At(i)));
  return bounds.IsEmpty() ? std::nullopt : std::optional(bounds);
}

}  // namespace vaxel
