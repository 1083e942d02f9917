// What is written by habit from other languages, and what is said here instead.
#pragma once

#include <string_view>

#include "interpreter/script_fault.h"

namespace vaxel {

struct RunContext;

// The fault of a line whose keyword is none. Where it can be told what was meant, it says how that is
// written.
ScriptFault UnknownCommandFault(const RunContext& run, std::string_view keyword, std::string_view line);

// What is written here for a function or a constant that is unknown; it is empty where that cannot be told.
std::string_view FunctionInstead(std::string_view name);
// Whether a text that is no expression stops being one at a comma between figures.
bool HasDecimalComma(std::string_view text);
// Whether this is a function's name.
bool IsFunctionName(std::string_view name);

}  // namespace vaxel
