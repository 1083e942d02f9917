#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "base/text_encoding.h"
#include "commands/assignment.h"
#include "commands/handlers.h"
#include "commands/point_notation.h"
#include "interpreter/command_line.h"
#include "interpreter/comparison.h"
#include "interpreter/expression.h"
#include "interpreter/run.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::size_t ShownLength = 200;

// A jump to one place, which is looked for the first time alone.
class PreparedJump {
 public:
  explicit PreparedJump(std::string_view target) : target_(target) {}

  // Whether that is a jump back.
  bool Take(RunContext& run) {
    ScriptLevel& level = run.Level();
    if (line_) {
      level.Jump = {true, line_};
    } else {
      isBack_ = JumpTo(run, target_);
      level.Jump.Found = &line_;
    }
    return isBack_;
  }

 private:
  std::string target_;
  PreparedLine* line_ = nullptr;
  bool isBack_ = false;
};

class PreparedGoto : public PreparedCommand {
 public:
  explicit PreparedGoto(std::string_view target) : jump_(target) {}

  bool Run(RunContext& run) override {
    if (jump_.Take(run)) HandleEvents(run);
    return true;
  }

 private:
  PreparedJump jump_;
};

// A comparison of numbers, and what comes of it.
class PreparedConditional : public PreparedCommand {
 public:
  PreparedConditional(Relation how, Expression left, Expression right)
      : how_(how), left_(std::move(left)), right_(std::move(right)) {}

  void Jump(std::string_view target) { jump_.emplace(target); }
  void Then(std::string_view line) { line_ = line; }

  bool Run(RunContext& run) override {
    const VariableTable& variables = run.Level().Variables;
    if (!left_.IsReady(variables) || !right_.IsReady(variables)) return false;
    HandleEvents(run);
    const double left = left_.Compute(variables);
    if (!Holds(how_, left, right_.Compute(variables))) return true;
    if (jump_) {
      jump_->Take(run);
    } else {
      // Not before it is run: the command may be a condition itself, and so on.
      if (!isPrepared_) command_ = PrepareCommandLine(run, line_);
      isPrepared_ = true;
      RunCommandLine(run, line_, command_.get());
    }
    return true;
  }

 private:
  Relation how_;
  Expression left_, right_;
  std::optional<PreparedJump> jump_;
  std::string_view line_;
  std::unique_ptr<PreparedCommand> command_;
  bool isPrepared_ = false;
};

void RunConditional(RunContext& run, const Parameters& parameters, bool asText) {
  HandleEvents(run);
  const Conditional conditional = SplitConditional(parameters.Whole());
  if (!IsTrue(run.Substitute(conditional.Condition), asText, run.Separators)) return;
  if (conditional.Jumps) {
    JumpTo(run, Trim(run.Substitute(conditional.Rest)));
  } else {
    RunCommandLine(run, conditional.Rest);
  }
}

// The file that a script names; a script's name may lack its ".dat". A fault when there is none.
std::string RequireFile(RunContext& run, std::string_view name, bool isScript) {
  const std::string& script = run.Level().FileName;
  std::string found = run.Host.FindFile(script, name);
  const bool hasExtension = name.substr(name.find_last_of("/\\") + 1).find('.') != std::string_view::npos;
  if (found.empty() && isScript && !hasExtension)
    found = run.Host.FindFile(script, std::string(name) + ".dat");
  if (found.empty()) throw ScriptFault(FaultReason::FileMissing, Shorten(name, ShownLength));
  return found;
}

// The text of a file; name is how the script calls it.
std::string ReadTextFile(RunContext& run, const std::string& fileName, std::string_view name) {
  const std::string shown = Shorten(name, ShownLength);
  auto decoded = DecodeText(run.ReadFile(fileName, shown));
  if (!decoded) throw ScriptFault(FaultReason::NotAText, shown);
  return std::move(decoded->Text);
}

bool IsActive(const RunContext& run, std::string_view fileName) {
  const auto end = run.Levels.begin() + static_cast<std::ptrdiff_t>(run.CurrentLevel);
  return std::any_of(run.Levels.begin(), end, [&](const ScriptLevel& level) {
    return run.Host.FullFileName(level.FileName) == fileName;
  });
}

// One level more than there may be: the user chooses between the end of the run and going on without it.
void RefuseInclusion(RunContext& run, const std::string& fileName) {
  const ScriptLevel& level = run.Level();
  const bool isSelf = IsActive(run, run.Host.FullFileName(fileName));
  const TextId text = isSelf ? TextId::DepthExceededBySelf : TextId::DepthExceeded;
  const std::string message = run.Message(text, std::to_string(RunContext::MaxLevels));
  if (!run.Host.Confirm(BoxKind::IncludeDepth, level.FileName, level.Line.Number, "Vaxel", message)) return;
  run.Level().Text = "Loop";
  throw RunEnded{RunEnd::Failed};
}

// A coordinate that is left out is 0.
Point ReadPosition(const RunContext& run, const Parameters& parameters) {
  Point position = ReadPoint(parameters, 2, run.Surface.CurrentScriptPoint(), EmptyCoordinate::Reference);
  if (parameters.Trimmed(2).empty()) position.X = 0;
  if (parameters.Trimmed(3).empty()) position.Y = 0;
  return position;
}

// The text with its references replaced, or as it stands when it is marked as literal; the mark remains.
std::string Replaced(const RunContext& run, std::string_view text) {
  return IsLiteral(text) ? std::string(text) : run.Substitute(text);
}

