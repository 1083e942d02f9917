// From a line to the handler of its command.
#pragma once

#include <memory>
#include <string_view>

#include "interpreter/command_row.h"
#include "interpreter/parameters.h"
#include "interpreter/run_context.h"

namespace vaxel {

// Runs a logical line, or the one that a variable holds, in the current level. parameters is kept for its
// memory.
void RunLogicalLine(RunContext& run, std::string_view line, Parameters& parameters);

// Runs one command line behind another one, as it was prepared if it was; an empty line and a comment are
// nothing to run.
void RunCommandLine(RunContext& run, std::string_view line, PreparedCommand* prepared = nullptr);

// What can be worked out of a line before it is run; null when it has to be run as it stands. The line must
// live as long.
std::unique_ptr<PreparedCommand> PrepareCommandLine(const RunContext& run, std::string_view line);

}  // namespace vaxel
