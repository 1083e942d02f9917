// Makes texts of unknown origin fit to be shown to people.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vaxel {

enum class LineBreaks : std::uint8_t {
  Escaped,  // of a name or a value, which stands within one line
  Kept      // of a whole message: "\n" and "\t" stay as they are
};

// The text with what a terminal would obey instead of showing it written out: control characters (C0, DEL,
// C1) and bytes that are no UTF-8 as "\x1b", marks and overrides of the writing direction as "\u202e". A
// backslash stays one: the form is to be read by people, not to be read back.
std::string Printable(std::string_view text, LineBreaks breaks = LineBreaks::Escaped);

}  // namespace vaxel
