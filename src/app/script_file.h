// Loads and saves scripts as files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "base/text_encoding.h"

namespace vaxel {

// How a script lies on the disk.
struct ScriptBytes {
  TextEncoding Encoding = TextEncoding::Utf8;
  std::uint64_t Hash = 0;  // HashOf its bytes
};

struct ScriptFile {
  std::string Text;  // UTF-8, lines end in LF
  ScriptBytes Bytes;
};

// The hash is the same on every system and in every version of the program (FNV-1a): recovery copies hold it.
std::uint64_t HashOf(std::string_view bytes);

// Loads a script of at most MaxScriptBytes. It fails with IsTooLarge, with ScriptNotAText or as files do.
inline constexpr std::size_t MaxScriptBytes = std::size_t{256} << 20;
Result<ScriptFile> LoadScript(std::string_view fileName);

// Writes the text, of which lines end in LF, with CR LF in the encoding, or in UTF-8 with a mark where that
// cannot hold it. The old file stays whole until the new one is.
Result<ScriptBytes> SaveScript(const std::string& fileName, std::string_view text, TextEncoding encoding);

// Whether a file that had this hash when it was loaded is there with other contents now.
bool HasChangedOnDisk(std::string_view fileName, std::uint64_t hash);

// "C:\a\" of "C:\a\b.dat", "" of "b.dat"; and the rest.
std::string_view FolderOf(std::string_view fileName);
std::string_view NameWithoutFolder(std::string_view fileName);
// The name without folder and without its extension.
std::string DocumentNameOf(std::string_view fileName);
// Whether it is an imported Meter file, which scripts never replace.
bool IsMeterFile(std::string_view fileName);

}  // namespace vaxel
