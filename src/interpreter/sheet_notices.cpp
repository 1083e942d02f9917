#include "interpreter/sheet_notices.h"

#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "drawing/sheet_overflow.h"

namespace vaxel {

std::vector<SheetNotice> SheetNotices(const DisplayList& list, const StringTable& strings, int languageBase) {
  std::vector<SheetNotice> notices;
  for (const SheetOverflow& overflow : FindSheetOverflows(list)) {
    std::string sides;
    for (const auto& [reach, side] :
         {std::pair(overflow.Left, TextId::BeyondLeft), std::pair(overflow.Right, TextId::BeyondRight),
          std::pair(overflow.Top, TextId::BeyondTop), std::pair(overflow.Bottom, TextId::BeyondBottom)}) {
      if (reach == 0) continue;
      sides += sides.empty() ? "" : ", ";
      sides += strings.Text(languageBase, side, NumberText(std::round(reach * 10) / 10));
    }
    const bool hasPages = list.Pages().size() > 1;
    notices.push_back({overflow.Line, hasPages ? strings.Text(languageBase, TextId::BeyondSheetOfPage, sides,
                                                              std::to_string(overflow.Page + 1))
                                               : strings.Text(languageBase, TextId::BeyondSheet, sides)});
  }
  return notices;
}

}  // namespace vaxel
