// Pictures on the clipboard.
#pragma once

#include <string_view>

namespace vaxel {

// Puts one picture on the clipboard, from the bytes of an EMF file and, unless they are empty, of a PNG file.
// The result is false when the clipboard cannot be used; it is as it was then, or empty.
bool CopyToClipboard(std::string_view emf, std::string_view png);

}  // namespace vaxel
