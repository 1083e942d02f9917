#include "interpreter/run.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <utility>

#include "interpreter/script_fault.h"
#include "interpreter/text_encoding.h"
#include "resources/string_table.h"
#include "text/text.h"

namespace vaxel {
namespace {

constexpr int ErrorInLine = 114;
constexpr int OfTheFile = 115;
constexpr int ErrorInOrder = 119;
constexpr int UnknownCommand = 124;
constexpr int OrderHelp = 161;
constexpr int OfTheFileInError = 172;
constexpr int IncludedFrom = 279;

constexpr std::size_t ReportedLineLength = 300;
constexpr int MaxCommandDepth = 100;

bool NamesList(VariableUse use, std::size_t parameter) {
  switch (use) {
    case VariableUse::ValueLists:
      return parameter % 4 == 1;
    case VariableUse::ValueTextLists:
      return parameter % 4 == 1 || parameter % 4 == 2;
    case VariableUse::OrientedValueTextLists:
      return parameter % 4 == 2 || parameter % 4 == 3;
    case VariableUse::Replaced:
    case VariableUse::Raw:
      break;
  }
  return false;
}

// Replaces the references of each parameter as written. One value may bring several parameters, which then
// count in the numbers of those behind it.
std::string ReplaceVariables(const RunContext& run, std::string_view text, const CommandRow& row) {
  const Separators& separators = run.Separators;
  std::string replaced;
  for (std::size_t number = 1;;) {
    const bool isText = row.TextFrom != 0 && number >= row.TextFrom;
    const std::size_t end = isText ? std::string_view::npos : text.find(separators.First);
    std::string_view parameter = text.substr(0, end);
    std::string_view kept;
    if (IsLiteral(parameter)) {
      std::swap(kept, parameter);
    } else if (NamesList(row.Variables, number)) {
      const std::size_t part = std::min(parameter.size(), parameter.find(separators.Second));
      kept = parameter.substr(part);
      parameter = parameter.substr(0, part);
    }
    const std::string value = run.Substitute(parameter);
    if (replaced.size() + value.size() + kept.size() > MaxTextLength) {
      throw ScriptFault(FaultReason::TextTooLong);
    }
    replaced += value;
    replaced += kept;
    if (end == std::string_view::npos) return replaced;
    replaced += separators.First;
    text.remove_prefix(end + separators.First.size());
    number += 1 + CountOf(value, separators.First);
  }
}

void CheckOrder(RunContext& run, const CommandRow& row) {
  if (run.InMainScript() && run.OrderState > row.OrderLimit) {
    run.OrderState = static_cast<std::int16_t>(-run.OrderState | row.Sets);
    throw ScriptFault(FaultKind::Order, FaultReason::None, {});
  }
  run.OrderState = static_cast<std::int16_t>(run.OrderState | row.Sets);
}

bool Applies(const RunContext& run, Scope scope) {
  switch (scope) {
    case Scope::ScreenOnly:
      return !run.Surface.IsPrinter();
    case Scope::PrinterOnly:
      return run.Surface.IsPrinter();
    case Scope::MainScriptOnly:
      return run.InMainScript();
    case Scope::Everywhere:
      break;
  }
  return true;
}

void RunCommand(RunContext& run, const CommandRow& row, std::string_view text, Parameters& parameters) {
  if (!Applies(run, row.Where)) return;
  if (!row.Handler) throw ScriptFault(FaultReason::NotAvailable, std::string(row.Spelling));
  if (row.TextFrom == 0) text = WithoutComment(text);
  if (row.Variables != VariableUse::Raw && text.find('%') != std::string_view::npos) {
    run.ParamText = ReplaceVariables(run, text, row);
    text = run.ParamText;
  }
  CheckOrder(run, row);
  parameters.Assign(text, run.Separators);
  row.Handler(run, parameters);
}

void RunLine(RunContext& run, std::string_view line, Parameters& parameters) {
  const CommandLine command = SplitCommand(line);
  run.Keyword = UpperCase(command.Keyword);
  run.KeywordText = command.Keyword;
  if (const CommandRow* row = run.Commands.Find(run.Keyword)) {
    RunCommand(run, *row, command.Parameters, parameters);
  } else if (!run.Keyword.ends_with(':') && !IsLabelLine(line)) {
    const std::string_view suggestion = run.Commands.Suggest(run.Keyword);
    throw ScriptFault(FaultKind::UnknownCommand,
                      suggestion.empty() ? FaultReason::None : FaultReason::DidYouMean,
                      std::string(suggestion));
  }
}

bool IsVariableLine(std::string_view line) {
  return line.front() == '%' && WithoutComment(line).find('=') == std::string_view::npos;
}

// A line that is nothing but a reference to a variable is the command line that the variable holds, as it
// stands: which references in it are replaced is for the command to say. Empty when there is nothing to run.
std::string_view ResolveVariableLine(const ScriptLevel& level, std::string_view line,
                                     const Separators& separators) {
  constexpr int maxDepth = 100;
  for (int depth = 0; IsVariableLine(line); ++depth) {
    const std::string_view name = ReferenceName(line, separators);
    const std::string* value = level.Variables.Find(name);
    if (!value) throw ScriptFault(FaultReason::UnknownVariable, Shorten(name, 60));
    if (depth == maxDepth) throw ScriptFault(FaultReason::CircularVariable, Shorten(name, 60));
    line = Trim(*value);
    if (IsBlankOrComment(line)) return {};
  }
  return line;
}

// Runs a logical line, or the one that a variable holds.
void RunLogicalLine(RunContext& run, std::string_view line, Parameters& parameters) {
  if (!IsVariableLine(line)) {
    RunLine(run, line, parameters);
    return;
  }
  // A copy: the command may give the variable another value.
  const std::string held(ResolveVariableLine(run.Level(), line, run.Separators));
  if (!held.empty()) RunLine(run, held, parameters);
}

void RunLevel(RunContext& run) {
  ScriptLevel& level = run.Level();
  level.Reader = LineReader(level.Text);
  level.Labels.Collect(level.Reader, level.Line);
  level.Reader.Seek(0, 1);
  Parameters parameters;
  for (;;) {
    const LineReader::Result result = level.Reader.Next(level.Line);
    if (result == LineReader::Result::End) return;
    // What an included script draws belongs to the line that includes it.
    if (run.InMainScript()) run.Surface.SourceLine = level.Line.Number;
    if (result == LineReader::Result::Unfinished) throw ScriptFault(FaultReason::UnfinishedLine);
    RunLogicalLine(run, level.Line.Text, parameters);
  }
}

std::string ReportText(const RunContext& run, const ScriptLevel& level, const ScriptFault& fault) {
  const auto message = [&](int id) { return std::string(TableString(run.LangBase + id)); };
  const std::string line = Shorten(level.Line.Text, ReportedLineLength);
  std::string reason = fault.Description(run.LangBase);
  for (std::size_t i = run.CurrentLevel - 1; i > 0; --i) {
    const ScriptLevel& including = run.Levels[i - 1];
    const std::string place = including.FileName + ":" + std::to_string(including.Line.Number);
    if (!reason.empty()) reason += '\n';
    reason +=
        TableString(run.LangBase + IncludedFrom, place, Shorten(including.Line.Text, ReportedLineLength));
  }
  switch (fault.Kind()) {
    case FaultKind::Order:
      return message(ErrorInOrder) + line + message(OrderHelp);
    case FaultKind::UnknownCommand: {
      const std::string text = message(UnknownCommand) + line + " " + message(OfTheFile) + level.FileName;
      return reason.empty() ? text : text + "\n\n" + reason;
    }
    case FaultKind::Line:
      break;
  }
  return message(ErrorInLine) + line + message(OfTheFileInError) + level.FileName + "\n\n" + reason;
}

RunEnd Report(RunContext& run, const ScriptFault& fault) {
  const ScriptLevel& level = run.Level();
  run.Host.ProcessPendingEvents();
  run.LastError = ReportText(run, level, fault);
  run.Host.ShowError({level.FileName, level.Line.Number, run.LastError});
  return RunEnd::Failed;
}

void Reset(RunContext& run) {
  run.CurrentLevel = 1;
  run.CommandDepth = 0;
  run.Separators = {};
  run.OrderState = 0;
  run.Support = {};
  run.NextZoom.reset();
  run.LastText.reset();
  run.ScreenCentre = {};
  run.ReplacedFonts.clear();
  run.Pictures.clear();
  run.LastError.clear();
  run.SetPen({});
}

// The pen, the centre and the origin of the including script, which are as before when the included one ends.
class IncluderState {
 public:
  explicit IncluderState(RunContext& run)
      : run_(run),
        centre_{run.Surface.CentreX, run.Surface.CentreY},
        shift_{run.Surface.CTX, run.Surface.CTY},
        pen_(run.Level().CurrentPen) {}

