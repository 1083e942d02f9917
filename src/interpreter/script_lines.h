// The lines of a script, in the order in which they are run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "interpreter/compiled_line.h"
#include "interpreter/label_table.h"
#include "interpreter/line_reader.h"

namespace vaxel {

// A logical line of a script.
struct ScriptLine {
  LogicalLine Line;
  bool IsUnfinished = false;  // it ends in a continuation mark after which nothing comes
  CompiledLine Command;
  std::uint32_t Version = 0;  // of the separators for which Command is compiled; 0: not yet
  // The line after it, where that is kept and was wanted, and where it begins.
  ScriptLine* Next = nullptr;
  std::size_t NextPosition = 0;
  std::uint32_t NextNumber = 1;
  std::string Joined;  // the text of a line that is kept and no part of the script's
};

// The lines of one script level in the order in which they are run. From the first jump back on lines can
// come again: they are then kept as they are compiled, by the places where they begin.
class ScriptLines {
 public:
  // Begins before the first line. The text's lines end in LF; it must live as long. mayKeep: whether lines
  // are kept when they can come again.
  void Begin(std::string_view text, bool mayKeep = true);

  // The line to be run now, null at the end of the text. It lives until the next one is wanted, a line that
  // is kept until Begin.
  ScriptLine* Next() {
    ScriptLine* const line = next_ ? next_ : Read();
    current_ = line;
    next_ = line ? line->Next : nullptr;
    return line;
  }

  // Goes on at this place instead of the next line, and gives the line there when it is kept, else null.
  ScriptLine* GoTo(const Label& place, bool isBack);
  // The same for a line that is kept.
  void GoTo(ScriptLine* line) { next_ = line; }

  // The reader has read nothing of the text before the first line is wanted.
  LineReader Reader;

 private:
  bool ReadInto(ScriptLine& line);
  ScriptLine* Read();
  ScriptLine* Known(std::size_t position);

  std::unordered_map<std::size_t, std::unique_ptr<ScriptLine>> kept_;
  std::size_t textLength_ = 0;  // of all that are kept
  bool mayKeep_ = true, keeps_ = false;
  bool isSought_ = false;  // the next line is where the reader stands, not after the current one
  ScriptLine* current_ = nullptr;
  ScriptLine* next_ = nullptr;  // null: it is still to be read
  ScriptLine passing_;          // the current line, when it is not kept
};

}  // namespace vaxel
