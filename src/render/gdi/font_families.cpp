#include "render/gdi/font_families.h"

#include <set>

#include "winbase/wide_text.h"

namespace vaxel {

std::vector<std::string> FontFamilies(HDC context) {
  std::set<std::string> names;
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  const FONTENUMPROCW take = [](const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM result) {
    if (font->lfFaceName[0] != L'@')
      reinterpret_cast<std::set<std::string>*>(result)->insert(Narrow(font->lfFaceName));
    return 1;
  };
  EnumFontFamiliesExW(context, &wanted, take, reinterpret_cast<LPARAM>(&names), 0);
  return {names.begin(), names.end()};
}

}  // namespace vaxel
