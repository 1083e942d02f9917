// Texts between the application, which keeps UTF-8, and Windows, which takes UTF-16. What is no character,
// a lone surrogate or a damaged sequence, becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace vaxel {

std::wstring Wide(std::string_view text);
std::string Utf8(std::wstring_view wide);

}  // namespace vaxel
