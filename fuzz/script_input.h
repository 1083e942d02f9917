// Scripts out of bytes, and what comes of them.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/script_run.h"

namespace vaxel::fuzz {

// A script with the files that it may read. In the bytes a line "==== NAME" begins each of these. One that is
// called "printer" has the script drawn for a printer.
struct ScriptInput {
  std::string Text;
  test::RunSettings Settings;
  bool IsText = true;  // the bytes of the script are no text where not, which no program would run
};

ScriptInput ReadScript(std::string_view bytes);

// All that a run leaves behind, as text.
std::string Everything(const test::ScriptRun& run);

}  // namespace vaxel::fuzz