  void PutBack() {
    run_.Surface.CentreX = centre_.X;
    run_.Surface.CentreY = centre_.Y;
    run_.Surface.CTX = shift_.X;
    run_.Surface.CTY = shift_.Y;
    run_.SetPen(pen_);
  }

 private:
  RunContext& run_;
  Point centre_, shift_;
  Pen pen_;
};

// The place of a physical line; none beyond the text.
std::optional<std::size_t> PlaceOfLine(std::string_view text, double number) {
  std::size_t position = 0;
  for (double line = 1; line < number; ++line) {
    const std::size_t end = text.find('\n', position);
    if (end == std::string_view::npos) return std::nullopt;
    position = end + 1;
  }
  return position < text.size() && number >= 1 ? std::optional(position) : std::nullopt;
}

std::optional<Label> PlaceOf(const ScriptLevel& level, std::string_view target) {
  if (const Label* label = level.Labels.Find(target)) return *label;
  if (!IsNumber(target)) return std::nullopt;
  const double number = LeadingNumber(target);
  const auto position = number == std::trunc(number) ? PlaceOfLine(level.Text, number) : std::nullopt;
  if (!position) return std::nullopt;
  return Label{*position, static_cast<std::uint32_t>(number)};
}

}  // namespace

void HandleEvents(RunContext& run) {
  switch (run.Host.ProcessPendingEvents()) {
    case RunSignal::Abort:
      throw RunEnded{RunEnd::Aborted};
    case RunSignal::TimeUp:
      throw ScriptFault(FaultReason::TimeUp);
    case RunSignal::GoOn:
      break;
  }
}

void JumpTo(RunContext& run, std::string_view target) {
  ScriptLevel& level = run.Level();
  const std::optional<Label> place = PlaceOf(level, target);
  if (!place) throw ScriptFault(FaultReason::UnknownTarget, Shorten(target, 60));
  if (place->LineNumber <= level.Line.Number) HandleEvents(run);
  level.Reader.Seek(place->Position, place->LineNumber);
}

void RunCommandLine(RunContext& run, std::string_view line) {
  if (line.empty() || IsBlankOrComment(line)) return;
  if (++run.CommandDepth > MaxCommandDepth)
    throw ScriptFault(FaultReason::CircularVariable, Shorten(line, 60));
  Parameters parameters;
  RunLogicalLine(run, line, parameters);
  --run.CommandDepth;
}

void RunIncluded(RunContext& run, Inclusion inclusion) {
  IncluderState includer(run);
  const Pen pen = run.Level().CurrentPen;
  ++run.CurrentLevel;
  ScriptLevel& level = run.Level();
  level.Text = NormaliseLineEnds(std::move(inclusion.Text));
  level.FileName = std::move(inclusion.FileName);
  level.Line = {};
  level.Variables = {};
  level.Data = {};
  level.PositionX = inclusion.Position.X;
  level.PositionY = inclusion.Position.Y;
  for (const auto& [name, value] : inclusion.Variables) level.Variables.Set(name, value);
  run.SetPen(pen);
  run.Surface.CentreX += inclusion.Position.X;
  run.Surface.CentreY += inclusion.Position.Y;
  run.Surface.CTX = run.Surface.CTY = 0;
  RunLevel(run);
  --run.CurrentLevel;
  includer.PutBack();
}

RunEnd RunScript(RunContext& run, const RunTarget& target, std::string text, std::string_view fileName) {
  if (text.empty()) return RunEnd::Empty;
  run.Surface.Begin(target);
  Reset(run);
  ScriptLevel& level = run.Level();
  level.Text = NormaliseLineEnds(std::move(text));
  level.FileName = fileName;
  level.Line = {};
  level.Data = {};
  run.Host.ProcessPendingEvents();
  try {
    RunLevel(run);
  } catch (const RunEnded& ended) {
    return ended.How;
  } catch (const ScriptFault& fault) {
    return Report(run, fault);
  } catch (const OperationLimitExceeded&) {
    return Report(run, ScriptFault(FaultReason::TooManyOperations));
  } catch (const TextLimitExceeded&) {
    return Report(run, ScriptFault(FaultReason::TooMuchText));
  } catch (const PictureLimitExceeded&) {
    return Report(run, ScriptFault(FaultReason::TooManyPictures));
  } catch (const CoordinateOverflow&) {
    return Report(run, ScriptFault(FaultReason::Overflow));
  } catch (const std::bad_alloc&) {
    return Report(run, ScriptFault(FaultReason::OutOfMemory));
  }
  return RunEnd::Completed;
}

}  // namespace vaxel
