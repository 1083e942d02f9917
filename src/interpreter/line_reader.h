// Cuts a script's text into logical lines, and a line into its keyword and its parameters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vaxel {

class CommandSet;

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

// Whether nothing of the line is to be run: it is empty or a comment.
bool IsBlankOrComment(std::string_view line);

struct CommandLine {
  std::string_view Keyword;     // trimmed, as written
  std::string_view Parameters;  // all after the "=" or the blank, a trailing comment included
};

// A "=" after an apostrophe belongs to a comment and separates nothing. The line has no leading blanks.
CommandLine SplitCommand(std::string_view line, const CommandSet& commands);

// The text before its first apostrophe.
std::string_view WithoutComment(std::string_view text);

// Whether the line is a label: it has a ":" that no "=" and no apostrophe precedes or, but for a comment,
// follows.
bool IsLabelLine(std::string_view line);

}  // namespace vaxel
