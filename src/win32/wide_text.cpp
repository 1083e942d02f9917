#include "win32/wide_text.h"

#include "winbase/wide_text.h"

namespace vaxel {

std::wstring Wide(std::string_view text) {
  return Widen(text);
}

std::string Utf8(std::wstring_view wide) {
  return Narrow(wide);
}

}  // namespace vaxel
