#include "app/disk_watch.h"

#include <system_error>

#include "app/script_file.h"
#include "base/files.h"
#include "base/result.h"

namespace vaxel {

void DiskWatch::Follow(const EditedScript& script) {
  if (script.CurrentFile == fileName_ && script.LoadedHash == loadedHash_) return;
  fileName_ = script.CurrentFile;
  loadedHash_ = seenHash_ = script.LoadedHash;
  // Whoever writes between the loading and a look at the stamp would stay unnoticed: the file is read once.
  stamp_.reset();
  isGone_ = false;
}

DiskWatch::News DiskWatch::Look(const EditedScript& script) {
  namespace fs = std::filesystem;
  Follow(script);
  if (fileName_.empty()) return News::None;
  const fs::path path = PathOf(fileName_);
  std::error_code failed;
  if (fs::status(path, failed).type() == fs::file_type::not_found)
    return std::exchange(isGone_, true) ? News::None : News::Vanished;
  const std::uintmax_t size = fs::file_size(path, failed);
  if (failed) return News::None;
  const fs::file_time_type time = fs::last_write_time(path, failed);
  const Stamp stamp{size, time};
  isGone_ = false;
  if (failed || stamp_ == stamp) return News::None;
  const Result<std::string> bytes = ReadWholeFile(fileName_, MaxScriptBytes);
  if (!bytes && bytes.Why().Fault != FileFault::IsTooLarge) return News::None;
  stamp_ = stamp;
  const std::uint64_t hash = bytes ? HashOf(*bytes) : ~loadedHash_;
  const bool isNew = hash != std::exchange(seenHash_, hash) && hash != loadedHash_;
  return isNew ? News::Changed : News::None;
}

}  // namespace vaxel
