#include "interpreter/loop_table.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/text.h"
#include "interpreter/command_row.h"
#include "interpreter/script_fault.h"
#include "interpreter/work_meter.h"

namespace vaxel {
namespace {

// Few scripts have loops: the others are not read once more for them.
bool MayHoldLoops(std::string_view text) {
  const auto is = [&](std::size_t i, char lower) { return (text[i] | 0x20) == lower; };
  for (std::size_t i = 0; i + 4 <= text.size(); ++i) {
    if (is(i, 'p') && is(i + 1, 'o') && is(i + 2, 'u') && is(i + 3, 'r')) return true;
    if (is(i, 's') && is(i + 1, 'u') && is(i + 2, 'i') && is(i + 3, 'v')) return true;
  }
  return false;
}

struct LoopLine {
  bool Begins = false;
  std::string_view Parameters;
};

// Which character separates the name from what follows it is not known before the script is run.
bool BeginsWithName(std::string_view text, std::string_view name) {
  if (!EqualIgnoringCase(text.substr(0, name.size()), name)) return false;
  if (text.size() == name.size()) return true;
  const char next = text[name.size()];
  return !IsDigit(next) && !IsLetter(next) && next != '_';
}

// A line that begins or ends a loop. Notes after the last command of a script may begin with the same words:
// without a "=" or a variable's name they make no loop.
std::optional<LoopLine> ReadLoopLine(std::string_view line, const CommandSet& commands) {
  const CutCommand command = SplitCommand(line, commands);
  const CommandRow* const row = commands.Find(command.Keyword);
  if (!row || row->Rules.Block == BlockEdge::None) return std::nullopt;
  const bool begins = row->Rules.Block == BlockEdge::Begin;
  const std::string_view parameters = Trim(WithoutComment(command.Parameters));
  const bool isMeant = begins ? WithoutComment(line).find('=') != std::string_view::npos : parameters.empty();
  if (!isMeant && !parameters.starts_with('%')) return std::nullopt;
  return LoopLine{begins, parameters};
}

}  // namespace

void LoopTable::Collect(std::string_view text, LineReader& reader, const CommandSet& commands,
                        LogicalLine& line, WorkMeter& work) {
  loops_.clear();
  if (!MayHoldLoops(text)) return;
  std::vector<Loop> open;
  while (reader.Next(line) == LineReader::Result::Line) {
    work.Add(WorkMeter::Line / 64 + line.Text.size());
    const auto edge = ReadLoopLine(line.Text, commands);
    if (!edge) continue;
    const Label next{reader.ReadPos, reader.NextNumber()};
    if (edge->Begins) {
      open.push_back({next, {}, line.Number, 0, std::string(edge->Parameters)});
      continue;
    }
    if (open.empty()) throw ScriptFault(FaultReason::LoopNotBegun);
    Loop loop = std::move(open.back());
    open.pop_back();
    if (!edge->Parameters.empty() && !BeginsWithName(loop.Parameters, edge->Parameters)) {
      throw ScriptFault(FaultReason::LoopOfAnother,
                        Shorten(loop.Parameters.substr(0, loop.Parameters.find_first_of(" ,;")), 60));
    }
    loop.End = next;
    loop.LastLine = line.Number;
    loops_.push_back(std::move(loop));
  }
  if (open.empty()) return;
  reader.Seek(0, 1);
  do reader.Next(line);
  while (line.Number != open.back().FirstLine);
  throw ScriptFault(FaultReason::LoopNotEnded);
}

Loop* LoopTable::BeginningAt(std::uint32_t line) {
  const auto found =
      std::find_if(loops_.begin(), loops_.end(), [&](const Loop& loop) { return loop.FirstLine == line; });
  return found == loops_.end() ? nullptr : &*found;
}

Loop* LoopTable::EndingAt(std::uint32_t line) {
  const auto found =
      std::find_if(loops_.begin(), loops_.end(), [&](const Loop& loop) { return loop.LastLine == line; });
  return found == loops_.end() ? nullptr : &*found;
}

void LoopTable::CheckJump(std::uint32_t from, std::uint32_t to) const {
  for (const Loop& loop : loops_) {
    if (loop.Holds(to) && !loop.Holds(from)) {
      throw ScriptFault(FaultReason::JumpIntoLoop, std::to_string(loop.FirstLine));
    }
  }
}

}  // namespace vaxel
