#include "app/keyword_spelling.h"

#include <algorithm>

#include "app/script_line.h"
#include "app/utf16_offsets.h"

namespace vaxel {

std::optional<LineEdit> SpellKeywords(std::string_view line, const LineContext& context) {
  std::string text(context.Before);
  text += line;
  std::replace(text.begin(), text.end(), '\t', ' ');
  const std::size_t skipped = context.Before.size();
  const ScriptLineParts parts = ReadScriptLine(text, context.Separators);
  std::optional<LineEdit> edit;
  std::size_t begin = 0, end = 0;  // of the edit, in bytes of the line
  for (const CommandInLine& command : parts.Commands) {
    if (!command.Row || command.IsAssignment() || BeginOf(command.Keyword, text) < skipped) continue;
    const std::string_view spelling = command.Row->Spelling();
    if (command.Keyword == spelling) continue;
    const std::size_t from = BeginOf(command.Keyword, text) - skipped;
    if (!edit) {
      edit.emplace();
      begin = end = from;
    }
    edit->Text += line.substr(end, from - end);
    edit->Text += spelling;
    end = from + command.Keyword.size();
  }
  if (!edit) return edit;
  edit->Begin = Utf16Length(line.substr(0, begin));
  edit->End = edit->Begin + Utf16Length(line.substr(begin, end - begin));
  return edit;
}

}  // namespace vaxel
