#include "app/line_editing.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr std::string_view Step = "  ";

template <class Change>
std::string EachLine(std::string_view lines, Change change) {
  std::string changed;
  while (true) {
    const std::size_t end = lines.find('\n');
    changed += change(lines.substr(0, end));
    if (end == std::string_view::npos) return changed;
    changed += '\n';
    lines.remove_prefix(end + 1);
  }
}

std::size_t IndentationOf(std::string_view line) {
  return std::min(line.find_first_not_of(" \t"), line.size());
}

bool IsComment(std::string_view line) {
  return line.substr(IndentationOf(line)).starts_with('\'');
}

bool AreComments(std::string_view lines) {
  bool areAll = true, isAny = false;
  EachLine(lines, [&](std::string_view line) {
    if (IndentationOf(line) == line.size()) return "";
    isAny = true;
    areAll = areAll && IsComment(line);
    return "";
  });
  return isAny && areAll;
}

}  // namespace

std::string WithCommentsToggled(std::string_view lines) {
  const bool areComments = AreComments(lines);
  return EachLine(lines, [areComments](std::string_view line) {
    const std::size_t begin = IndentationOf(line);
    std::string changed(line);
    if (begin == line.size()) return changed;
    return areComments ? changed.erase(begin, 1) : changed.insert(0, 1, '\'');
  });
}

std::string Indented(std::string_view lines) {
  return EachLine(lines, [](std::string_view line) {
    return line.empty() ? std::string() : std::string(Step).append(line);
  });
}

std::string Unindented(std::string_view lines) {
  return EachLine(lines, [](std::string_view line) {
    if (line.starts_with('\t')) return line.substr(1);
    const std::size_t text = std::min(line.find_first_not_of(' '), line.size());
    return line.substr(std::min(text, Step.size()));
  });
}

std::optional<Parentheses> ParenthesesAt(std::string_view line, std::size_t column) {
  std::vector<std::size_t> open;
  std::optional<Parentheses> behind;
  for (std::size_t at = 0; !line.empty();) {
    const char32_t character = TakeCharacter(line);
    if (character == U'(') open.push_back(at);
    if (character == U')' && !open.empty()) {
      const Parentheses pair{open.back(), at};
      open.pop_back();
      const auto touches = [&](std::size_t place) { return pair.Opening == place || pair.Closing == place; };
      if (column > 0 && touches(column - 1)) return pair;
      if (touches(column)) behind = pair;
    }
    at += character > 0xFFFF ? 2 : 1;
  }
  return behind;
}

}  // namespace vaxel
