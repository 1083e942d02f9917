#include "interpreter/script_files.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/text.h"
#include "resources/text_id.h"

#ifdef _WIN32
#include "winbase/final_path.h"
#endif

namespace vaxel {
namespace {

namespace fs = std::filesystem;

bool IsSlash(char c) {
  return c == '/' || c == '\\';
}

// "\\server\…", "//server/…", and the names that lead to all devices of Windows, servers among them.
bool NamesServer(std::string_view name) {
  if (name.size() < 2 || !IsSlash(name[0])) return false;
  return IsSlash(name[1]) || name.substr(1).starts_with("??");
}

// The server in such a name; it is empty where that is a device instead.
std::string_view ServerIn(std::string_view name) {
  if (!NamesServer(name) || !IsSlash(name[1])) return {};
  name.remove_prefix(2);
  const auto* const end = std::find_if(name.begin(), name.end(), IsSlash);
  const std::string_view server = name.substr(0, static_cast<std::size_t>(end - name.begin()));
  return server == "?" || server == "." ? std::string_view() : server;
}

bool AreSameNames(const fs::path& one, const fs::path& other) {
#ifdef _WIN32
  return EqualIgnoringCase(NameOf(one), NameOf(other));
#else
  return one == other;
#endif
}

#ifdef _WIN32
// The library of this compiler resolves no links here.
fs::path RealPath(const fs::path& path) {
  std::error_code failed;
  fs::path there = fs::absolute(path, failed).lexically_normal();
  fs::path missing;
  for (;;) {
    const fs::path real = FinalPath(there);
    if (!real.empty()) return missing.empty() ? real : real / missing;
    if (!there.has_relative_path()) return {};
    missing = missing.empty() ? there.filename() : there.filename() / missing;
    there = there.parent_path();
  }
}
#else
fs::path RealPath(const fs::path& path) {
  std::error_code failed;
  fs::path real = fs::weakly_canonical(fs::absolute(path, failed), failed);
  return failed ? fs::path() : real;
}
#endif

}  // namespace

ScriptFiles::ScriptFiles(std::string_view mainScript, FileRights rights) : rights_(std::move(rights)) {
  std::error_code failed;
  if (rights_.Root) root_ = RealPath(PathOf(*rights_.Root));
  // A name that ends in a separator has an empty last part.
  if (!root_.has_filename()) root_ = root_.parent_path();
  server_ = ServerIn(mainScript);
  if (server_.empty() && !mainScript.empty())
    server_ = ServerIn(NameOf(fs::absolute(PathOf(mainScript), failed)));
}

bool ScriptFiles::MayOpenServer(std::string_view name) const {
  return rights_.Network || (!server_.empty() && EqualIgnoringCase(ServerIn(name), server_));
}

bool ScriptFiles::IsInRoot(const fs::path& path) const {
  const fs::path real = RealPath(path);
  if (real.empty() || root_.empty()) return false;
  const auto [rootEnd, pathAt] =
      std::mismatch(root_.begin(), root_.end(), real.begin(), real.end(), AreSameNames);
  return rootEnd == root_.end();
}

std::string ScriptFiles::Find(std::string_view scriptName, std::string_view name) const {
  std::string portable(name);
  std::replace(portable.begin(), portable.end(), '\\', '/');
  const bool isBarred = rights_.NoFiles || (NamesServer(name) && !MayOpenServer(name));
  if (isBarred) return std::string(name);
  const fs::path named = PathOf(scriptName).parent_path() / PathOf(portable);
  if (rights_.Root && !IsInRoot(named)) return NameOf(named);
  return FindFile(scriptName, name);
}

Result<std::string> ScriptFiles::Read(std::string_view fileName, std::size_t maxBytes) const {
  if (rights_.NoFiles) return Failure{.Text = TextId::FilesForbidden};
  if (NamesServer(fileName) && !MayOpenServer(fileName)) return Failure{.Text = TextId::NetworkForbidden};
  if (rights_.Root && !IsInRoot(PathOf(fileName))) return Failure{.Text = TextId::FileOutsideRoot};
  return ReadWholeFile(fileName, maxBytes);
}

}  // namespace vaxel
