// The fields of a line of data, as spreadsheets and people write them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vaxel {

// Splits a line into at most so many fields, without the blanks around them; the last one takes all that
// remains. The separator is the one that is given or, where that is empty, ";" or a TAB if the line has one
// outside quotes, else ",", else blanks, of which several count as one. Between ";" or TABs a number may have
// a "," as its decimal mark, which becomes a ".". A field in double quotes may hold separators, and a doubled
// quote stands for one.
std::vector<std::string> SplitFields(std::string_view line, std::size_t most, std::string_view separator);

}  // namespace vaxel
