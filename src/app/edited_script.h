// What is known of the script in the editor, apart from its text.
#pragma once

#include <cstdint>
#include <string>

#include "base/text_encoding.h"

namespace vaxel {

// The script in the editor. The file commands change it, everyone else reads it.
struct EditedScript {
  std::string CurrentFile;  // full path; empty: not yet saved
  bool TextModified = false;
  std::uint64_t Texts = 0;      // how many texts have come into the editor as a whole
  std::uint64_t UserEdits = 0;  // how often the text was changed by anything but the comments of a run
  TextEncoding Encoding = TextEncoding::Utf8;  // in which it was loaded
  std::uint64_t LoadedHash = 0;                // HashOf the bytes of the file as they were loaded or saved
};

}  // namespace vaxel
