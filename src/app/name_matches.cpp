#include "app/name_matches.h"

#include <algorithm>

#include "base/folded_text.h"
#include "base/text.h"

namespace vaxel {
namespace {

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char UpperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Whether a text, in any case, begins with a folded one.
bool BeginsFolded(std::string_view text, std::string_view folded) {
  return text.size() >= folded.size() && std::equal(folded.begin(), folded.end(), text.begin(),
                                                    [](char a, char b) { return a == UpperAscii(b); });
}

std::optional<NameMatch> MatchFolded(std::string_view name, std::string_view folded) {
  if (BeginsFolded(name, folded)) return name.size() == folded.size() ? NameMatch::Exact : NameMatch::Prefix;
  for (std::size_t i = 1; i + folded.size() <= name.size(); ++i) {
    const bool begins = IsWordCharacter(name[i]) && !IsWordCharacter(name[i - 1]);
    if (begins && BeginsFolded(name.substr(i), folded)) return NameMatch::Word;
  }
  return std::nullopt;
}

}  // namespace

bool IsWordCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || static_cast<unsigned char>(c) >= 0x80;
}

TypedName::TypedName(std::string_view typed) : folded_(FoldedText(typed)) {}

// Most names are plain, and there may be a hundred thousand of them.
std::optional<NameMatch> TypedName::Match(std::string_view name) const {
  return IsAscii(name) ? MatchFolded(name, folded_) : MatchFolded(FoldedText(name), folded_);
}

void NameMatches::Try(std::string_view name, std::size_t index) {
  if (const auto match = typed_.Match(name)) {
    std::vector<std::size_t>& found = found_[static_cast<std::size_t>(*match)];
    if (found.size() < Most) found.push_back(index);
  }
}

std::vector<std::size_t> NameMatches::Best() const {
  if (found_[1].empty() && found_[2].empty()) return {};
  std::vector<std::size_t> best;
  for (const std::vector<std::size_t>& found : found_) best.insert(best.end(), found.begin(), found.end());
  best.resize(std::min(best.size(), Most));
  return best;
}

}  // namespace vaxel
