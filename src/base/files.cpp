#include "base/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "base/text.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace vaxel {
namespace {

namespace fs = std::filesystem;

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

std::FILE* OpenFile(const fs::path& path, const char* mode) {
#ifdef _WIN32
  const std::wstring wideMode(mode, mode + std::strlen(mode));
  return _wfopen(path.c_str(), wideMode.c_str());
#else
  return std::fopen(path.c_str(), mode);
#endif
}

Failure LastFileFailure() {
  return {.Words = std::strerror(errno)};
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
