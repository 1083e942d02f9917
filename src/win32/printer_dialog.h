// The system's dialog for printers.
#pragma once

#include <windows.h>

#include <optional>

#include "app/dialogs.h"

namespace vaxel {

// Shows the present choice, as far as that printer is still there. There is nothing when it was cancelled.
std::optional<PrinterEntry> AskPrinter(HWND owner, const PrinterChoice& present);

}  // namespace vaxel
