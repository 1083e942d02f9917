#include "app/text_search.h"

#include <algorithm>
#include <string>

#include "base/text.h"

namespace vaxel {
namespace {

// Every byte of a letter outside ASCII counts: the letters of three languages are words too.
bool IsOfWord(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsWord(std::string_view text, TextPart part) {
  const auto isInside = [&](std::size_t at) { return IsOfWord(text[at - 1]) && IsOfWord(text[at]); };
  const bool beginsInside = part.Begin > 0 && isInside(part.Begin);
  return !beginsInside && (part.End == text.size() || !isInside(part.End));
}

}  // namespace

std::vector<TextPart> FindAll(std::string_view text, std::string_view wanted, const SearchRules& rules) {
  std::vector<TextPart> found;
  if (wanted.empty()) return found;
  // The upper-case form is as long as the text, so that places are the same in both.
  const std::string folded = rules.MatchesCase ? std::string() : UpperCase(text);
  const std::string_view searched = rules.MatchesCase ? text : folded;
  const std::string sought = rules.MatchesCase ? std::string(wanted) : UpperCase(wanted);
  for (std::size_t at = searched.find(sought); at != std::string_view::npos;) {
    const TextPart part{at, at + sought.size()};
    const bool counts = !rules.WholeWords || IsWord(text, part);
    if (counts) found.push_back(part);
    at = searched.find(sought, counts ? part.End : at + 1);
  }
  return found;
}

std::optional<TextPart> NextPart(const std::vector<TextPart>& parts, std::size_t place) {
  if (parts.empty()) return std::nullopt;
  const auto next = std::ranges::lower_bound(parts, place, {}, &TextPart::Begin);
  return next == parts.end() ? parts.front() : *next;
}

std::optional<TextPart> PreviousPart(const std::vector<TextPart>& parts, std::size_t place) {
  if (parts.empty()) return std::nullopt;
  const auto behind = std::ranges::upper_bound(parts, place, {}, &TextPart::End);
  return behind == parts.begin() ? parts.back() : *(behind - 1);
}

}  // namespace vaxel
