// The part of the script editor by which the application reads, changes and selects text.
#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>

#include "win32/editor.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

bool IsInWord(wchar_t unit) {
  return unit == L'_' || IsCharAlphaNumericW(unit) != FALSE;
}

}  // namespace

std::string EditorWin32::Text() {
  std::string text = FromControl(text_.WholeText());
  return IsLoading() ? text + FromControl(std::wstring_view(rest_).substr(restAt_)) : text;
}

bool EditorWin32::IsEmpty() {
  return !IsLoading() && GetWindowTextLengthW(window_) == 0;
}

std::size_t EditorWin32::Size() {
  return static_cast<std::size_t>(text_.Length()) + (IsLoading() ? rest_.size() - restAt_ : 0);
}

RECT EditorWin32::LineBox(std::size_t place) const {
  POINTL corner{};
  text_.Send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&corner), static_cast<LPARAM>(place));
  RECT box = {corner.x, corner.y, corner.x + 1, corner.y + margin_.RowHeight()};
  MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&box), 2);
  return box;
}

void EditorWin32::ReplaceSelection(std::string_view text) {
  text_.ReplaceSelection(ToControl(text));
}

// Both ends of the selection stay in their lines and, as far as these are long enough, in their columns.
void EditorWin32::ReplaceLines(std::size_t first, const std::vector<std::string>& lines) {
  LoadToLine(first + lines.size() - 1);
  const CHARRANGE old = {text_.RangeOfLine(first - 1).cpMin,
                         text_.RangeOfLine(first + lines.size() - 2).cpMax};
  std::wstring wide;
  std::vector<LONG> begins, ends;
  for (const std::string& line : lines) {
    if (!begins.empty()) wide += L'\r';
    begins.push_back(old.cpMin + static_cast<LONG>(wide.size()));
    wide += ToControl(line);
    ends.push_back(old.cpMin + static_cast<LONG>(wide.size()));
  }
  const auto moved = [&](LONG place) {
    if (place <= old.cpMin) return place;
    if (place > old.cpMax) return place + ends.back() - old.cpMax;
    const std::size_t line = text_.LineAt(place), i = line - (first - 1);
    return std::min(begins[i] + place - text_.RangeOfLine(line).cpMin, ends[i]);
  };
  const CHARRANGE selection = text_.Selection(), kept = {moved(selection.cpMin), moved(selection.cpMax)};
  POINT scroll{};
  text_.Send(EM_GETSCROLLPOS, 0, &scroll);
  EndStep();
  text_.BeginUnnoticed();
  text_.Select(old);
  text_.ReplaceSelection(wide);
  text_.Select(kept);
  text_.EndUnnoticed();
  text_.Send(EM_SETSCROLLPOS, 0, &scroll);
  colours_.Lines(first - 1, first + lines.size() - 2);
  if (application_) application_->EditorChanged();
}

EditorPlace EditorWin32::Place() {
  return {text_.LineAt(text_.Selection().cpMin) + 1, LineCount() + (IsLoading() ? restLines_ : 0)};
}

EditorRange EditorWin32::Selection() {
  const CHARRANGE selection = text_.Selection();
  return {static_cast<std::size_t>(selection.cpMin), static_cast<std::size_t>(selection.cpMax)};
}

void EditorWin32::Select(EditorRange range) {
  LoadToPlace(range.End);
  text_.Select({static_cast<LONG>(range.Begin), static_cast<LONG>(range.End)});
  // Who selects everything goes nowhere.
  const bool isAll = range.Begin == 0 && range.End == static_cast<std::size_t>(text_.Length());
  if (!isAll || range.IsEmpty()) text_.Send(EM_SCROLLCARET);
}

EditorRange EditorWin32::RangeOfLines(std::size_t first, std::size_t last) {
  LoadToLine(last);
  return {static_cast<std::size_t>(text_.RangeOfLine(first - 1).cpMin),
          static_cast<std::size_t>(text_.RangeOfLine(last - 1).cpMax)};
}

std::size_t EditorWin32::LineAt(std::size_t place) {
  LoadToPlace(place);
  return text_.LineAt(static_cast<LONG>(place)) + 1;
}

std::string EditorWin32::TextOf(EditorRange range) {
  LoadToPlace(range.End);
  return FromControl(text_.TextOf({static_cast<LONG>(range.Begin), static_cast<LONG>(range.End)}));
}

void EditorWin32::Replace(EditorRange range, std::string_view text) {
  LoadToPlace(range.End);
  EndStep();
  const std::wstring wide = ToControl(text);
  text_.BeginUnnoticed();
  text_.Select({static_cast<LONG>(range.Begin), static_cast<LONG>(range.End)});
  text_.ReplaceSelection(wide);
  text_.EndUnnoticed();
  const std::size_t first = text_.LineAt(static_cast<LONG>(range.Begin));
  const std::size_t last = text_.LineAt(static_cast<LONG>(range.Begin + wide.size()));
  lines_ = LineCount();
  constexpr std::size_t mostSingly = 200;
  if (last - first > mostSingly) {
    ColourAll();
  } else {
    colours_.Lines(first, last);
  }
  if (application_) application_->EditorChanged();
  margin_.Follow(LineCount());
}

void EditorWin32::Undo() {
  text_.Send(EM_UNDO);
}

void EditorWin32::Redo() {
  text_.Send(EM_REDO);
}

void EditorWin32::Cut() {
  EndStep();
  text_.Send(WM_CUT);
}

void EditorWin32::Copy() {
  text_.Send(WM_COPY);
}

void EditorWin32::Paste() {
  EndStep();
  text_.Send(EM_PASTESPECIAL, CF_UNICODETEXT);
  EndStep();
}

void EditorWin32::GoToLine(std::size_t line) {
  LoadToLine(line);
  const LONG begin = text_.RangeOfLine(line - 1).cpMin;
  text_.Select({begin, begin});
  text_.Send(EM_SCROLLCARET);
}

std::string EditorWin32::WordAtCursor() {
  const CHARRANGE line = text_.RangeOfLine(text_.LineAt(text_.Selection().cpMin));
  const std::wstring text = text_.TextOf(line);
  auto begin = std::min(static_cast<std::size_t>(text_.Selection().cpMin - line.cpMin), text.size());
  auto end = begin;
  while (begin > 0 && IsInWord(text[begin - 1])) --begin;
  while (end < text.size() && IsInWord(text[end])) ++end;
  return Narrow(std::wstring_view(text).substr(begin, end - begin));
}

}  // namespace vaxel
