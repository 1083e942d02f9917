// Texts between UTF-8, which the program keeps, and the UTF-16 of Windows. What is no character, a lone
// surrogate or a damaged sequence, becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace vaxel {

std::wstring Widen(std::string_view text);
std::string Narrow(std::wstring_view wide);

}  // namespace vaxel
