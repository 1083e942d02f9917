#include "interpreter/run.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "base/text_encoding.h"
#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

constexpr std::size_t ReportedLineLength = 300;
constexpr std::size_t ShownValueLength = 60;

void CompileLine(RunContext& run, ScriptLine& line) {
  if (line.IsUnfinished) throw ScriptFault(FaultReason::UnfinishedLine);
  line.Command.Compile(run, line.Line.Text);
  line.Version = run.SeparatorsVersion;
}

void NameOrigin(RunContext& run) {
  run.Surface.ComesFromFile(run.InMainScript() ? std::string_view() : run.Level().FileName);
}

void RunLevel(RunContext& run) {
  ScriptLevel& level = run.Level();
  ScriptLines& lines = *level.Lines;
  lines.Begin(level.Text, !run.IsStraight);
  level.Labels.Collect(lines.Reader, level.Line, run.Commands, run.Separators, run.Work);
  lines.Reader.Seek(0, 1);
  level.Loops.Collect(level.Text, lines.Reader, run.Commands, level.Line, run.Work);
  lines.Reader.Seek(0, 1);
  NameOrigin(run);
  while (ScriptLine* const line = lines.Next()) {
    level.Line = line->Line;
    // What an included script draws belongs to the line that includes it.
    if (run.InMainScript()) run.Surface.SourceLine = level.Line.Number;
    run.Surface.ComesFromLine(level.Line.Number);
    run.Work.Add(WorkMeter::Line + level.Line.Text.size());
    if (line->Version != run.SeparatorsVersion) CompileLine(run, *line);
    line->Command.Run(run);
  }
}

std::string ShownName(const RunContext& run, const ScriptLevel& level) {
  return level.FileName.empty() ? std::string(run.Message(TextId::UnsavedScript)) : level.FileName;
}

void AddSentence(std::string& text, std::string_view sentence) {
  if (!text.empty()) text += '\n';
  text += sentence;
}

// The text before an apostrophe that begins a comment directly behind a letter, where a word may have been
// meant to go on; empty where there is none.
std::string_view CutByApostrophe(const RunContext& run, std::string_view line) {
  const CommandRow* const row = run.Commands.Find(SplitCommand(line, run.Commands).Keyword);
  const std::string_view before = WithoutComment(line);
  const bool keepsApostrophes = row && !row->TakesComments();
  if (keepsApostrophes || before.size() == line.size() || before.empty()) return {};
  const char last = before.back();
  const bool isLetter = IsLetter(last) || static_cast<unsigned char>(last) >= 0x80;
  return isLetter ? before.substr(before.find_last_of(" ,=", before.size()) + 1) : std::string_view();
}

// "%A = 3, %B = 0": what the variables hold that the line names; the one that it sets is not among them. Of a
// line with a great many references the first are looked at, and of each what a variable's name may take with
// what ends it.
std::string ValuesIn(const RunContext& run, std::string_view line) {
  constexpr std::size_t mostNames = 6, mostLookedAt = 1000, brackets = 10;
  const VariableTable& variables = run.Level().Variables;
  const std::size_t enough = variables.LongestName() + brackets +
                             std::max(run.Separators.First.size(), run.Separators.Second.size());
  std::vector<std::string> names;
  std::string values;
  std::size_t lookedAt = 0;
  for (std::size_t at = line.find('%', 1);
       at != std::string_view::npos && names.size() < mostNames && lookedAt < mostLookedAt;
       at = line.find('%', at + 1), ++lookedAt) {
    const std::string name =
        UpperCase(NameOf(ReferenceAt(line.substr(at, enough), variables, run.Separators)));
    const std::size_t slot = variables.SlotOf(name);
    if (slot == VariableTable::MaxVariables || std::find(names.begin(), names.end(), name) != names.end())
      continue;
    names.push_back(name);
    values += (values.empty() ? "" : "; ") + variables.VarNames[slot] + " = " +
              Shorten(variables.VarValues(slot), ShownValueLength);
  }
  return values;
}

// What is known of the line beside the reason: the text that was run for it, what its variables hold.
void AddCircumstances(const RunContext& run, const ScriptFault& fault, std::string& reason) {
  const ScriptLevel& level = run.Level();
  const std::string& lineRun = fault.LineRun();
  if (!lineRun.empty())
    AddSentence(reason, run.Message(TextId::LineRun, Shorten(lineRun, ReportedLineLength)));
  if (fault.DependsOnValues()) {
    const std::string values = ValuesIn(run, lineRun.empty() ? level.Line.Text : std::string_view(lineRun));
    if (!values.empty()) AddSentence(reason, run.Message(TextId::ValuesOfLine, values));
  }
  const std::string_view cut = CutByApostrophe(run, lineRun.empty() ? level.Line.Text : lineRun);
  if (!cut.empty()) AddSentence(reason, run.Message(TextId::ApostropheCuts, Shorten(cut, ShownValueLength)));
}

