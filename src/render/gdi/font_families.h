// The fonts of a device.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace vaxel {

// The names of the families, sorted, each once, without those that are turned for vertical writing.
std::vector<std::string> FontFamilies(HDC context);

}  // namespace vaxel
