// What a name of Windows leads to.
#pragma once

#include <filesystem>

namespace vaxel {

// The name of a file or folder that is there, with every link on the way resolved, in the form that begins
// with
// "\\?\"; it is empty where there is none, or the system does not tell.
std::filesystem::path FinalPath(const std::filesystem::path& path);

}  // namespace vaxel
