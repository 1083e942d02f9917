// How commands find and read the files that a script names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "interpreter/run_context.h"
#include "interpreter/script_fault.h"

namespace vaxel {

// Of a file's name, or of any other text, so much is shown in a message.
inline constexpr std::size_t ShownLength = 200;

enum class FileUse : std::uint8_t { Data, Script };

// The file that a script names; a script's name may lack its ".dat". The result is empty when there is no
// such file; where that is required it is a fault, which tells the folder.
std::string FindFile(RunContext& run, std::string_view name, FileUse use);
std::string RequireFile(RunContext& run, std::string_view name, FileUse use);

// The fault of a file that is not there. It tells the folder that a relative name leads to, if that is known.
ScriptFault MissingFileFault(const RunContext& run, std::string_view name);

// The text of a file; name is how the script calls it. A file that was not found is a fault too.
std::string ReadTextFile(RunContext& run, const std::string& fileName, std::string_view name);

}  // namespace vaxel
