// The assignment of a value to a variable.
#pragma once

#include <string_view>

#include "interpreter/run_context.h"

namespace vaxel {

// The number that "== expression" stores: of a text that is no expression what it begins with.
double AssignedNumber(RunContext& run, std::string_view expression);

// Stores what follows "%Name =": "= expression" as the number that it is worth, "< text" as it stands, any
// other text with its references replaced. A name that cannot be set is a fault, and so is what should be an
// expression and is none.
void Assign(RunContext& run, std::string_view name, std::string_view text);

}  // namespace vaxel
