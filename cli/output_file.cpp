#include "cli/output_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <system_error>

namespace vaxel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t MaxFileSize = std::size_t{512} << 20;

std::string ErrnoText() {
  return std::strerror(errno);
}

std::FILE* Open(const fs::path& path, const char* mode) {
#ifdef _WIN32
  const std::wstring wideMode(mode, mode + std::strlen(mode));
  return _wfopen(path.c_str(), wideMode.c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

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

}  // namespace

fs::path PathOf(const std::string& name) {
#ifdef _WIN32
  return {std::u8string(name.begin(), name.end())};
#else
  // Here a file's name is bytes, not always UTF-8.
  return {name};
#endif
}

std::optional<std::string> ReadWholeFile(const std::string& name, std::string& error) {
  const bool standard = name == "-";
  std::error_code ignored;
  if (!standard && fs::is_directory(PathOf(name), ignored)) {
    error = "it is a folder";
    return std::nullopt;
  }
  std::FILE* const file = standard ? stdin : Open(PathOf(name), "rb");
  if (!file) {
    error = ErrnoText();
    return std::nullopt;
  }
  std::string bytes;
  std::array<char, 1U << 16> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file)) {
    bytes.append(buffer.data(), count);
    if (bytes.size() > MaxFileSize) break;
  }
  if (std::ferror(file)) error = ErrnoText();
  if (bytes.size() > MaxFileSize) error = "it is larger than 512 MB";
  if (!standard) std::fclose(file);
  if (!error.empty()) return std::nullopt;
  return bytes;
}

OutputFile::OutputFile(const std::string& name) {
  if (name == "-") {
    file_ = stdout;
    return;
  }
  std::error_code error;
  target_ = FollowLinks(PathOf(name));
  const fs::file_status status = fs::status(target_, error);
  if (fs::is_directory(status)) {
    error_ = "it is a folder";
    return;
  }
  const bool direct = fs::exists(status) && !fs::is_regular_file(status);
  if (!direct) temporary_ = TemporaryBeside(target_);
  file_ = Open(direct ? target_ : temporary_, "wb");
  if (!file_) Fail();
  // Whoever may read the old drawing may read the new one, and nobody else.
  if (file_ && fs::is_regular_file(status)) fs::permissions(temporary_, status.permissions(), error);
}

OutputFile::~OutputFile() {
  Close();
  std::error_code ignored;
  if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void OutputFile::Fail() {
  if (error_.empty()) error_ = ErrnoText();
}

void OutputFile::Write(std::string_view bytes) {
  if (!file_ || !error_.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) Fail();
}

void OutputFile::Close() {
  if (!file_) return;
  const int failed = file_ == stdout ? std::fflush(stdout) : std::fclose(file_);
  file_ = nullptr;
  if (failed) Fail();
}

std::string OutputFile::Commit() {
  Close();
  if (!error_.empty() || temporary_.empty()) return error_;
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) {
    error_ = error.message();
  } else {
    temporary_.clear();
  }
  return error_;
}

}  // namespace vaxel
