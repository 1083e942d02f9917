// The one list of the language's commands.
#pragma once

#include <span>

#include "interpreter/command_row.h"

namespace vaxel {

// The rows stand in the order of their keywords.
std::span<const CommandRow> CommandTable();

// All commands of the table. The set lives as long as the program.
const CommandSet& AllCommands();

}  // namespace vaxel
