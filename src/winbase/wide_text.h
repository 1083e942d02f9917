// Texts between UTF-8 and the wide characters of Windows.
#pragma once

#include <string>
#include <string_view>

namespace vaxel {

std::wstring Widen(std::string_view text);
std::string Narrow(std::wstring_view wide);

}  // namespace vaxel
