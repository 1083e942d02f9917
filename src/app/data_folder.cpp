#include "app/data_folder.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/files.h"

namespace vaxel {
namespace {

// Who may make files in a folder need not be allowed to change those of others in it.
bool CanChange(const std::string& fileName) {
  std::error_code ignored;
  if (!std::filesystem::exists(PathOf(fileName), ignored)) return true;
  std::FILE* const file = OpenFile(PathOf(fileName), "r+b");
  if (file) std::fclose(file);
  return file != nullptr;
}

bool IsUsable(const std::string& folder, Platform& platform) {
  return platform.CanWriteIn(folder) && CanChange(folder + "Vaxel.cfg");
}

}  // namespace

std::string ChooseDataFolder(const std::string& programFolder, Platform& platform) {
  if (IsUsable(programFolder, platform)) return programFolder;
  const std::string own = platform.UserDataFolder();
  std::error_code ignored;
  if (!own.empty()) std::filesystem::create_directories(PathOf(own), ignored);
  return !own.empty() && IsUsable(own, platform) ? own : programFolder;
}

std::string FindDataFile(const AppContext& app, std::string_view name) {
  const std::string own = FindFile(app.DataFolder, name);
  return own.empty() ? FindFile(app.ProgramFolder, name) : own;
}

}  // namespace vaxel
