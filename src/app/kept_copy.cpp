#include "app/kept_copy.h"

#include <filesystem>
#include <system_error>

#include "app/script_file.h"
#include "base/files.h"

namespace vaxel {
namespace {

// "name.dat", or where that is taken "name (2).dat", "name (3).dat", …
std::string FreeName(const std::string& name) {
  std::error_code ignored;
  std::string free = name + ".dat";
  for (int number = 2; std::filesystem::exists(PathOf(free), ignored); ++number) {
    free = name + " (" + std::to_string(number) + ").dat";
  }
  return free;
}

}  // namespace

Result<std::string> KeepAsScript(const AppContext& app, const RecoveryCopy& copy) {
  const std::string script =
      copy.ScriptName.empty() ? app.Message(TextId::NewScript) : DocumentNameOf(copy.ScriptName);
  const std::string name = app.Message(TextId::RecoveredName, script, app.Platform.TimeForNames());
  Failure why;
  for (const std::string& folder : {std::string(FolderOf(copy.ScriptName)), app.DataFolder}) {
    if (folder.empty()) continue;
    const std::string fileName = FreeName(folder + name);
    const Result<ScriptBytes> saved = SaveScript(fileName, copy.Text, copy.Encoding);
    if (saved) return fileName;
    why = saved.Why();
  }
  return why;
}

}  // namespace vaxel
