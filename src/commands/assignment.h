// The assignment of a value to a variable.
#pragma once

#include <string_view>

#include "interpreter/run_context.h"

namespace vaxel {

// Stores what stands behind "%Name =": "= expression" as the number that it is worth, "< text" as it stands,
// any other text with its references replaced. A fault for a name that cannot be set, and for no expression.
void Assign(RunContext& run, std::string_view name, std::string_view text);

}  // namespace vaxel
