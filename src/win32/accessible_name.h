// Names of windows for screen readers.
#pragma once

#include <windows.h>

#include <string_view>

namespace vaxel {

// What a screen reader says of a window that shows no name of its own. Where the system has no such service
// nothing happens.
void SetAccessibleName(HWND window, std::string_view name);

}  // namespace vaxel
