// What a script names, and where: its variables, labels, included files and separators.
//
// A survey is read from a whole text, and kept up when lines of it change. It holds what the lines say, not
// what a run would make of them: all branches count, and separators hold from their line on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interpreter/variables.h"

namespace vaxel {

struct CommandInLine;

class ScriptSurvey {
 public:
  // A name in a line, as it is first written; lines count from 1.
  struct Named {
    std::string Name;
    std::uint32_t Line = 1;
  };

  // Reads a text whose lines end in LF.
  void Read(std::string_view text);

  // The text of a line, without its end.
  using LineOf = std::function<std::string(std::size_t line)>;
  // So many lines from first on were replaced by others; lineOf tells of the text as it is now, which has
  // lineCount lines. The result is false where the change reaches further than that, for separators have
  // changed: the text must then be read as a whole.
  bool Replace(std::size_t first, std::size_t removed, std::size_t inserted, std::size_t lineCount,
               const LineOf& lineOf);

  // Labels and included files in the order of their lines.
  std::span<const Named> Labels() const { return labels_; }
  std::span<const Named> Files() const { return files_; }
  // The variables that are given a value up to a line, in the order in which that comes first.
  std::vector<Named> VariablesUpTo(std::size_t line) const;
  // Whether some line gives the variable a value. Names are compared without regard to case.
  bool HasVariable(std::string_view name) const;
  // Whether lines get the same colours by both: the same names stand in both, and the same separators.
  bool ColoursAs(const ScriptSurvey& other) const;
  // The separators in force before a line, and whether any line sets them.
  Separators SeparatorsAt(std::size_t line) const;
  bool HasOwnSeparators() const { return !changes_.empty(); }
  // The first line of the command of which a line is a part.
  std::size_t FirstLineOf(std::size_t line) const;

 private:
  struct Assignment {
    std::uint32_t Name;  // in names_
    std::uint32_t Line;
  };
  struct Change {
    std::uint32_t Line;
    Separators From;  // from the next line on
  };

  // Lines that are replaced by others.
  struct Span {
    std::size_t First, Removed, Inserted;
  };

  void FindContinued(std::string_view text, std::uint32_t line);
  void ReadLines(std::string_view text, std::uint32_t first);
  void ReadLogicalLine(std::string_view text, std::uint32_t line);
  void ReadSlowly(std::string_view text, std::uint32_t line);
  void ReadCommand(const CommandInLine& command, std::uint32_t line);
  void Assign(std::string_view name, std::uint32_t line);
  std::uint32_t IndexOf(const std::string& name);
  bool IsContinuation(std::size_t line) const;
  void Widen(Span& span, std::size_t lineCount, const LineOf& lineOf) const;
  void Splice(const Span& span, ScriptSurvey fresh);

  std::vector<Named> labels_, files_;
  std::vector<Assignment> assignments_;
  std::vector<std::uint32_t> continued_;  // lines that go on with the one before them
  std::vector<Change> changes_;
  std::vector<std::string> names_;                        // as first written
  std::vector<std::uint32_t> uses_;                       // how many assignments each has
  std::unordered_map<std::string, std::uint32_t> index_;  // of the names in upper case
};

}  // namespace vaxel
