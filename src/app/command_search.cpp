#include "app/command_search.h"

#include <algorithm>
#include <optional>
#include <string>

#include "app/help_syntax.h"
#include "app/name_matches.h"
#include "base/folded_text.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/foreign_habits.h"

namespace vaxel {
namespace {

// Shorter words begin too many others.
constexpr std::size_t LeastForHelp = 3;

enum Rank : int { Exact, Prefix, Called, HelpWord, CalledPrefix, HelpPrefix, Within };

// How the word stands in a text: as a word of it, as the beginning of one, or not.
std::optional<bool> FindWhole(std::string_view text, std::string_view word) {
  std::optional<bool> isWhole;
  for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
    if (at > 0 && IsWordCharacter(text[at - 1])) continue;
    const std::size_t end = at + word.size();
    isWhole = end == text.size() || !IsWordCharacter(text[end]);
    if (*isWhole) break;
  }
  return isWhole;
}

std::optional<int> RankByHabits(const CommandRow& row, std::string_view folded) {
  std::optional<int> rank;
  for (const Habit& habit : CommandHabits()) {
    if (habit.Instead != row.Keyword || !habit.Word.starts_with(folded)) continue;
    const int found = habit.Word.size() == folded.size() ? Called : CalledPrefix;
    rank = std::min(rank.value_or(found), found);
  }
  return rank;
}

std::optional<int> RankOf(const CommandRow& row, std::string_view folded, const StringTable& strings,
                          int helpBase) {
  if (folded.empty()) return Prefix;
  const std::string keyword = FoldedText(row.Keyword);
  if (keyword == folded) return Exact;
  if (keyword.starts_with(folded)) return Prefix;
  std::optional<int> rank = RankByHabits(row, folded);
  if (folded.size() >= LeastForHelp) {
    const auto isWhole = FindWhole(FoldedText(strings.Text(helpBase, row.Help)), folded);
    const int found = isWhole.value_or(false) ? HelpWord : HelpPrefix;
    if (isWhole) rank = std::min(rank.value_or(found), found);
  }
  if (rank) return rank;
  if (folded.size() > 1 && keyword.find(folded) != std::string::npos) return Within;
  return std::nullopt;
}

}  // namespace

std::vector<const CommandRow*> FindCommands(std::string_view word, const StringTable& strings, int helpBase) {
  constexpr std::size_t longest = 40;  // more is no word
  word = Trim(word);
  if (word.size() > longest) return {};
  struct Found {
    int Rank;
    const CommandRow* Row;
  };
  const std::string folded = FoldedText(word);
  std::vector<Found> found;
  for (const CommandRow& row : CommandTable()) {
    if (!row.Rules.Shown.empty()) continue;
    if (const auto rank = RankOf(row, folded, strings, helpBase)) found.push_back({*rank, &row});
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const Found& a, const Found& b) { return a.Rank < b.Rank; });
  std::vector<const CommandRow*> rows;
  for (const Found& one : found) rows.push_back(one.Row);
  // A slip of the fingers.
  const CommandRow* const nearest = rows.empty() ? AllCommands().Find(AllCommands().Suggest(word)) : nullptr;
  if (nearest) rows.push_back(nearest);
  return rows;
}

std::string_view PurposeOf(const CommandRow& row, const StringTable& strings, int helpBase) {
  const std::string_view text = strings.Text(helpBase, row.Help);
  const std::vector<SyntaxLine> lines = SyntaxOf(text);
  std::size_t begin = 0;
  for (const SyntaxLine& line : lines) {
    if (line.Begin <= begin) begin = std::min(text.size(), line.End + 1);
    // "or", which stands alone between two forms.
    std::string_view rest = text.substr(begin);
    const std::string_view word = TakeLine(rest);
    if (word.size() <= 2) begin = text.size() - rest.size();
  }
  std::string_view rest = text.substr(begin);
  const std::string_view purpose = TakeLine(rest);
  std::string_view whole = text;
  return purpose.empty() ? TakeLine(whole) : purpose;
}

}  // namespace vaxel
