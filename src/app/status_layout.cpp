#include "app/status_layout.h"

#include <algorithm>

namespace vaxel {

std::array<FieldSpan, StatusFields> StatusSpans(int width, bool hasPages, bool hasReading) {
  constexpr int gap = 6, widest = 130, narrowest = 90, zoom = 56, pages = 96, reading = 230, message = 190;
  const int others =
      zoom + (hasPages ? pages + gap : 0) + (hasReading ? reading + gap : 0) + message + 4 * gap;
  const int place = std::clamp((width - others) / 2 - gap, narrowest, widest);
  const std::array<int, StatusFields> wanted = {
      place, place, zoom, hasPages ? pages : 0, hasReading ? reading : 0, width};
  std::array<FieldSpan, StatusFields> spans;
  int left = gap;
  for (std::size_t i = 0; i < StatusFields; ++i) {
    int room = std::max(0, width - gap - left);
    // In a narrow window both say the beginning of what they have to say.
    if (static_cast<StatusField>(i) == StatusField::Reading) room = room * 3 / 5;
    spans[i] = {left, std::min(wanted[i], room)};
    if (spans[i].Width > 0) left += spans[i].Width + gap;
  }
  return spans;
}

}  // namespace vaxel
