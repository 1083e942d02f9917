// What editing makes of whole lines. Texts are lines with LF between them and none behind the last.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vaxel {

// The lines as comments; or, when all of them that are not empty are comments, without their first mark. A
// line that was made a comment becomes what it was.
std::string WithCommentsToggled(std::string_view lines);

// The lines, save empty ones, two blanks further in; or two further out, as far as they have them, where a
// TAB counts as both.
std::string Indented(std::string_view lines);
std::string Unindented(std::string_view lines);

// Columns of a line, UTF-16 units from its start.
struct Parentheses {
  std::size_t Opening = 0, Closing = 0;
  bool operator==(const Parentheses&) const = default;
};
// The pair of the parenthesis before the cursor's column or behind it; there is none where it has no other.
std::optional<Parentheses> ParenthesesAt(std::string_view line, std::size_t column);

}  // namespace vaxel
