// Where the program keeps what it writes for itself: settings, recovery copies, the template of new scripts.
#pragma once

#include <string>
#include <string_view>

#include "app/app_context.h"

namespace vaxel {

// The program's folder, or where files cannot be written there the user's own, which is made if need be. It
// is the program's again where that one cannot be written either. Names of folders end in a separator.
std::string ChooseDataFolder(const std::string& programFolder, Platform& platform);

// The file of this name that counts: the one in the folder of data, else the one that came with the program.
// The name is empty when there is neither.
std::string FindDataFile(const AppContext& app, std::string_view name);

}  // namespace vaxel
