#include "interpreter/line_reader.h"

#include <algorithm>

#include "base/text.h"
#include "interpreter/command_row.h"

namespace vaxel {
namespace {

constexpr std::string_view ContinuationMark = " _";

// Conditions are known by the two letters that their keywords begin with.
bool BeginsCondition(std::string_view line, const CommandSet& commands) {
  const CommandRow* const row = commands.Find(line.substr(0, 2));
  return row && row->Rules.Form == LineForm::Condition;
}

}  // namespace

LineReader::LineReader(std::string_view text)
    : text_(text), hasTabs_(text.find('\t') != std::string_view::npos) {}

void LineReader::Seek(std::size_t position, std::uint32_t lineNumber) {
  ReadPos = position;
  nextNumber_ = lineNumber;
}

std::string_view LineReader::TakePhysicalLine() {
  LastLineStart = ReadPos;
  LineEnd = std::min(text_.size(), LastLineStart + std::min(text_.size(), text_.substr(ReadPos).find('\n')));
  ReadPos = LineEnd + 1;
  ++nextNumber_;
  return text_.substr(LastLineStart, LineEnd - LastLineStart);
}

LineReader::Result LineReader::TakeLogicalLine(LogicalLine& line) {
  if (ReadPos >= text_.size()) return Result::End;
  line.Number = nextNumber_;
  LineStart = ReadPos;
  std::string_view physical = TakePhysicalLine();
  isJoined_ = hasTabs_ || physical.ends_with(ContinuationMark);
  if (!isJoined_) {
    line.Text = TrimLeft(physical);
    return Result::Line;
  }
  assembled_ = physical;
  std::replace(assembled_.begin(), assembled_.end(), '\t', ' ');
  assembled_.erase(0, std::min(assembled_.size(), assembled_.find_first_not_of(' ')));
  Result result = Result::Line;
  while (assembled_.ends_with(ContinuationMark)) {
    if (ReadPos >= text_.size()) {
      result = Result::Unfinished;
      break;
    }
    assembled_.resize(assembled_.size() - ContinuationMark.size());
    assembled_ += TakePhysicalLine();
  }
  std::replace(assembled_.begin(), assembled_.end(), '\t', ' ');
  line.Text = assembled_;
  return result;
}

LineReader::Result LineReader::Next(LogicalLine& line) {
  for (;;) {
    const Result result = TakeLogicalLine(line);
    if (result != Result::Line) return result;
    if (IsBlankOrComment(line.Text)) continue;
    line.Text = TrimLeft(line.Text);
    return result;
  }
}

bool IsBlankOrComment(std::string_view line) {
  const std::size_t first = line.find_first_not_of(' ');
  return first == std::string_view::npos || line[first] == '\'';
}

std::string_view WithoutComment(std::string_view text) {
  return text.substr(0, text.find('\''));
}

CommandLine SplitCommand(std::string_view line, const CommandSet& commands) {
  std::size_t split = WithoutComment(line).find('=');
  if (split == std::string_view::npos || BeginsCondition(line, commands)) split = line.find(' ');
  if (split == std::string_view::npos) return {line, {}};
  return {Trim(line.substr(0, split)), line.substr(split + 1)};
}

bool IsLabelLine(std::string_view line) {
  line = WithoutComment(line);
  return line.find(':') != std::string_view::npos && line.find('=') == std::string_view::npos;
}

}  // namespace vaxel
