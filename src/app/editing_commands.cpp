#include "app/editing_commands.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/line_editing.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "base/utf8.h"

namespace vaxel {

void EditingCommands::Undo() {
  app_.Editor.Undo();
}

void EditingCommands::Redo() {
  app_.Editor.Redo();
}

void EditingCommands::Cut() {
  app_.Editor.Cut();
}

void EditingCommands::Copy() {
  app_.Editor.Copy();
}

void EditingCommands::Paste() {
  app_.Editor.Paste();
}

void EditingCommands::SelectAll() {
  app_.Editor.Select(app_.Editor.RangeOfLines(1, app_.Editor.Place().Lines));
}

void EditingCommands::ColourAll() {
  app_.Editor.ColourAll();
}

EditingCommands::LineBlock EditingCommands::SelectedLines() {
  ScriptEditor& editor = app_.Editor;
  const EditorRange selection = editor.Selection();
  const std::size_t first = editor.LineAt(selection.Begin);
  std::size_t last = editor.LineAt(selection.End);
  if (last > first && editor.RangeOfLines(last, last).Begin == selection.End) --last;
  return {first, last, editor.RangeOfLines(first, last)};
}

// The cursor stays at its character; what was selected becomes the whole lines.
void EditingCommands::ChangeLines(std::string (*change)(std::string_view lines)) {
  ScriptEditor& editor = app_.Editor;
  const LineBlock block = SelectedLines();
  const EditorRange selection = editor.Selection();
  const std::string lines = editor.TextOf(block.Range), changed = change(lines);
  if (changed == lines) return;
  editor.Replace(block.Range, changed);
  const std::size_t end = block.Range.Begin + Utf16Length(changed);
  if (!selection.IsEmpty()) return editor.Select({block.Range.Begin, end});
  const std::size_t behind = block.Range.End - selection.Begin;
  const std::size_t cursor = std::max(block.Range.Begin, end > behind ? end - behind : 0);
  editor.Select({cursor, cursor});
}

void EditingCommands::ToggleComments() {
  ChangeLines(WithCommentsToggled);
}

void EditingCommands::Indent() {
  ChangeLines(Indented);
}

void EditingCommands::Unindent() {
  ChangeLines(Unindented);
}

void EditingCommands::Duplicate() {
  ScriptEditor& editor = app_.Editor;
  const LineBlock block = SelectedLines();
  const EditorRange selection = editor.Selection();
  const std::string copy = "\n" + editor.TextOf(block.Range);
  editor.Replace({block.Range.End, block.Range.End}, copy);
  const std::size_t by = Utf16Length(copy);
  editor.Select({selection.Begin + by, selection.End + by});
}

// A line end goes with the lines: the one behind them, or at the end of the text the one before.
void EditingCommands::DeleteLines() {
  ScriptEditor& editor = app_.Editor;
  LineBlock block = SelectedLines();
  if (block.Last < editor.Place().Lines) {
    ++block.Range.End;
  } else if (block.First > 1) {
    --block.Range.Begin;
  }
  editor.Replace(block.Range, {});
  const std::size_t line = std::min(block.First, editor.Place().Lines);
  editor.GoToLine(line);
}

// Lines and their neighbour change places, and the selection goes with them.
void EditingCommands::SwapWithNeighbour(std::size_t first, std::size_t last, bool movesUp) {
  ScriptEditor& editor = app_.Editor;
  const EditorRange selection = editor.Selection();
  const std::size_t neighbour = movesUp ? first - 1 : last + 1;
  const std::string lines = editor.TextOf(editor.RangeOfLines(first, last));
  const std::string other = editor.TextOf(editor.RangeOfLines(neighbour, neighbour));
  const EditorRange all = editor.RangeOfLines(std::min(first, neighbour), std::max(last, neighbour));
  editor.Replace(all, movesUp ? lines + "\n" + other : other + "\n" + lines);
  const std::size_t by = Utf16Length(other) + 1;
  const auto moved = [&](std::size_t place) { return movesUp ? place - by : place + by; };
  editor.Select({moved(selection.Begin), moved(selection.End)});
}

void EditingCommands::MoveUp() {
  const LineBlock block = SelectedLines();
  if (block.First > 1) SwapWithNeighbour(block.First, block.Last, true);
}

void EditingCommands::MoveDown() {
  const LineBlock block = SelectedLines();
  if (block.Last < app_.Editor.Place().Lines) SwapWithNeighbour(block.First, block.Last, false);
}

void EditingCommands::GoToLine() {
  const EditorPlace place = app_.Editor.Place();
  const std::string lines = std::to_string(place.Lines);
  InputDialog dialog{"Vaxel", app_.Message(TextId::LinePrompt, lines), std::to_string(place.Line)};
  double line = 0;
  dialog.OnOk = [&](const std::string& entry) {
    line = IsNumber(Trim(entry)) ? LeadingNumber(entry) : 0;
    const bool isUsable = line >= 1 && line <= static_cast<double>(place.Lines);
    if (!isUsable) app_.TellNotUsable(entry);
    return isUsable;
  };
  if (app_.Dialogs.AskText(dialog)) app_.Editor.GoToLine(static_cast<std::size_t>(line));
}

std::vector<EditingCommands::Match> EditingCommands::MatchesIn(const std::string& text,
                                                               const SearchEntry& entry) const {
  UnitCounter places(text);
  std::vector<Match> matches;
  for (const TextPart& part : FindAll(text, entry.Wanted, {entry.MatchesCase, entry.WholeWords})) {
    const std::size_t begin = places.UnitsAt(part.Begin), end = places.UnitsAt(part.End);
    const bool counts = !entry.InSelection || !within_ || (begin >= within_->Begin && end <= within_->End);
    if (counts) matches.push_back({part, {begin, end}});
  }
  return matches;
}

EditingCommands::Found EditingCommands::SelectMatch(const SearchEntry& entry, bool isForward) {
  last_ = entry;
  const EditorRange selection = app_.Editor.Selection();
  std::vector<TextPart> parts;
  for (const Match& match : MatchesIn(app_.Editor.Text(), entry)) {
    parts.push_back({match.Range.Begin, match.Range.End});
  }
  const auto found = isForward ? NextPart(parts, selection.End) : PreviousPart(parts, selection.Begin);
  if (!found) return Found::Nothing;
  app_.Editor.Select({found->Begin, found->End});
  const bool isAround = isForward ? found->Begin < selection.End : found->End > selection.Begin;
  return isAround ? Found::GoingAround : Found::Ahead;
}

std::string EditingCommands::Find(const SearchEntry& entry, bool isForward) {
  switch (SelectMatch(entry, isForward)) {
    case Found::Nothing:
      return app_.Message(TextId::TextNotFound, entry.Wanted);
    case Found::GoingAround:
      return app_.Message(TextId::SearchGoesAround);
    case Found::Ahead:
      break;
  }
  return {};
}

void EditingCommands::NoteLength(std::size_t before, std::size_t after) {
  if (within_) within_->End = within_->End + after - before;
}

// What is selected is replaced when it is a match; the next one is selected.
std::string EditingCommands::ReplaceOne(const SearchEntry& entry) {
  const EditorRange selection = app_.Editor.Selection();
  const std::vector<Match> matches = MatchesIn(app_.Editor.Text(), entry);
  if (std::ranges::find(matches, selection, &Match::Range) != matches.end()) {
    app_.Editor.Replace(selection, entry.Replacement);
    NoteLength(selection.End - selection.Begin, Utf16Length(entry.Replacement));
  }
  return Find(entry, true);
}

// All of them are one step to undo, from the first to the last.
std::string EditingCommands::ReplaceAll(const SearchEntry& entry) {
  last_ = entry;
  const std::string text = app_.Editor.Text();
  const std::vector<Match> matches = MatchesIn(text, entry);
  if (matches.empty()) return app_.Message(TextId::TextNotFound, entry.Wanted);
  std::string replaced;
  std::size_t from = matches.front().Bytes.Begin;
  for (const Match& match : matches) {
    replaced.append(text, from, match.Bytes.Begin - from).append(entry.Replacement);
    from = match.Bytes.End;
  }
  const EditorRange all{matches.front().Range.Begin, matches.back().Range.End};
  app_.Editor.Replace(all, replaced);
  NoteLength(all.End - all.Begin, Utf16Length(replaced));
  return app_.Message(TextId::PartsReplaced, std::to_string(matches.size()));
}

void EditingCommands::Search() {
  const EditorRange selection = app_.Editor.Selection();
  const std::string selected = app_.Editor.TextOf(selection);
  const bool isOfLines = selected.find('\n') != std::string::npos;
  SearchDialog dialog;
  dialog.Caption = app_.Message(TextId::SearchCaption);
  dialog.WantedLabel = app_.Message(TextId::SearchWanted);
  dialog.ReplacementLabel = app_.Message(TextId::SearchReplacement);
  dialog.CaseLabel = app_.Message(TextId::SearchCase);
  dialog.WordsLabel = app_.Message(TextId::SearchWords);
  dialog.SelectionLabel = app_.Message(TextId::SearchSelection);
  dialog.Entry = last_;
  // A word that is selected is what is looked for, lines are where.
  if (!isOfLines && !selected.empty()) dialog.Entry.Wanted = selected;
  within_ = isOfLines ? std::optional(selection) : std::nullopt;
  dialog.HasSelection = dialog.Entry.InSelection = isOfLines;
  dialog.Buttons = {
      {app_.Message(TextId::SearchNext), [this](const SearchEntry& entry) { return Find(entry, true); }},
      {app_.Message(TextId::SearchReplace), [this](const SearchEntry& entry) { return ReplaceOne(entry); }},
      {app_.Message(TextId::SearchReplaceAll),
       [this](const SearchEntry& entry) { return ReplaceAll(entry); }}};
  dialog.CloseButton = app_.Message(TextId::SearchClose);
  app_.Dialogs.ShowSearch(dialog);
  within_.reset();
  last_.InSelection = false;
}

// Without the dialog there is nowhere else to tell it.
void EditingCommands::SearchOn(bool isForward) {
  if (last_.Wanted.empty()) return Search();
  if (SelectMatch(last_, isForward) == Found::Nothing)
    app_.Tell(BoxIcon::Information, app_.Message(TextId::TextNotFound, last_.Wanted));
}

}  // namespace vaxel
