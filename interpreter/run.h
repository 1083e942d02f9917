#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/draw_surface.h"
#include "interpreter/run_context.h"

namespace vaxel {

enum class RunEnd : std::uint8_t {
  Completed,
  Failed,  // an error was shown
  Empty    // the text was empty: nothing was drawn or cleared
};

// Runs a main script from its beginning. The text is UTF-8 with any line ends; the file's name is shown in
// reports. Variables of level 1, the language base and whatever else the context holds for its caller are
// set before; everything that belongs to one run is reset here.
RunEnd RunScript(RunContext& run, const RunTarget& target, std::string text, std::string_view fileName);

}  // namespace vaxel
