#include "app/script_survey.h"

#include <algorithm>
#include <iterator>

#include "app/script_line.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/line_reader.h"
#include "interpreter/parameters.h"

namespace vaxel {
namespace {

// Whether a command names anything that a survey tells of.
bool TellsSomething(const CommandRow& row) {
  if (row.Rules.Form == LineForm::Condition || row.Rules.Form == LineForm::Assignment) return true;
  for (std::string_view word : {"variable", "script", "separator"}) {
    if (row.Rules.Takes.find(word) != std::string_view::npos) return true;
  }
  return false;
}

// By the places of the table's rows: the look into their texts takes longer than most lines do.
bool IsOfInterest(const CommandRow& row) {
  static const std::vector<bool> rows = [] {
    std::vector<bool> tells;
    for (const CommandRow& known : CommandTable()) tells.push_back(TellsSomething(known));
    return tells;
  }();
  return rows[static_cast<std::size_t>(&row - CommandTable().data())];
}

template <class Item>
auto FirstFrom(std::vector<Item>& items, std::size_t line) {
  return std::lower_bound(items.begin(), items.end(), line,
                          [](const Item& item, std::size_t wanted) { return item.Line < wanted; });
}

}  // namespace

std::uint32_t ScriptSurvey::IndexOf(const std::string& name) {
  const auto [known, isNew] = index_.try_emplace(UpperCase(name), static_cast<std::uint32_t>(names_.size()));
  if (isNew) {
    names_.push_back(name);
    uses_.push_back(0);
  }
  return known->second;
}

void ScriptSurvey::Assign(std::string_view name, std::uint32_t line) {
  name = Trim(name);
  if (name.size() < 2 || name.front() != '%') return;
  const std::uint32_t index = IndexOf(NameOf(name));
  ++uses_[index];
  assignments_.push_back({index, line});
}

void ScriptSurvey::ReadCommand(const CommandInLine& command, std::uint32_t line) {
  if (!command.Row) return;
  if (command.IsAssignment()) return Assign(command.Keyword, line);
  // A variable that a condition looks for may be given by whoever includes the script.
  if (command.IsCondition()) {
    if (command.Text.starts_with('%') && Trim(command.Text).find(' ') == std::string_view::npos &&
        EqualIgnoringCase(command.Keyword, "IFNDEF")) {
      Assign(command.Text, line);
    }
    return;
  }
  if (!IsOfInterest(*command.Row)) return;
  const Separators separators = SeparatorsAt(line);
  const LineParameters parameters = ParametersIn(command, separators);
  Separators changed = separators;
  for (std::size_t n = 1; n <= parameters.Texts.size(); ++n) {
    const ParameterPartList* const parts = parameters.At(n);
    // LVar goes on with names as long as there are any.
    const ParameterKind kind = parts ? parts->front().Kind : ParameterKind::Variable;
    const std::string_view text = Trim(parameters.Texts[n - 1]);
    if (kind == ParameterKind::Variable) Assign(text, line);
    if (kind == ParameterKind::ScriptFile && !text.empty()) files_.push_back({std::string(text), line});
    if (kind == ParameterKind::PicturePixels) {
      for (std::string_view part : SplitAt(text, separators.Second)) Assign(part, line);
    }
    if (kind == ParameterKind::Separator && !text.empty()) (n == 1 ? changed.First : changed.Second) = text;
  }
  const bool isChange = changed.First != separators.First || changed.Second != separators.Second;
  if (isChange) changes_.push_back({line, changed});
}

void ScriptSurvey::ReadSlowly(std::string_view text, std::uint32_t line) {
  const Separators separators = SeparatorsAt(line);
  const ScriptLineParts parts = ReadScriptLine(text, separators);
  if (!parts.Label.empty()) {
    const auto label = ReadLabelLine(text, AllCommands(), separators);
    if (label && label->IsTarget) labels_.push_back({std::string(label->Name), line});
  }
  for (const CommandInLine& command : parts.Commands) ReadCommand(command, line);
}

// Most lines name nothing; they are passed over with one look at their keyword.
void ScriptSurvey::ReadLogicalLine(std::string_view text, std::uint32_t line) {
  text = TrimLeft(text);
  if (text.empty() || text.front() == '\'') return;
  std::size_t end = 0;
  while (end < text.size() && text[end] != '=' && text[end] != ' ' && text[end] != ':' && text[end] != '\'') {
    ++end;
  }
  const bool isPlain = end < text.size() && text[end] != ':' && text.front() != '%';
  if (isPlain) {
    const CommandRow* const row = AllCommands().Find(text.substr(0, end));
    if (row && !row->Rules.IsAddition && !IsOfInterest(*row)) return;
  }
  const std::size_t equals = text.find('=');
  if (text.front() == '%' && equals != std::string_view::npos && text.find('\'') > equals &&
      text.find(':') > equals) {
    return Assign(text.substr(0, equals), line);
  }
  ReadSlowly(text, line);
}

// Comments go on in the next line too, which no reader of commands tells of.
void ScriptSurvey::FindContinued(std::string_view text, std::uint32_t line) {
  constexpr std::string_view mark = "_\n";
  std::size_t counted = 0;
  for (std::size_t at = 0; (at = text.find(mark, at)) != std::string_view::npos; at += mark.size()) {
    const std::size_t begin = text.rfind('\n', at) + 1;
    line += static_cast<std::uint32_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                                                  text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    counted = at;
    if (IsContinued(text.substr(begin, at + 1 - begin))) continued_.push_back(line + 1);
  }
}

void ScriptSurvey::ReadLines(std::string_view text, std::uint32_t first) {
  FindContinued(text, first);
  LineReader reader(text);
  LogicalLine line;
  while (reader.Next(line) != LineReader::Result::End) ReadLogicalLine(line.Text, first - 1 + line.Number);
}

void ScriptSurvey::Read(std::string_view text) {
  *this = {};
  ReadLines(text, 1);
}

// Commands that go over several lines are read anew as a whole, with what they may have become.
void ScriptSurvey::Widen(Span& span, std::size_t lineCount, const LineOf& lineOf) const {
  while (span.First > 1 && (IsContinuation(span.First) || IsContinued(lineOf(span.First - 1)))) {
    --span.First, ++span.Removed, ++span.Inserted;
  }
  while (span.First + span.Inserted <= lineCount &&
         (IsContinuation(span.First + span.Removed) ||
          (span.Inserted > 0 && IsContinued(lineOf(span.First + span.Inserted - 1))))) {
    ++span.Removed, ++span.Inserted;
  }
}

bool ScriptSurvey::Replace(std::size_t first, std::size_t removed, std::size_t inserted,
                           std::size_t lineCount, const LineOf& lineOf) {
  Span span{first, removed, inserted};
  Widen(span, lineCount, lineOf);
  const auto changes = [&](const Change& change) {
    return change.Line >= span.First && change.Line < span.First + span.Removed;
  };
  if (std::any_of(changes_.begin(), changes_.end(), changes)) return false;
  ScriptSurvey fresh;
  fresh.changes_.push_back({0, SeparatorsAt(span.First)});
  std::string text;
  for (std::size_t i = 0; i < span.Inserted; ++i) text += lineOf(span.First + i) + "\n";
  fresh.ReadLines(text, static_cast<std::uint32_t>(span.First));
  if (fresh.changes_.size() > 1) return false;
  Splice(span, std::move(fresh));
  return true;
}

// What stood in the span gives place to what a survey of the new lines has found.
void ScriptSurvey::Splice(const Span& span, ScriptSurvey fresh) {
  const std::size_t behind = span.First + span.Removed;
  // It may wrap round, and then so does each sum.
  const auto moved = static_cast<std::uint32_t>(span.Inserted - span.Removed);
  for (auto gone = FirstFrom(assignments_, span.First); gone != FirstFrom(assignments_, behind); ++gone) {
    --uses_[gone->Name];
  }
  for (Assignment& made : fresh.assignments_) {
    made.Name = IndexOf(fresh.names_[made.Name]);
    ++uses_[made.Name];
  }
  const auto splice = [&](auto& items, auto& others) {
    const auto to = FirstFrom(items, behind);
    for (auto later = to; later != items.end(); ++later) later->Line += moved;
    const auto place = items.erase(FirstFrom(items, span.First), to);
    items.insert(place, std::make_move_iterator(others.begin()), std::make_move_iterator(others.end()));
  };
  splice(labels_, fresh.labels_);
  splice(files_, fresh.files_);
  splice(assignments_, fresh.assignments_);
  for (Change& change : changes_) {
    if (change.Line >= behind) change.Line += moved;
  }
  const auto from = std::lower_bound(continued_.begin(), continued_.end(), span.First);
  const auto to = std::lower_bound(from, continued_.end(), behind);
  for (auto later = to; later != continued_.end(); ++later) *later += moved;
  continued_.insert(continued_.erase(from, to), fresh.continued_.begin(), fresh.continued_.end());
}

std::vector<ScriptSurvey::Named> ScriptSurvey::VariablesUpTo(std::size_t line) const {
  std::vector<Named> variables;
  std::vector<bool> isSeen(names_.size());
  for (const Assignment& assignment : assignments_) {
    if (assignment.Line > line) break;
    if (isSeen[assignment.Name]) continue;
    isSeen[assignment.Name] = true;
    variables.push_back({names_[assignment.Name], assignment.Line});
  }
  return variables;
}

bool ScriptSurvey::HasVariable(std::string_view name) const {
  const auto found = index_.find(UpperCase(name));
  return found != index_.end() && uses_[found->second] > 0;
}

bool ScriptSurvey::ColoursAs(const ScriptSurvey& other) const {
  const auto isSameChange = [](const Change& a, const Change& b) {
    return a.Line == b.Line && a.From.First == b.From.First && a.From.Second == b.From.Second;
  };
  const auto isThere = [&other](const std::string& name) { return other.HasVariable(name); };
  return names_.size() == other.names_.size() && std::ranges::all_of(names_, isThere) &&
         std::ranges::equal(changes_, other.changes_, isSameChange);
}

Separators ScriptSurvey::SeparatorsAt(std::size_t line) const {
  for (auto change = changes_.rbegin(); change != changes_.rend(); ++change) {
    if (change->Line < line) return change->From;
  }
  return {};
}

bool ScriptSurvey::IsContinuation(std::size_t line) const {
  return std::binary_search(continued_.begin(), continued_.end(), line);
}

std::size_t ScriptSurvey::FirstLineOf(std::size_t line) const {
  while (IsContinuation(line)) --line;
  return line;
}

}  // namespace vaxel
