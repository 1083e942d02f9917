#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vaxel {

// What a run reports when it fails: the box's text, and where the line stands.
struct ErrorReport {
  std::string FileName;          // of the script or included file; empty for an unsaved text
  std::uint32_t LineNumber = 0;  // from 1; 0 when no line was reached
  std::string Text;              // may have several lines
};

// Everything that a run asks for outside itself. Calls come on the run's own thread.
class RunHost {
 public:
  virtual ~RunHost() = default;

  // Shows the error that ended the run.
  virtual void ShowError(const ErrorReport& report) = 0;
  // A fixed point of the run at which the drawing so far may be shown and pending events handled.
  virtual void ProcessPendingEvents() = 0;
  // Writes a comment, its apostrophe and the blanks before it included, behind the given line of the main
  // script or of the included file named.
  virtual void WriteComment(std::string_view fileName, std::uint32_t lineNumber,
                            std::string_view comment) = 0;
};

}  // namespace vaxel
