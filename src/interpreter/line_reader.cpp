#include "interpreter/line_reader.h"

#include <algorithm>

#include "base/text.h"
#include "interpreter/command_row.h"
#include "interpreter/variables.h"

namespace vaxel {
namespace {

// The length of the mark at the end of a line that goes on in the next one, a blank and "_"; else 0.
std::size_t ContinuationLength(std::string_view line) {
  if (!line.ends_with('_')) return 0;
  const std::string_view before = line.substr(0, line.size() - 1);
  for (const std::size_t length : {1U, 2U, 3U}) {
    if (before.size() >= length && BlankLength(before.substr(before.size() - length)) == length) {
      return length + 1;
    }
  }
  return 0;
}

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
  isJoined_ = hasTabs_ || IsContinued(physical);
  if (!isJoined_) {
    line.Text = TrimLeft(physical);
    return Result::Line;
  }
  assembled_ = physical;
  std::replace(assembled_.begin(), assembled_.end(), '\t', ' ');
  assembled_.erase(0, assembled_.size() - TrimLeft(assembled_).size());
  Result result = Result::Line;
  while (const std::size_t mark = ContinuationLength(assembled_)) {
    if (ReadPos >= text_.size()) {
      result = Result::Unfinished;
      break;
    }
    assembled_.resize(assembled_.size() - mark);
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
  line = TrimLeft(line);
  return line.empty() || line.front() == '\'';
}

bool IsContinued(std::string_view line) {
  return ContinuationLength(line) > 0;
}

std::string_view WithoutComment(std::string_view text) {
  return text.substr(0, text.find('\''));
}

CutCommand SplitCommand(std::string_view line, const CommandSet& commands) {
  std::size_t split = WithoutComment(line).find('=');
  if (split != std::string_view::npos && !BeginsCondition(line, commands)) {
    return {Trim(line.substr(0, split)), line.substr(split + 1)};
  }
  split = FindBlank(line);
  if (split == std::string_view::npos) return {line, {}};
  return {line.substr(0, split), line.substr(split + BlankLength(line.substr(split)))};
}

std::optional<LabelLine> ReadLabelLine(std::string_view line, const CommandSet& commands,
                                       const Separators& separators) {
  line = WithoutComment(line);
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view name = line.substr(0, colon);
  const std::string_view behind = line.substr(colon + 1);
  const std::size_t equals = line.find('=');
  // Behind a "=" a ":" is a part of the parameters, and "a: b = c" has no keyword that could be a label.
  if (equals < colon || (equals != std::string_view::npos && !Trim(line.substr(0, equals)).ends_with(':'))) {
    return std::nullopt;
  }
  if (const CommandRow* const row = commands.Find(SplitCommand(line, commands).Keyword)) {
    const bool isLabel = row->Rules.IsAddition && EqualIgnoringCase(Trim(name), row->Keyword);
    if (!isLabel) return std::nullopt;
  }
  const bool isGlued = !behind.empty() && BlankLength(behind) == 0;
  if (isGlued && commands.Find(Trim(name))) return std::nullopt;
  for (const std::string_view mark :
       {std::string_view(","), std::string_view("§"), std::string_view(separators.First),
        std::string_view(separators.Second)}) {
    if (name.find(mark) != std::string_view::npos) return std::nullopt;
  }
  return LabelLine{name, Trim(behind), equals == std::string_view::npos};
}

}  // namespace vaxel
