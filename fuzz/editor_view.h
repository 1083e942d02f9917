// A script as the editor sees it, line by line, while nobody runs it.
#pragma once

#include <string_view>

namespace vaxel::fuzz {

// Reads the names of a text, whose lines end in LF, and the words of every line.
void ReadAsEditor(std::string_view text);

// Asks for help, offers and spelling in the last lines. None of these may fail.
void WriteAsEditor(std::string_view text);

}  // namespace vaxel::fuzz