std::string ReportText(const RunContext& run, const ScriptLevel& level, const ScriptFault& fault) {
  const auto message = [&](TextId id) { return std::string(run.Message(id)); };
  const std::string line = Shorten(level.Line.Text, ReportedLineLength);
  std::string reason = fault.Description(run.Strings, run.LangBase);
  AddCircumstances(run, fault, reason);
  for (std::size_t i = run.CurrentLevel - 1; i > 0; --i) {
    const ScriptLevel& including = run.Levels[i - 1];
    const std::string place = ShownName(run, including) + ":" + std::to_string(including.Line.Number);
    AddSentence(reason,
                run.Message(TextId::IncludedFrom, place, Shorten(including.Line.Text, ReportedLineLength)));
  }
  const std::string behind = reason.empty() ? "" : "\n\n" + reason;
  switch (fault.Kind()) {
    case FaultKind::Order:
      return message(TextId::ErrorInOrder) + line + message(TextId::OrderOfCommands) + behind;
    case FaultKind::UnknownCommand:
      return message(TextId::UnknownCommand) + line + " " + message(TextId::OfTheFile) +
             ShownName(run, level) + behind;
    case FaultKind::Line:
      break;
  }
  return message(TextId::ErrorInLine) + line + message(TextId::OfTheFileInError) + ShownName(run, level) +
         "\n\n" + reason;
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
  run.Work.Reset();
  run.Separators = {};
  ++run.SeparatorsVersion;
  run.OrderState = 0;
  // One line may draw for a long time.
  run.Surface.OnMuchDrawn = [&run] { run.Work.Ask(); };
  run.Surface.OnLackingCharacter = [&run](std::string_view character) {
    run.Notice(TextId::CharacterLacks, character);
  };
  run.Support = {};
  run.Scales.Clear();
  run.PlainValues = {};
  run.NextZoom.reset();
  run.LastText.reset();
  run.ScreenCentre = {};
  run.ReplacedFonts.clear();
  run.Notices.Clear();
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

// The place of a physical line; there is none beyond the text. Behind the last line end stands an empty line.
std::optional<std::size_t> PlaceOfLine(std::string_view text, double number) {
  std::size_t position = 0;
  for (double line = 1; line < number; ++line) {
    const std::size_t end = text.find('\n', position);
    if (end == std::string_view::npos) return std::nullopt;
    position = end + 1;
  }
  return number >= 1 ? std::optional(position) : std::nullopt;
}

std::optional<Label> PlaceOf(const ScriptLevel& level, std::string_view target) {
  if (const Label* label = level.Labels.Find(target)) return *label;
  if (!IsNumber(target)) return std::nullopt;
  const double number = LeadingNumber(target);
  const auto position = number == std::trunc(number) ? PlaceOfLine(level.Text, number) : std::nullopt;
  if (!position) return std::nullopt;
  return Label{*position, static_cast<std::uint32_t>(number)};
}

// The line of the label that jumps do not know, as it stands behind the letters "stop"; 0 where there is
// none.
std::uint32_t LineBehindStop(const RunContext& run, std::string_view name) {
  const ScriptLevel& level = run.Level();
  if (level.Labels.StopLine() == 0) return 0;
  LineReader reader(level.Text);
  reader.Seek(level.Labels.BehindStop().Position, level.Labels.BehindStop().LineNumber);
  LogicalLine line;
  while (reader.Next(line) == LineReader::Result::Line) {
    const auto label = ReadLabelLine(line.Text, run.Commands, run.Separators);
    if (label && label->IsTarget && EqualIgnoringCase(label->Name, name)) return line.Number;
  }
  return 0;
}

[[noreturn]] void FailJump(const RunContext& run, std::string_view target) {
  if (target.empty()) throw ScriptFault(FaultReason::MissingTarget);
  const LabelTable& labels = run.Level().Labels;
  const std::string name = Shorten(target, 60);
  if (const Label* const label = labels.FindWithBlanks(target)) {
    throw ScriptFault(FaultReason::LabelWithBlank, name, std::to_string(label->LineNumber));
  }
  if (const std::uint32_t line = LineBehindStop(run, target)) {
    throw ScriptFault(FaultReason::LabelBehindStop, name, std::to_string(line),
                      std::to_string(labels.StopLine()));
  }
  throw ScriptFault(FaultReason::UnknownTarget, name);
}

}  // namespace

void WorkMeter::Ask() {
  before_ += done_;
  done_ = 0;
  const RunSignal signal = host_.ProcessPendingEvents();
  if (signal == RunSignal::TimeUp) throw ScriptFault(FaultReason::TimeUp);
  if (signal == RunSignal::Abort) throw RunEnded{RunEnd::Aborted};
}

bool Jump::Find(RunContext& run) {
  ScriptLevel& level = run.Level();
  const std::optional<Label> place = PlaceOf(level, target_);
  if (!place) FailJump(run, target_);
  level.Loops.CheckJump(level.Line.Number, place->LineNumber);
  isBack_ = place->LineNumber <= level.Line.Number;
  line_ = level.Lines->GoTo(*place, isBack_);
  return isBack_;
}

void RunIncluded(RunContext& run, Inclusion inclusion) {
  IncluderState includer(run);
  const Pen pen = run.Level().CurrentPen;
  ScriptLevel& level = run.Levels[run.CurrentLevel];
  // The variables are still a part of the including line: what is wrong with them is wrong there.
  level.Variables = {};
  for (const auto& [name, value] : inclusion.Variables) level.Variables.Set(name, value);
  ++run.CurrentLevel;
  level.Text = NormaliseLineEnds(std::move(inclusion.Text));
  level.FileName = std::move(inclusion.FileName);
  level.Line = {};
  level.Data = {};
  level.Position = inclusion.Position;
  run.SetPen(pen);
  run.Surface.CentreX += inclusion.Position.X;
  run.Surface.CentreY += inclusion.Position.Y;
  run.Surface.CTX = run.Surface.CTY = 0;
  RunLevel(run);
  --run.CurrentLevel;
  NameOrigin(run);
  run.Surface.ComesFromLine(run.Level().Line.Number);
  level.Variables = {};
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
  } catch (const DrawingFault& fault) {
    return Report(run, ScriptFault(fault));
  } catch (const std::bad_alloc&) {
    return Report(run, ScriptFault(FaultReason::OutOfMemory));
  } catch (const std::exception& unforeseen) {
    return Report(run, ScriptFault(FaultReason::Unforeseen, Shorten(unforeseen.what(), ReportedLineLength)));
  }
  return RunEnd::Completed;
}

}  // namespace vaxel
