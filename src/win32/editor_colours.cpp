#include "win32/editor_colours.h"

#include <algorithm>
#include <string>

#include "app/line_surroundings.h"
#include "app/script_colours.h"
#include "win32/rich_format.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr auto FirstColours = std::chrono::milliseconds(100);

}  // namespace

// The control's text ranges would do it without the selection, but under Wine they take ten times as long.
void EditorColours::Set(CHARRANGE range, Colour colour) const {
  if (range.cpMin == range.cpMax) return;
  text_.Select(range);
  text_.SetFormat(SCF_SELECTION, ColourFormat(colour));
}

std::string EditorColours::Before(LONG begin) const {
  constexpr std::size_t most = 100;
  std::size_t first = text_.LineAt(begin);
  const std::size_t line = first;
  const auto textOf = [this](std::size_t number) { return Narrow(text_.TextOf(text_.RangeOfLine(number))); };
  std::string before;
  while (first > 0 && line - first < most && AppendContinued(before, textOf(first - 1))) --first;
  before.clear();
  for (; first < line; ++first) AppendContinued(before, textOf(first));
  return before;
}

LONG EditorColours::ColourLines(std::wstring_view text, LONG begin, Clock::time_point until) const {
  std::size_t from = 0;
  std::string before = Before(begin);
  while (from < text.size() && Clock::now() < until) {
    const std::size_t end = std::min(text.find(L'\r', from), text.size());
    const LONG place = begin + static_cast<LONG>(from);
    Set({place, begin + static_cast<LONG>(end)}, plain_);
    if (isPlain_) {
      from = end + 1;
      continue;
    }
    const std::string line = Narrow(text.substr(from, end - from));
    LineContext context;
    context.Before = before;
    if (survey_) {
      context.IsVariable = [this](std::string_view name) { return survey_->HasVariable(name); };
      if (survey_->HasOwnSeparators()) context.Separators = survey_->SeparatorsAt(text_.LineAt(place) + 1);
    }
    for (const ColouredRange& range : ColoursOfLine(line, context, isDark_)) {
      Set({place + static_cast<LONG>(range.Begin), place + static_cast<LONG>(range.End)}, range.Ink);
    }
    // A command that goes on for ever is not read anew for each of its lines.
    constexpr std::size_t longest = 20'000;
    if (!AppendContinued(before, line) || before.size() > longest) before.clear();
    from = end + 1;
  }
  return begin + static_cast<LONG>(std::min(from, text.size()));
}

void EditorColours::SetInks(Colour plain, bool isDark, bool isPlain) {
  plain_ = plain;
  isDark_ = isDark;
  isPlain_ = isPlain;
}

void EditorColours::Lines(std::size_t first, std::size_t last) {
  const CHARRANGE range = {text_.RangeOfLine(first).cpMin, text_.RangeOfLine(last).cpMax};
  const std::wstring text = text_.TextOf(range);
  const RichText::Unnoticed unnoticed(text_);
  ColourLines(text, range.cpMin, Clock::time_point::max());
}

void EditorColours::All() {
  const std::wstring text = text_.WholeText();
  const auto length = static_cast<LONG>(text.size());
  {
    const RichText::Unnoticed unnoticed(text_);
    pending_ = ColourLines(text, 0, Clock::now() + FirstColours);
  }
  seen_.reset();
  if (*pending_ >= length) pending_.reset();
  Seen();
}

void EditorColours::Grown(LONG from) {
  if (!pending_) pending_ = from;
}

void EditorColours::ChangedFrom(std::size_t line) {
  if (pending_) pending_ = std::min(*pending_, text_.RangeOfLine(line).cpMin);
}

void EditorColours::SetSurvey(const ScriptSurvey* survey) {
  survey_ = survey;
  pending_ = 0;
  seen_.reset();
  Seen();
}

void EditorColours::Seen() {
  if (!pending_) return;
  const RichText::LineRange lines = text_.VisibleLines();
  const CHARRANGE range = {text_.RangeOfLine(lines.First).cpMin, text_.RangeOfLine(lines.Last).cpMax};
  if (range.cpMax <= *pending_ || lines == seen_) return;
  seen_ = lines;
  const std::wstring text = text_.TextOf(range);
  const RichText::Unnoticed unnoticed(text_);
  ColourLines(text, range.cpMin, Clock::time_point::max());
}

}  // namespace vaxel
