// The loops of a script: which lines begin and end them, and how far those that run have come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "interpreter/label_table.h"
#include "interpreter/line_reader.h"

namespace vaxel {

class WorkMeter;

class CommandSet;

// A loop over the lines between two commands, each on a line of its own. Lines can only be entered from
// above: a loop whose lines are being run has begun, so that it needs no stack to say which one goes on.
struct Loop {
  Label Body, End;  // the lines after the first and after the last of them
  std::uint32_t FirstLine = 0, LastLine = 0;
  std::string Parameters;   // of its first command, which begin with the counter's name
  std::size_t Counter = 0;  // the variable's slot

  // Passes have the numbers 0 to PassCount - 1; the counter is From + the number * Step.
  double From = 0, Step = 1, PassCount = 0, Pass = 0;

  // Whether the line belongs to what may only be reached through the first line.
  bool Holds(std::uint32_t line) const { return FirstLine < line && line <= LastLine; }
};

// The loops of one script level.
class LoopTable {
 public:
  // Finds all of them, also after lines that end the labels. A beginning without an end, the reverse, and an
  // end that names another variable are faults; line is then the one to blame, as the reader has it. The
  // reader of the text stands before its first line.
  void Collect(std::string_view text, LineReader& reader, const CommandSet& commands, LogicalLine& line,
               WorkMeter& work);

  // The loop that begins or ends in a line; null when none does. It lives until Collect.
  Loop* BeginningAt(std::uint32_t line);
  Loop* EndingAt(std::uint32_t line);

  // A jump into a loop is a fault.
  void CheckJump(std::uint32_t from, std::uint32_t to) const;

 private:
  std::vector<Loop> loops_;  // by their last lines
};

}  // namespace vaxel
