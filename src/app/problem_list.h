// What the last run has found wrong, for the list below the editor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vaxel {

struct Problem {
  enum class Kind : std::uint8_t { Error, Notice };
  Kind What = Kind::Error;
  std::string Message;
  std::string File;              // of the script; empty for an unsaved text
  std::uint32_t Line = 0;        // in that file, from 1; 0 where no line was reached
  std::uint32_t EditorLine = 0;  // the line of the edited script that led there, often the same; 0: none

  friend bool operator==(const Problem&, const Problem&) = default;
};

class ProblemList {
 public:
  // Nobody reads more.
  static constexpr std::size_t Most = 1000;

  // The problems of a run, in the order in which they were found, take the place of those before. What is
  // said twice is kept once; they are sorted by the lines of the edited script, errors first in a line.
  void Replace(std::vector<Problem> problems);
  std::span<const Problem> All() const { return problems_; }

  // The place in the list of the next problem behind a line of the edited script, or of the one before it;
  // from the last one on it is the first again. There is none where no problem has a line.
  std::optional<std::size_t> After(std::uint32_t line) const;
  std::optional<std::size_t> Before(std::uint32_t line) const;
  // The first of a line; none where it has none.
  std::optional<std::size_t> InLine(std::uint32_t line) const;

 private:
  std::vector<Problem> problems_;
};

}  // namespace vaxel
