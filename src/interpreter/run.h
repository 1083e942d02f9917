// Runs scripts: the main one, those that it includes, and the jumps in them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/draw_surface.h"
#include "interpreter/run_context.h"
#include "interpreter/script_lines.h"

namespace vaxel {

enum class RunEnd : std::uint8_t {
  Completed,
  Failed,   // an error was shown
  Aborted,  // the user, or a script that includes itself, ended it
  Empty     // the text was empty: nothing was drawn or cleared
};

// Runs a main script from its beginning. The text is UTF-8 and has any line ends; the file's name is shown in
// reports. Variables of level 1, the language base and whatever else the context holds for its caller are set
// before; everything that belongs to one run is reset here.
//
// What goes wrong is reported as an error: a fault of a line or of the drawing, a lack of memory, an
// exception that nobody foresaw.
RunEnd RunScript(RunContext& run, const RunTarget& target, std::string text, std::string_view fileName);

// Runs the text as the next level, from the place of the current line; the level after it is free again. The
// context's current level must not be the last.
struct Inclusion {
  std::string FileName;  // as the host gives it
  std::string Text;      // UTF-8, any line ends
  Point Position;        // of its centre from the current one
  std::vector<std::pair<std::string, std::string>> Variables;
};
void RunIncluded(RunContext& run, Inclusion inclusion);

// Thrown to end the run where it stands, without an error of a line.
struct RunEnded {
  RunEnd How;
};

// Lets the host handle events; ends the run when it says so.
inline void HandleEvents(RunContext& run) {
  run.Work.Ask();
}

// A jump of one line to the line that has this label or, where none has, this number.
class Jump {
 public:
  // The target must live as long.
  explicit Jump(std::string_view target) : target_(target) {}

  // Jumps, and returns whether that was a jump back. It is a fault when there is no such line.
  bool Take(RunContext& run) {
    if (!line_) return Find(run);
    // A label is passed over, as long as it is one: its name must not hold a separator.
    const bool isCurrent = line_->Version == run.SeparatorsVersion;
    if (isCurrent && line_->Command.IsEmpty() && line_->Next) line_ = line_->Next;
    run.Level().Lines->GoTo(line_);
    return isBack_;
  }

 private:
  bool Find(RunContext& run);

  std::string_view target_;
  ScriptLine* line_ = nullptr;  // when it is known and kept
  bool isBack_ = false;
};

}  // namespace vaxel
