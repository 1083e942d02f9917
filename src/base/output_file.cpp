#include "base/output_file.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <random>
#include <set>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/text.h"

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
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

bool GoesOnACharacter(fs::path::value_type unit) {
  constexpr bool isUtf8 = sizeof(unit) == 1;
  return isUtf8 ? (unit & 0xC0) == 0x80 : (unit & 0xFC00) == 0xDC00;
}

// What the names of a target's temporary files begin with: the target's own name, but for one so long that
// theirs would be longer than file systems take.
fs::path TemporaryStem(const fs::path& target) {
  constexpr std::size_t longestName = 128, longestPath = 240, added = 15;
  fs::path::string_type name = target.filename().native();
  std::size_t length = std::min(name.size(), longestName);
  if (target.native().size() > longestPath)
    length = std::min(length, std::max(name.size(), added + 1) - added);
  while (length > 1 && length < name.size() && GoesOnACharacter(name[length])) --length;
  name.resize(length);
  return name;
}

constexpr std::string_view TemporaryEnd = ".tmp";

// A name of its own beside the target, so that the move into place stays on one file system.
fs::path TemporaryBeside(const fs::path& target) {
  std::random_device random;
  fs::path name = TemporaryStem(target);
  name += "." + std::to_string(random());
  name += TemporaryEnd;
  return target.parent_path() / name;
}

// The stem of a name that TemporaryBeside has made; it is empty for any other.
fs::path StemOfTemporary(const fs::path& name) {
  const fs::path numbered = name.stem();
  const std::string number = NameOf(numbered.extension());
  const bool isOurs = NameOf(name.extension()) == TemporaryEnd && number.size() > 1 &&
                      std::all_of(number.begin() + 1, number.end(), IsDigit);
  return isOurs ? numbered.stem() : fs::path();
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

// The move of a name is on the disk when its folder is; where the system cannot tell, nothing is lost but
// that.
void FlushFolder(const fs::path& folder) {
#ifdef _WIN32
  static_cast<void>(folder);  // the file system writes its moves down itself
#else
  const int file = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
#endif
}

}  // namespace

OutputFile::OutputFile(const std::string& name, Lasting lasting) : lasting_(lasting) {
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
  file_ = direct ? OpenFile(target_, "wb") : temporary_.Make(TemporaryBeside(target_), target_);
  if (!file_) Fail(LastFileFailure());
}

OutputFile::~OutputFile() {
  Close();
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
  const bool isFlushed = lasting_ == Lasting::Kept && !temporary_.Path().empty();
  if (file_ && !failure_ && isFlushed && !FlushToDisk(file_)) Fail(LastFileFailure());
  Close();
  if (failure_) return *failure_;
  return {};
}

Result<> OutputFile::Commit() {
  if (Finish() && !temporary_.Path().empty()) {
    const std::error_code error = temporary_.MoveTo(target_);
    isMoved_ = !error;
    if (error) {
      Fail(FileFailure(error));
    } else if (lasting_ == Lasting::Kept) {
      FlushFolder(target_.parent_path());
      SweepTemporaryFiles({NameOf(target_)});
    }
  }
  if (failure_) return *failure_;
  return {};
}

void OutputFile::KeepOld() {
  if (temporary_.Path().empty()) return;
  std::error_code error;
  isFirst_ = !fs::exists(target_, error) && !error;
  if (!isFirst_) old_.Link(TemporaryBeside(target_), target_);
}

bool OutputFile::TakeBack() {
  if (!isMoved_) return true;
  std::error_code error;
  if (isFirst_) return fs::remove(target_, error);
  return !old_.Path().empty() && !old_.MoveTo(target_);
}

fs::path TargetOf(const std::string& name) {
  std::error_code error;
  const fs::path target = fs::absolute(FollowLinks(PathOf(name)), error);
  const fs::path folder = fs::weakly_canonical(target.parent_path(), error);
  return (error ? target.parent_path().lexically_normal() : folder) / target.filename();
}

void SweepTemporaryFiles(const std::vector<std::string>& names) {
  constexpr auto surelyLeft = std::chrono::hours(1);
  std::map<fs::path, std::set<fs::path>> stems;  // by their folders
  for (const std::string& name : names) {
    const fs::path target = TargetOf(name);
    stems[target.parent_path()].insert(TemporaryStem(target));
  }
  const auto now = fs::file_time_type::clock::now();
  for (const auto& [folder, stemsThere] : stems) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
      const fs::path stem = StemOfTemporary(entry->path().filename());
      std::error_code ignored;
      if (stem.empty() || !stemsThere.contains(stem) || !fs::is_regular_file(entry->symlink_status(ignored)))
        continue;
      const auto written = entry->last_write_time(ignored);
      if (!ignored && now - written > surelyLeft) fs::remove(entry->path(), ignored);
    }
  }
}

}  // namespace vaxel