// "%Name=value", or a value for the variable that is named by its place: "%1", "%2", …
std::pair<std::string, std::string> ReadArgument(const RunContext& run, std::string_view text,
                                                 std::size_t place) {
  std::string name = "%" + std::to_string(place);
  const std::size_t equals = text.find('=');
  if (Trim(text).starts_with('%') && equals != std::string_view::npos) {
    name = Trim(text.substr(0, equals));
    text = text.substr(equals + 1);
    run.RequireSettable(name);
  }
  std::string value(Trim(Replaced(run, text)));
  std::replace(value.begin(), value.end(), ',', '.');
  return {name, std::move(value)};
}

}  // namespace

void RunIF(RunContext& run, const Parameters& parameters) {
  RunConditional(run, parameters, false);
}

void RunIFT(RunContext& run, const Parameters& parameters) {
  RunConditional(run, parameters, true);
}

std::unique_ptr<PreparedCommand> PrepareIF(const RunContext& run, std::string_view, std::string_view text) {
  try {
    const Conditional conditional = SplitConditional(text);
    const Comparison comparison = SplitComparison(Trim(conditional.Condition));
    auto left = Expression::Prepare(comparison.Left, run.Separators);
    auto right = Expression::Prepare(comparison.Right, run.Separators);
    const bool isComputed = conditional.Jumps && conditional.Rest.find('%') != std::string_view::npos;
    if (!left || !right || isComputed) return nullptr;
    auto prepared =
        std::make_unique<PreparedConditional>(comparison.How, std::move(*left), std::move(*right));
    if (conditional.Jumps) {
      prepared->Jump(conditional.Rest);
    } else {
      prepared->Then(conditional.Rest);
    }
    return prepared;
  } catch (const ScriptFault&) {
    // It is reported where the line is run.
    return nullptr;
  }
}

void RunGoto(RunContext& run, const Parameters& parameters) {
  if (JumpTo(run, Trim(parameters.Whole()))) HandleEvents(run);
}

std::unique_ptr<PreparedCommand> PrepareGoto(const RunContext&, std::string_view, std::string_view text) {
  if (text.find('%') != std::string_view::npos) return nullptr;
  return std::make_unique<PreparedGoto>(Trim(text));
}

void RunStop(RunContext& run, const Parameters&) {
  run.EndLevel();
}

void RunFichier(RunContext& run, const Parameters& parameters) {
  // Files that include others many times run nearly for ever without any jump.
  HandleEvents(run);
  const std::string name(TextOf(Replaced(run, parameters.Text(1))));
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  const std::string fileName = RequireFile(run, name, true);
  if (run.CurrentLevel == RunContext::MaxLevels) {
    RefuseInclusion(run, fileName);
    return;
  }
  Inclusion inclusion{fileName, ReadTextFile(run, fileName, name), {}, {}};
  // Behind an empty parameter, as one variable may hold both coordinates.
  const std::string& separator = run.Separators.First;
  const std::string places = run.Substitute(separator + std::string(parameters.Text(2)) + separator +
                                            std::string(parameters.Text(3)));
  Parameters position;
  position.Assign(places, run.Separators);
  inclusion.Position = ReadPosition(run, position);
  constexpr std::size_t firstArgument = 4;
  for (std::size_t n = firstArgument; n <= parameters.Count(); ++n) {
    if (Trim(parameters.Text(n)).empty()) continue;
    inclusion.Variables.push_back(ReadArgument(run, parameters.Text(n), n - firstArgument + 1));
  }
  RunIncluded(run, std::move(inclusion));
}

void RunOpen(RunContext& run, const Parameters& parameters) {
  const std::string_view name = TextOf(parameters.Text(1));
  if (name.empty()) throw ScriptFault(FaultReason::MissingParameter, "1");
  run.Level().Data.Open(ReadTextFile(run, RequireFile(run, name, false), name));
}

void RunLVar(RunContext& run, const Parameters& parameters) {
  DataFile& data = run.Level().Data;
  if (!data.IsOpen()) throw ScriptFault(FaultReason::NoDataFile);
  const std::string_view line = Trim(data.Next());
  if (line.size() > MaxTextLength) throw ScriptFault(FaultReason::TextTooLong);
  run.SetVariable(parameters.Trimmed(1), line);
}

void RunInput(RunContext& run, const Parameters& parameters) {
  std::string_view text = parameters.Whole();
  // A blank keeps an answer from being taken for another form by how it begins.
  std::string_view form = " ";
  if (text.starts_with('=') || text.starts_with('<')) {
    form = text.substr(0, 1);
    text.remove_prefix(1);
  }
  const std::size_t comma = text.rfind(run.Separators.First);
  if (comma == std::string_view::npos) throw ScriptFault(FaultReason::MissingParameter, "2");
  const std::string prompt(TextOf(Replaced(run, text.substr(0, comma))));
  const std::string_view name = Trim(text.substr(comma + run.Separators.First.size()));
  // Nobody shall be asked in vain.
  run.RequireSettable(name);
  const ScriptLevel& level = run.Level();
  const std::string* const present = level.Variables.Find(name);
  const Answer answer = run.Host.Ask(level.FileName, level.Line.Number, prompt, present ? *present : "");
  switch (answer.How) {
    case Answer::Kind::Given:
      Assign(run, name, std::string(form) + answer.Text);
      break;
    case Answer::Kind::Cancelled:
      run.EndAllLevels();
      break;
    case Answer::Kind::Unavailable:
      throw ScriptFault(FaultReason::NoAnswer, Shorten(prompt, ShownLength));
  }
}

}  // namespace vaxel
