#include "base/output_file.h"

#include <random>
#include <system_error>
#include <utility>

#include "base/files.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace vaxel {
namespace {

namespace fs = std::filesystem;

// Through links the file that they name is written, not the link, even when it is not there yet.
fs::path FollowLinks(fs::path path) {
  constexpr int mostLinks = 40;
  std::error_code error;
  for (int links = 0; links < mostLinks && fs::is_symlink(path, error); ++links) {
    const fs::path target = fs::read_symlink(path, error);
    path = target.is_absolute() ? target : path.parent_path() / target;
  }
  return path;
}

// A name of its own beside the target, so that the move into place stays on one file system.
fs::path TemporaryBeside(const fs::path& target) {
  std::random_device random;
  fs::path name = target.filename();
  name += ".";
  name += std::to_string(random());
  name += ".tmp";
  return target.parent_path() / name;
}

// A file whose name is moved before its contents are on the disk is empty after a crash of the system.
bool FlushToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) return false;
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0;
#endif
}

}  // namespace

OutputFile::OutputFile(const std::string& name) {
  if (name == "-") {
    file_ = stdout;
    return;
  }
  std::error_code error;
  target_ = FollowLinks(PathOf(name));
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) {
    Fail({.Fault = FileFault::IsFolder});
    return;
  }
  // Moving another file over it would not notice.
  if (fs::is_regular_file(status) && (status.permissions() & fs::perms::owner_write) == fs::perms::none) {
    Fail({.Fault = FileFault::IsReadOnly});
    return;
  }
  const bool direct = fs::exists(status) && !fs::is_regular_file(status);
  if (!direct) temporary_ = TemporaryBeside(target_);
  file_ = OpenFile(direct ? target_ : temporary_, "wb");
  if (!file_) Fail(LastFileFailure());
  // Whoever may read the old drawing may read the new one, and nobody else.
  if (file_ && fs::is_regular_file(status)) fs::permissions(temporary_, status.permissions(), error);
}

OutputFile::~OutputFile() {
  Close();
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void OutputFile::Fail(Failure why) {
  if (!failure_) failure_ = std::move(why);
}

void OutputFile::Write(std::string_view bytes) {
  if (!file_ || failure_) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) Fail(LastFileFailure());
}

void OutputFile::Close() {
  if (!file_) return;
  const int failed = file_ == stdout ? std::fflush(stdout) : std::fclose(file_);
  file_ = nullptr;
  if (failed) Fail(LastFileFailure());
}

Result<> OutputFile::Finish() {
  if (file_ && !failure_ && !temporary_.empty() && !FlushToDisk(file_)) Fail(LastFileFailure());
  Close();
  if (failure_) return *failure_;
  return {};
}

Result<> OutputFile::Commit() {
  if (Finish() && !temporary_.empty()) {
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) {
      Fail(FileFailure(error));
    } else {
      temporary_.clear();
    }
  }
  if (failure_) return *failure_;
  return {};
}

}  // namespace vaxel
