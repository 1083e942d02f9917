#include "win32/rich_format.h"

#include <cmath>

#include "winbase/gdi_handles.h"

namespace vaxel {

const wchar_t* ScriptFace() {
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(wanted.lfFaceName, L"Consolas", LF_FACESIZE);
  bool isThere = false;
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const FONTENUMPROCW found = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM result) {
    *reinterpret_cast<bool*>(result) = true;
    return 0;
  };
  EnumFontFamiliesExW(context.get(), &wanted, found, reinterpret_cast<LPARAM>(&isThere), 0);
  return isThere ? L"Consolas" : L"Courier New";
}

CHARFORMAT2W FormatOf(DWORD mask) {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = mask;
  return format;
}

CHARFORMAT2W SizeFormat(double points) {
  CHARFORMAT2W format = FormatOf(CFM_SIZE);
  format.yHeight = static_cast<LONG>(std::lround(points * 20));
  return format;
}

CHARFORMAT2W ColourFormat(Colour colour) {
  CHARFORMAT2W format = FormatOf(CFM_COLOR);
  format.crTextColor = colour;
  return format;
}

}  // namespace vaxel
