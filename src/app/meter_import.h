// Makes scripts of the dial descriptions of another program, "Meter".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/result.h"
#include "resources/string_table.h"

namespace vaxel {

struct MeterScript {
  std::string Text;              // UTF-8, lines end in LF
  std::size_t LinesLeftOut = 0;  // that were not understood; they are comments of the script
};

// A dial has some dozens of lines; a file that is larger than this is none.
inline constexpr std::size_t MaxMeterBytes = std::size_t{1} << 20;

// Makes a script of a file's bytes, in any of the encodings of scripts. What the file says becomes variables,
// in its order, and what it does not say common values; the drawing follows from these. Comments are in the
// language with this base. It fails with NotAMeterFile, and the file's name, where the bytes are no text or
// describe no dial.
Result<MeterScript> ImportMeter(std::string bytes, std::string_view fileName, const StringTable& strings,
                                int languageBase);

}  // namespace vaxel
