#include "base/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <random>
#include <utility>

#include "base/text.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace vaxel {
namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
// What the C library takes for the same as others.
FileFault WindowsFault(unsigned long code) {
  constexpr std::array<std::pair<unsigned long, FileFault>, 5> faults = {{
      {32, FileFault::IsInUse},            // ERROR_SHARING_VIOLATION
      {33, FileFault::IsInUse},            // ERROR_LOCK_VIOLATION
      {19, FileFault::DiskIsReadOnly},     // ERROR_WRITE_PROTECT
      {112, FileFault::DiskIsFull},        // ERROR_DISK_FULL
      {123, FileFault::NameIsImpossible},  // ERROR_INVALID_NAME
  }};
  const auto* const found =
      std::find_if(faults.begin(), faults.end(), [code](const auto& row) { return row.first == code; });
  return found == faults.end() ? FileFault::None : found->second;
}
#endif

// The entry of a folder, of just this name or of one that differs in case; it is empty when there is none.
fs::path EntryOf(const fs::path& folder, const fs::path& name) {
  std::error_code ignored;
  if (fs::exists(folder / name, ignored)) return folder / name;
  const std::string wanted = NameOf(name);
  fs::path found;
  const fs::path looked = folder.empty() ? fs::path(".") : folder;
  for (fs::directory_iterator entry(looked, ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    const fs::path file = entry->path().filename();
    // Of several names the first in order counts, whatever the order of the folder.
    if (EqualIgnoringCase(NameOf(file), wanted) && (found.empty() || file < found)) found = file;
  }
  return found.empty() ? found : folder / found;
}

}  // namespace

fs::path PathOf(std::string_view name) {
#ifdef _WIN32
  return {std::u8string(name.begin(), name.end())};
#else
  // Here a file's name is bytes, not always UTF-8.
  return {std::string(name)};
#endif
}

std::string NameOf(const fs::path& path) {
#ifdef _WIN32
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
#else
  return path.native();
#endif
}

bool FileExists(std::string_view name) {
  std::error_code ignored;
  return fs::is_regular_file(PathOf(name), ignored);
}

bool CanWriteIn(std::string_view folder) {
  std::random_device random;
  const fs::path probe = PathOf(folder) / ("Vaxe$" + std::to_string(random()) + ".tmp");
  std::FILE* const file = OpenFile(probe, "wb");
  if (!file) return false;
  std::fclose(file);
  std::error_code ignored;
  return fs::remove(probe, ignored);
}

std::FILE* OpenFile(const fs::path& path, const char* mode) {
#ifdef _WIN32
  const std::wstring wideMode(mode, mode + std::strlen(mode));
  return _wfopen(path.c_str(), wideMode.c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

Failure FileFailure(const std::error_code& why) {
  constexpr std::array<std::pair<std::errc, FileFault>, 11> faults = {{
      {std::errc::no_such_file_or_directory, FileFault::IsMissing},
      {std::errc::not_a_directory, FileFault::IsMissing},
      {std::errc::is_a_directory, FileFault::IsFolder},
      {std::errc::permission_denied, FileFault::IsForbidden},
      {std::errc::operation_not_permitted, FileFault::IsForbidden},
      {std::errc::device_or_resource_busy, FileFault::IsInUse},
      {std::errc::text_file_busy, FileFault::IsInUse},
      {std::errc::no_space_on_device, FileFault::DiskIsFull},
      {std::errc::read_only_file_system, FileFault::DiskIsReadOnly},
      {std::errc::filename_too_long, FileFault::NameIsTooLong},
      {std::errc::io_error, FileFault::DeviceFails},
  }};
#ifdef _WIN32
  if (why.category() == std::system_category()) {
    if (const FileFault fault = WindowsFault(static_cast<unsigned long>(why.value()));
        fault != FileFault::None)
      return {.Fault = fault};
  }
#endif
  for (const auto& [code, fault] : faults) {
    if (why == code) return {.Fault = fault};
  }
  return {.Words = why.message()};
}

Failure LastFileFailure() {
  const int error = errno;
#ifdef _WIN32
  if (const FileFault fault = WindowsFault(_doserrno); fault != FileFault::None) return {.Fault = fault};
#endif
  return FileFailure({error, std::generic_category()});
}

bool AreSameFile(const fs::path& one, const fs::path& other) {
  std::error_code failed;
  return fs::is_regular_file(one, failed) && fs::equivalent(one, other, failed) && !failed;
}

#ifdef _WIN32
bool IsOpenAs(std::FILE*, const fs::path&) {
  return false;
}
#else
bool IsOpenAs(std::FILE* stream, const fs::path& path) {
  struct stat open {
  }, named{};
  return fstat(fileno(stream), &open) == 0 && stat(path.c_str(), &named) == 0 && S_ISREG(named.st_mode) &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}
#endif

Result<std::string> ReadToEnd(std::FILE* file, std::size_t maxBytes) {
  std::string bytes;
  std::array<char, 1U << 16> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file)) {
    if (count > maxBytes - bytes.size()) return Failure{.Fault = FileFault::IsTooLarge};
    bytes.append(buffer.data(), count);
  }
  if (std::ferror(file)) return LastFileFailure();
  return bytes;
}

Result<std::string> ReadWholeFile(std::string_view name, std::size_t maxBytes) {
  std::error_code ignored;
  const fs::path path = PathOf(name);
  if (fs::is_directory(path, ignored)) return Failure{.Fault = FileFault::IsFolder};
  std::FILE* const file = OpenFile(path, "rb");
  if (!file) return LastFileFailure();
  Result<std::string> content = ReadToEnd(file, maxBytes);
  std::fclose(file);
  return content;
}

std::string FindFile(std::string_view scriptName, std::string_view name) {
  std::string portable(name);
  std::replace(portable.begin(), portable.end(), '\\', '/');
  const fs::path wanted = PathOf(portable);
  fs::path found = wanted.is_absolute() ? wanted.root_path() : PathOf(scriptName).parent_path();
  for (const fs::path& part : wanted.relative_path()) {
    found = EntryOf(found, part);
    if (found.empty()) return {};
  }
  std::error_code ignored;
  return fs::is_regular_file(found, ignored) ? NameOf(found) : std::string();
}

std::string PageFileName(const std::string& fileName, std::size_t page) {
  if (page == 0) return fileName;
  const std::size_t dot = fileName.find_last_of("./\\");
  const bool hasExtension = dot != std::string::npos && fileName[dot] == '.';
  const std::size_t at = hasExtension ? dot : fileName.size();
  return fileName.substr(0, at) + "-" + std::to_string(page + 1) + fileName.substr(at);
}

}  // namespace vaxel
