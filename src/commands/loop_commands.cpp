#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "commands/handlers.h"
#include "interpreter/compiled_line.h"
#include "interpreter/evaluator.h"
#include "interpreter/program.h"
#include "interpreter/script_fault.h"
#include "interpreter/script_lines.h"

namespace vaxel {
namespace {

// The parts between separators that stand in no parentheses: those within belong to a function.
std::vector<std::string_view> SplitOutsideParentheses(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  int depth = 0;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')') --depth;
    if (depth > 0 || !text.substr(i).starts_with(separator)) continue;
    parts.push_back(Trim(text.substr(begin, i - begin)));
    begin = i + separator.size();
    i = begin - 1;
  }
  parts.push_back(Trim(text.substr(begin)));
  return parts;
}

// An expression that is worked out again and again, with what the variables hold.
class Bound {
 public:
  Bound(const RunContext& run, std::string_view text) : text_(text) {
    const ReferenceScope scope{run.Level().Variables, run.Separators};
    if (!text.empty()) expression_ = program_.Add(text, run.Separators.First, &scope);
    isProgram_ = !text.empty() && expression_.IsComplete;
  }

  double Value(const RunContext& run) const {
    const VariableTable& variables = run.Level().Variables;
    if (isProgram_ && variables.HoldNumbers(expression_.Variables)) {
      return program_.Compute(expression_, variables);
    }
    const std::string text = run.Substitute(text_);
    const Evaluation value = Evaluate(text, run.Separators.First);
    if (!value.HasValue || !value.Complete) FailExpression(text);
    return value.Value;
  }

 private:
  std::string_view text_;
  Program program_;
  Expression expression_;
  bool isProgram_ = false;
};

// The bounds of a loop differ by a whole number of steps when they do so but for rounding.
double PassCount(double from, double to, double step) {
  constexpr double tolerance = 1e-9;
  const double steps = (to - from) / step;
  return steps < -tolerance ? 0 : std::floor(steps + tolerance * std::max(1.0, std::abs(steps))) + 1;
}

// The line that a command goes on at, looked for until it is kept.
class LinkedLine {
 public:
  void GoTo(ScriptLines& lines, const Label& place, bool isBack) {
    if (line_) {
      lines.GoTo(line_);
    } else {
      line_ = lines.GoTo(place, isBack);
    }
  }

 private:
  ScriptLine* line_ = nullptr;
};

class CompiledPour : public CompiledCommand {
 public:
  explicit CompiledPour(std::string_view text) : text_(text) {}

  void Run(RunContext& run) override {
    ScriptLevel& level = run.Level();
    if (bounds_.empty()) Read(run);
    Loop* const loop = level.Loops.BeginningAt(level.Line.Number);
    if (!loop) throw ScriptFault(FaultReason::LoopNotAlone);
    loop->From = bounds_[0].Value(run);
    const double to = bounds_[1].Value(run);
    loop->Step = bounds_.size() > 2 ? bounds_[2].Value(run) : 1;
    if (loop->Step == 0) throw ScriptFault(FaultReason::LoopStep);
    loop->PassCount = PassCount(loop->From, to, loop->Step);
    loop->Pass = 0;
    if (loop->PassCount > 0) {
      loop->Counter = level.Variables.SlotFor(name_);
      level.Variables.SetNumberAt(loop->Counter, loop->From);
    } else {
      after_.GoTo(*level.Lines, loop->End, false);
    }
  }

 private:
  void Read(const RunContext& run) {
    const auto parts = SplitOutsideParentheses(text_, run.Separators.First);
    name_ = run.SettableName(parts.front());
    constexpr std::size_t least = 3, most = 4;
    for (std::size_t n = 2; n <= least; ++n) {
      if (parts.size() < n || parts[n - 1].empty()) {
        throw ScriptFault(FaultReason::MissingParameter, std::to_string(n));
      }
    }
    if (parts.size() > most) throw ScriptFault(FaultReason::LoopParameters);
    const std::size_t count = parts.back().empty() ? least : parts.size();
    for (std::size_t n = 1; n < count; ++n) bounds_.emplace_back(run, parts[n]);
  }

  std::string_view text_;
  std::string name_;
  std::deque<Bound> bounds_;  // from, to and, when there is one, the step
  LinkedLine after_;
};

class CompiledSuivant : public CompiledCommand {
 public:
  void Run(RunContext& run) override {
    ScriptLevel& level = run.Level();
    if (!loop_) Find(level);
    if (++loop_->Pass >= loop_->PassCount) return;
    level.Variables.SetNumberAt(loop_->Counter, loop_->From + loop_->Pass * loop_->Step);
    body_.GoTo(*level.Lines, loop_->Body, true);
  }

 private:
  void Find(ScriptLevel& level) {
    Loop* const loop = level.Loops.EndingAt(level.Line.Number);
    if (!loop) throw ScriptFault(FaultReason::LoopNotAlone);
    loop_ = loop;
  }

  Loop* loop_ = nullptr;
  LinkedLine body_;
};

}  // namespace

std::unique_ptr<CompiledCommand> CompilePour(std::string_view, std::string_view text) {
  return std::make_unique<CompiledPour>(text);
}

std::unique_ptr<CompiledCommand> CompileSuivant(std::string_view, std::string_view) {
  return std::make_unique<CompiledSuivant>();
}

}  // namespace vaxel
