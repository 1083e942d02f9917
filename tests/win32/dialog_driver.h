// Presses the controls of dialogs that this process shows, from a thread beside the one that shows them.
#pragma once

#include <functional>
#include <string>

#include "tests/win32/shown_dialog.h"

namespace vaxel {

ShownDialog AwaitDialog(const std::string& caption = {});

// Runs `show`, which shows a dialog, and beside it `drive`. What is open when `drive` has returned is a
// failure, and closed.
void Drive(const std::function<void()>& show, const std::function<void(const ShownDialog&)>& drive);

}  // namespace vaxel
