// Finds the language in which vaxel-render speaks.
#pragma once

#include <string>
#include <vector>

#include "resources/string_table.h"

namespace vaxel {

// The base, in the string table, of the language in which vaxel-render speaks: what the arguments say with
// --language, else what the user has set: on Windows for its own texts, elsewhere with the first of LC_ALL,
// LC_MESSAGES and LANG that is not empty. A language that the program does not speak is English.
int LanguageBase(const StringTable& strings, const std::vector<std::string>& arguments);

}  // namespace vaxel
