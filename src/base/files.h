// Files by names in UTF-8, read whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace vaxel {

std::filesystem::path PathOf(std::string_view name);
std::string NameOf(const std::filesystem::path& path);

// As std::fopen does; null when it cannot be opened.
std::FILE* OpenFile(const std::filesystem::path& path, const char* mode);
// The text for the last failure of a file.
std::string ErrnoText();

enum class FileStatus : std::uint8_t { Read, Unreadable, TooLarge };

struct FileContent {
  FileStatus Status = FileStatus::Read;
  std::string Bytes{};
  std::string Reason{};  // why it is unreadable
};

// Never more than maxBytes are kept in memory.
FileContent ReadToEnd(std::FILE* file, std::size_t maxBytes);
FileContent ReadWholeFile(std::string_view name, std::size_t maxBytes);

// The regular file that a script means by a name: relative to the folder of the script (an empty name: the
// working folder), with "\\" or "/" between folders, and where there is none of just that name, one whose
// name differs in case alone. Empty when there is none.
std::string FindFile(std::string_view scriptName, std::string_view name);

}  // namespace vaxel
