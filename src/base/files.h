// Files by names in UTF-8, read whole.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "base/result.h"

namespace vaxel {

std::filesystem::path PathOf(std::string_view name);
std::string NameOf(const std::filesystem::path& path);

// Whether there is a regular file of this name.
bool FileExists(std::string_view name);

// Whether files can be made in the folder, which is found out by making one: attributes and rights say little
// about shares. Nothing of it stays.
bool CanWriteIn(std::string_view folder);

// Opens a file as std::fopen does. The stream is null when that fails.
std::FILE* OpenFile(const std::filesystem::path& path, const char* mode);
// Why a call for a file has failed, in the system's words where it is nothing that FileFault names; and why
// the last one of the C library has.
Failure FileFailure(const std::error_code& why);
Failure LastFileFailure();

// Whether both names lead to one regular file that is there, however they are spelled and through whatever
// links.
bool AreSameFile(const std::filesystem::path& one, const std::filesystem::path& other);
// Whether the stream reads or writes the regular file that has this name. On Windows, where that is not
// known, the answer is false.
bool IsOpenAs(std::FILE* stream, const std::filesystem::path& path);

// Both return the bytes. A file of more than maxBytes fails with IsTooLarge, and never more are kept in
// memory.
Result<std::string> ReadToEnd(std::FILE* file, std::size_t maxBytes);
Result<std::string> ReadWholeFile(std::string_view name, std::size_t maxBytes);

// The regular file that a script means by a name: relative to the folder of the script (an empty name: the
// working folder), with "\\" or "/" between folders, and where there is none of just that name, one whose
// name differs in case alone. The name is empty when there is none.
std::string FindFile(std::string_view scriptName, std::string_view name);

// What the file of a page (from 0) is called where each has its own: "dial.svg" for the first, then
// "dial-2.svg", "dial-3.svg", …
std::string PageFileName(const std::string& fileName, std::size_t page);

}  // namespace vaxel
