// Notices that another program has changed or removed the file of the script in the editor.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "app/edited_script.h"

namespace vaxel {

class DiskWatch {
 public:
  enum class News : std::uint8_t { None, Changed, Vanished };

  // What has become of the script's file since it was loaded or saved. Each change is told once. A file that
  // cannot be read just now is looked at again the next time.
  News Look(const EditedScript& script);

 private:
  using Stamp = std::pair<std::uintmax_t, std::filesystem::file_time_type>;  // size and time

  void Follow(const EditedScript& script);

  std::string fileName_;
  std::uint64_t loadedHash_ = 0;
  std::uint64_t seenHash_ = 0;  // of what the file was when it was last read
  std::optional<Stamp> stamp_;  // of then; a file with the same is not read again
  bool isGone_ = false;
};

}  // namespace vaxel
