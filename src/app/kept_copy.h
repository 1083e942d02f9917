// Makes scripts of recovery copies that the user does not want in the editor.
#pragma once

#include <string>

#include "app/app_context.h"
#include "app/recovery.h"
#include "base/result.h"

namespace vaxel {

// Saves the copy's text as a script of its own, beside the one that it belongs to or, where that is not
// possible, in the folder of data, and never over another file. The result is its name.
Result<std::string> KeepAsScript(const AppContext& app, const RecoveryCopy& copy);

}  // namespace vaxel
