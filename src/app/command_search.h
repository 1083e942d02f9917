// Finds commands by what someone types who does not know their names.
#pragma once

#include <string_view>
#include <vector>

#include "interpreter/command_row.h"
#include "resources/string_table.h"

namespace vaxel {

// The commands that a word may mean, the likeliest first: those whose keyword is or begins with it, those
// that are called so elsewhere ("circle", "rond"), those whose help in the language has such a word, those
// whose keyword holds it, the nearest in spelling. Case and accents are ignored. An empty word means all of
// them, in the order of the table. A keyword that is written otherwise ("SI") is not among them.
std::vector<const CommandRow*> FindCommands(std::string_view word, const StringTable& strings, int helpBase);

// The first line of a command's help that says what it does.
std::string_view PurposeOf(const CommandRow& row, const StringTable& strings, int helpBase);

}  // namespace vaxel
