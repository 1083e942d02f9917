// Finding a text in a script.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vaxel {

struct SearchRules {
  bool MatchesCase = false;  // else the upper-case forms are compared
  bool WholeWords = false;   // no letter, digit or "_" stands before or behind
};

// Bytes of a text.
struct TextPart {
  std::size_t Begin = 0, End = 0;
  bool operator==(const TextPart&) const = default;
};

// The parts of the text, from its start, that are the wanted text; they do not overlap. Nothing is found
// when nothing is wanted.
std::vector<TextPart> FindAll(std::string_view text, std::string_view wanted, const SearchRules& rules);

// The first of the parts, in the order of the text, that begins at the place or behind it; behind the last
// one it is the first again.
std::optional<TextPart> NextPart(const std::vector<TextPart>& parts, std::size_t place);
// The last one that ends at the place or before it; before the first one it is the last.
std::optional<TextPart> PreviousPart(const std::vector<TextPart>& parts, std::size_t place);

}  // namespace vaxel
