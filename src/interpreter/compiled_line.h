// A command line on its way to the handler of its command.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "interpreter/command_row.h"
#include "interpreter/parameters.h"

namespace vaxel {

// Tells of the first parameter beyond so many that is not empty: it counts for nothing, and a comma may have
// slipped in before it.
void NoticeSurplus(const RunContext& run, const Parameters& parameters, std::size_t most);

// A line with what could be worked out of it beforehand: its row, and its parameters as texts, numbers and
// programs. It can be compiled anew, which keeps its memory.
class CompiledLine {
 public:
  // The line must live as long; what is compiled holds for the separators in force. An unknown command is a
  // fault.
  void Compile(RunContext& run, std::string_view line);

  // Whether it is compiled and there is nothing to run: a label, a command that does not count here.
  bool IsEmpty() const { return isCompiled_ && !command_ && !row_; }

  // Runs the line, as often as that is wanted, in the level for which it was compiled.
  void Run(RunContext& run) {
    if (command_) {
      command_->Run(run);
    } else if (row_) {
      RunHandler(run);
    }
  }

 private:
  void RunHandler(RunContext& run);

  bool isCompiled_ = false;
  const CommandRow* row_ = nullptr;  // null, as is command_: there is nothing to run
  std::string_view text_;            // of all parameters
  bool mayHaveSurplus_ = false;      // there are more parameters than the command has
  Parameters parameters_;
  std::unique_ptr<CompiledCommand> command_;
};

// The command line that follows a condition in the same line. An empty line and a comment are nothing to run.
class FollowingCommand {
 public:
  // The line must live as long.
  explicit FollowingCommand(std::string_view line);
  // Too many of them one inside the other are a fault.
  void Run(RunContext& run);

 private:
  std::string_view line_;
  bool isCompiled_ = false;  // done when it is run: the command may hold another one, and so on
  CompiledLine compiled_;
};

}  // namespace vaxel
