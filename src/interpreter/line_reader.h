// Cuts a script's text into logical lines, and a line into its keyword and its parameters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vaxel {

class CommandSet;
struct Separators;

struct LogicalLine {
  // The line with its continuations joined, TABs replaced by blanks and leading blanks removed. It is valid
  // until the next line is read.
  std::string_view Text;
  std::uint32_t Number = 1;  // of its first physical line, from 1
};

class LineReader {
 public:
  LineReader() = default;
  // The text's lines end in LF. It must outlive the reader.
  explicit LineReader(std::string_view text);

  enum class Result : std::uint8_t {
    Line,
    End,        // the text is exhausted
    Unfinished  // the text ends in a continuation mark; the line is given all the same
  };
  // The next line that is neither empty nor a comment.
  Result Next(LogicalLine& line);

  // Whether the last line is joined of several, or had TABs: its text is then not a part of the script's.
  bool IsJoined() const { return isJoined_; }
  std::uint32_t NextNumber() const { return nextNumber_; }

  // Goes on at this place, which begins the physical line of that number.
  void Seek(std::size_t position, std::uint32_t lineNumber);

  // These are offsets into the text. They tell of the last line read where nothing else is said.
  std::size_t ReadPos = 0;        // where the next line begins
  std::size_t LineStart = 0;      // of its first physical line
  std::size_t LastLineStart = 0;  // of its last physical line
  std::size_t LineEnd = 0;        // the line end of its last physical line, or the end of the text

 private:
  std::string_view TakePhysicalLine();
  Result TakeLogicalLine(LogicalLine& line);

  std::string_view text_;
  std::string assembled_;
  std::uint32_t nextNumber_ = 1;
  bool hasTabs_ = false;
  bool isJoined_ = false;
};

// Whether the line goes on in the next one.
bool IsContinued(std::string_view line);

// Whether nothing of the line is to be run: it is empty or a comment.
bool IsBlankOrComment(std::string_view line);

struct CutCommand {
  std::string_view Keyword;     // trimmed, as written
  std::string_view Parameters;  // all after the "=" or the blank, a trailing comment included
};

// A "=" after an apostrophe belongs to a comment and separates nothing. The line has no leading blanks.
CutCommand SplitCommand(std::string_view line, const CommandSet& commands);

// The text before its first apostrophe.
std::string_view WithoutComment(std::string_view text);

// A line that is passed over, as it has a ":" that no "=" and no apostrophe precedes.
struct LabelLine {
  std::string_view Name;    // before the ":", blanks included
  std::string_view Behind;  // what follows it, without blanks and comment
  // Whether jumps know it: a "=" behind the ":" makes it a line that is only passed over.
  bool IsTarget = false;
};

// The line is none when its keyword is a command, also when that stands directly before a ":" with text glued
// to it, and when the name holds a comma, a "§" or a separator: that is a command with a slip.
std::optional<LabelLine> ReadLabelLine(std::string_view line, const CommandSet& commands,
                                       const Separators& separators);

}  // namespace vaxel
