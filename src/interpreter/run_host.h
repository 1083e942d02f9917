// The interface by which a run asks for things outside itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/files.h"

namespace vaxel {

// What a run reports when it fails: the text of the box, and the place of the line.
struct ErrorReport {
  std::string FileName;          // of the script or included file; empty for an unsaved text
  std::uint32_t LineNumber = 0;  // from 1; 0 when no line was reached
  std::string Text;              // may have several lines
};

// What the user, or a limit, says of a run that is under way.
enum class RunSignal : std::uint8_t {
  GoOn,
  Abort,  // the user wants it to end
  TimeUp  // it has taken longer than it may
};

// A box with OK and Cancel.
enum class BoxKind : std::uint8_t {
  Variables,    // shows them; Cancel ends the script level
  IncludeDepth  // a file is included too deep; OK ends the run, Cancel passes over the line
};

// What came of a question.
struct Answer {
  enum class Kind : std::uint8_t { Given, Cancelled, Unavailable } How = Kind::Given;
  std::string Text{};
  bool IsPrepared = false;  // it was given before the run: asked again, nobody would mend it
};

// Everything that a run asks for outside itself. Calls come on the run's own thread.
class RunHost {
 public:
  virtual ~RunHost() = default;

  // Shows the error that ended the run.
  virtual void ShowError(const ErrorReport& report) = 0;
  // A point of the run at which the drawing so far may be shown and pending events handled: when the surface
  // is set up, before an error is shown, and, where the answer counts, at every condition, inclusion and jump
  // back, and when some lines have been run without any of these. It comes very often: looking at a clock
  // takes longer than most lines do.
  virtual RunSignal ProcessPendingEvents() = 0;
  // Writes a comment, its apostrophe and the blanks before it included, at the end of the given line of the
  // main script or of the included file named.
  virtual void WriteComment(std::string_view fileName, std::uint32_t lineNumber,
                            std::string_view comment) = 0;
  // Tells the user something about a line that is carried out all the same. It is shown as a notice.
  virtual void ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) = 0;
  // Shows a box with OK and Cancel for a line, and returns whether the answer is OK.
  virtual bool Confirm(BoxKind kind, std::string_view fileName, std::uint32_t lineNumber,
                       std::string_view title, std::string_view text) = 0;
  // Asks the user for a text, proposing one.
  virtual Answer Ask(std::string_view fileName, std::uint32_t lineNumber, std::string_view prompt,
                     std::string_view proposal) = 0;
  // Today's date as the user's short dates are written.
  virtual std::string Today() = 0;
  // The name of a script's file with all its folders; it is empty for an unsaved text.
  virtual std::string FullFileName(std::string_view fileName) = 0;
  // The file that a script means by a name, as ReadFile takes it; the name is empty when there is none.
  virtual std::string FindFile(std::string_view scriptName, std::string_view name) = 0;
  virtual Result<std::string> ReadFile(std::string_view fileName, std::size_t maxBytes) = 0;
};

}  // namespace vaxel
