#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "interpreter/command_row.h"
#include "interpreter/line_reader.h"

namespace vaxel {

// A logical line as it was read once.
struct PreparedLine {
  LogicalLine Line;
  LineReader::Result Result = LineReader::Result::Line;
  std::unique_ptr<PreparedCommand> Command;  // null: it is run as it stands
  std::uint32_t Version = 0;                 // of the separators for which Command holds; 0: not prepared yet
  PreparedLine* Next = nullptr;              // the line after it, once it was wanted
  std::size_t NextPosition = 0;
  std::uint32_t NextNumber = 1;
  bool IsKept = true;  // else it holds until the next one is read, and is run as it stands
  std::string Joined;  // the text of a line that is no part of the script's
};

// The lines of one script level that are run again and again, by the places where they begin.
class PreparedScript {
 public:
  // The line at the reader's place; null at the end of the text. A line that is kept lives until Clear.
  PreparedLine* At(LineReader& reader);
  PreparedLine* After(PreparedLine& line, LineReader& reader);
  void Clear() {
    lines_.clear();
    textLength_ = 0;
  }

 private:
  std::unordered_map<std::size_t, std::unique_ptr<PreparedLine>> lines_;
  std::size_t textLength_ = 0;  // of all of them
  PreparedLine passing_;        // one that is not kept
};

}  // namespace vaxel
