// The work of vaxel-render: it makes the outputs of a script.
#pragma once

#include "cli/options.h"

namespace vaxel {

// Reads the script, runs it once for each kind of target that is asked for and writes all outputs. What goes
// wrong is printed on standard error; an output is then missing or as it was before.
ExitStatus RenderScript(const RenderOptions& options, const UserTexts& texts);

}  // namespace vaxel
