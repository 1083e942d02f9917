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
#include "interpreter/comparison.h"
#include "interpreter/compiled_line.h"
#include "interpreter/run.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::size_t ShownLength = 200;

class CompiledGoto : public CompiledCommand {
 public:
  explicit CompiledGoto(std::string_view target) : jump_(target) {}

  void Run(RunContext& run) override {
    if (jump_.Take(run)) HandleEvents(run);
  }

 private:
  Jump jump_;
};

// A comparison, and what comes of it.
class CompiledConditional : public CompiledCommand {
 public:
  CompiledConditional(std::string_view text, bool comparesTexts)
      : text_(text), comparesTexts_(comparesTexts) {}

  void Run(RunContext& run) override {
    HandleEvents(run);
    if (!isSplit_) Split(run);
    const VariableTable& variables = run.Level().Variables;
    const bool isTrue = comparison_.IsReady(variables)
                            ? comparison_.Holds(variables)
                            : IsTrue(run.Substitute(conditional_.Condition), comparesTexts_, run.Separators);
    if (!isTrue) return;
    if (jump_) {
      jump_->Take(run);
    } else if (behind_) {
      behind_->Run(run);
    } else {
      const std::string target = run.Substitute(conditional_.Rest);
      Jump(Trim(target)).Take(run);
    }
  }

 private:
  void Split(const RunContext& run) {
    conditional_ = SplitConditional(text_);
    isSplit_ = true;
    if (!conditional_.Jumps) {
      behind_.emplace(conditional_.Rest);
    } else if (conditional_.Rest.find('%') == std::string_view::npos) {
      jump_.emplace(conditional_.Rest);
    }
    if (!comparesTexts_) comparison_.Compile(conditional_.Condition, run);
  }

  std::string_view text_;
  bool comparesTexts_;
  bool isSplit_ = false;
  Conditional conditional_;
  CompiledComparison comparison_;
  std::optional<Jump> jump_;
  std::optional<BehindLine> behind_;
};

// The file that a script names; a script's name may lack its ".dat". It is a fault when there is no such
// file.
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
    name = run.SettableName(Trim(text.substr(0, equals)));
    text = text.substr(equals + 1);
  }
  std::string value(TrimText(Replaced(run, text)));
  std::replace(value.begin(), value.end(), ',', '.');
  return {name, std::move(value)};
}

}  // namespace

std::unique_ptr<CompiledCommand> CompileIF(std::string_view, std::string_view text) {
  return std::make_unique<CompiledConditional>(text, false);
}

std::unique_ptr<CompiledCommand> CompileIFT(std::string_view, std::string_view text) {
  return std::make_unique<CompiledConditional>(text, true);
}

void RunGoto(RunContext& run, const Parameters& parameters) {
  if (Jump(Trim(parameters.Whole())).Take(run)) HandleEvents(run);
}

std::unique_ptr<CompiledCommand> CompileGoto(std::string_view, std::string_view text) {
  if (text.find('%') != std::string_view::npos) return nullptr;
  return std::make_unique<CompiledGoto>(Trim(text));
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
  // They stand after an empty parameter, as one variable may hold both coordinates.
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
  if (parameters.IsEmpty(1)) throw ScriptFault(FaultReason::MissingName, "LVar = %L");
  DataFile& data = run.Level().Data;
  if (!data.IsOpen()) throw ScriptFault(FaultReason::NoDataFile);
  const std::string_view line = TrimText(data.Next());
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
  // Nobody shall be asked in vain.
  const std::string name = run.SettableName(Trim(text.substr(comma + run.Separators.First.size())));
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
