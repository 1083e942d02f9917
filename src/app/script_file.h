// Scripts as files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/text_encoding.h"

namespace vaxel {

struct ScriptFile {
  enum class Outcome : std::uint8_t { Loaded, Unreadable, TooLarge, NoText } Result = Outcome::Loaded;
  std::string Text;  // UTF-8, lines end in LF
  TextEncoding Encoding = TextEncoding::Utf8;
  std::size_t Hash = 0;  // of its bytes
  std::string Reason;    // why it is unreadable
};

// A script of at most MaxScriptBytes.
inline constexpr std::size_t MaxScriptBytes = std::size_t{256} << 20;
ScriptFile LoadScript(std::string_view fileName);

// Writes the text, of which lines end in LF, with CR LF in the encoding, or in UTF-8 with a mark where that
// cannot hold it; encoding and hash become those of the file. The old file stays whole until the new one is.
// Returns the reason when that failed, else "".
std::string SaveScript(const std::string& fileName, std::string_view text, TextEncoding& encoding,
                       std::size_t& hash);

// Whether a file that had this hash when it was loaded is there with other contents now.
bool HasChangedOnDisk(std::string_view fileName, std::size_t hash);

// "C:\a\" of "C:\a\b.dat", "" of "b.dat"; and the rest.
std::string_view FolderOf(std::string_view fileName);
std::string_view NameWithoutFolder(std::string_view fileName);
// The name without folder and without its extension.
std::string DocumentNameOf(std::string_view fileName);
// Whether it is an imported Meter file, which scripts never replace.
bool IsMeterFile(std::string_view fileName);

}  // namespace vaxel
