// The references to variables that are replaced in the parameters of a command.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "interpreter/command_row.h"

namespace vaxel {

// A parameter's text in two parts.
struct ParameterParts {
  std::string_view Replaced;  // in which references are replaced
  std::string_view Kept;      // what follows stays as it stands
};

// The parts of parameter n, as it is written.
ParameterParts PartsOf(std::string_view parameter, std::size_t n, const CommandRow& row,
                       std::string_view secondSeparator);

// The text with the references replaced. One value may bring several parameters, which then count in the
// numbers of those after it.
std::string ReplaceVariables(const RunContext& run, std::string_view text, const CommandRow& row);

}  // namespace vaxel
