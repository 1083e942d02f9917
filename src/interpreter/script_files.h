// Which files a script may read, and their reading.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

namespace vaxel {

// Without any of these a script reads with its user's rights, but by no name of a server: opening one tells
// that server who the user is.
struct FileRights {
  bool NoFiles = false;
  std::optional<std::string> Root;  // the only folder that may be read, links resolved
  bool Network = false;             // names of servers may be opened, too
};

// What a script may not read is found without a look at it, and then not read: so the script learns nothing
// of it, not even whether it is there.
class ScriptFiles {
 public:
  // The main script's name is empty for a text that lies nowhere. A main script on a server may name files
  // there.
  ScriptFiles(std::string_view mainScript, FileRights rights);

  // As base/files.h has them: what a script means by a name, and its bytes.
  std::string Find(std::string_view scriptName, std::string_view name) const;
  Result<std::string> Read(std::string_view fileName, std::size_t maxBytes) const;

 private:
  bool MayOpenServer(std::string_view name) const;
  bool IsInRoot(const std::filesystem::path& path) const;

  FileRights rights_;
  std::filesystem::path root_;
  std::string server_;  // on which the main script lies; empty: on none
};

}  // namespace vaxel
