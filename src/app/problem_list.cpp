#include "app/problem_list.h"

#include <algorithm>
#include <tuple>

namespace vaxel {

void ProblemList::Replace(std::vector<Problem> problems) {
  problems_.clear();
  // An error ends its run, and must not be lost behind a thousand notices.
  std::stable_sort(problems.begin(), problems.end(),
                   [](const Problem& a, const Problem& b) { return a.What < b.What; });
  for (Problem& problem : problems) {
    const bool isKnown = std::find(problems_.begin(), problems_.end(), problem) != problems_.end();
    if (!isKnown) problems_.push_back(std::move(problem));
    if (problems_.size() == Most) break;
  }
  std::stable_sort(problems_.begin(), problems_.end(),
                   [](const Problem& a, const Problem& b) { return a.EditorLine < b.EditorLine; });
}

std::optional<std::size_t> ProblemList::After(std::uint32_t line) const {
  std::optional<std::size_t> first;
  for (std::size_t i = 0; i < problems_.size(); ++i) {
    if (problems_[i].EditorLine == 0) continue;
    if (problems_[i].EditorLine > line) return i;
    if (!first) first = i;
  }
  return first;
}

std::optional<std::size_t> ProblemList::Before(std::uint32_t line) const {
  std::optional<std::size_t> before;
  for (std::size_t i = 0; i < problems_.size(); ++i) {
    if (problems_[i].EditorLine != 0 && problems_[i].EditorLine < line) before = i;
  }
  if (before || problems_.empty() || problems_.back().EditorLine == 0) return before;
  return problems_.size() - 1;
}

std::optional<std::size_t> ProblemList::InLine(std::uint32_t line) const {
  const auto found = std::find_if(problems_.begin(), problems_.end(),
                                  [line](const Problem& problem) { return problem.EditorLine == line; });
  if (line == 0 || found == problems_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - problems_.begin());
}

}  // namespace vaxel
