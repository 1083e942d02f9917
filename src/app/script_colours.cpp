#include "app/script_colours.h"

#include <string>

#include "base/text.h"
#include "base/utf8.h"
#include "commands/command_table.h"
#include "interpreter/comparison.h"
#include "interpreter/line_reader.h"
#include "interpreter/script_fault.h"
#include "interpreter/variables.h"

namespace vaxel {
namespace {

constexpr Colour KeywordInk = MakeColour(0, 0, 192);
constexpr Colour LabelInk = MakeColour(160, 0, 160);
constexpr Colour CommentInk = MakeColour(0, 112, 0);

class Painter {
 public:
  explicit Painter(std::string_view line) : line_(line) {}

  // Paints the part, which lies in the line after what was painted before.
  void Paint(std::string_view part, Colour ink) {
    if (part.empty()) return;
    const auto at = static_cast<std::size_t>(part.data() - line_.data());
    units_ += Utf16Length(line_.substr(bytes_, at - bytes_));
    const std::size_t begin = units_;
    units_ += Utf16Length(part);
    bytes_ = at + part.size();
    ranges_.push_back({begin, units_, ink});
  }

  std::vector<ColouredRange> Ranges() && { return std::move(ranges_); }

 private:
  std::string_view line_;
  std::size_t bytes_ = 0, units_ = 0;
  std::vector<ColouredRange> ranges_;
};

void PaintCommand(std::string_view command, Painter& painter);

void PaintComment(std::string_view text, Painter& painter) {
  painter.Paint(text.substr(WithoutComment(text).size()), CommentInk);
}

// What stands between a condition and its command, and the command.
void PaintCondition(std::string_view text, Painter& painter) {
  try {
    const Conditional conditional = SplitConditional(text);
    const std::size_t behind =
        static_cast<std::size_t>(conditional.Condition.data() - text.data()) + conditional.Condition.size();
    const std::size_t rest = conditional.Rest.empty()
                                 ? text.size()
                                 : static_cast<std::size_t>(conditional.Rest.data() - text.data());
    painter.Paint(Trim(text.substr(behind, rest - behind)), KeywordInk);
    if (!conditional.Jumps) PaintCommand(conditional.Rest, painter);
    if (conditional.Jumps) PaintComment(text.substr(rest), painter);
  } catch (const ScriptFault&) {
    PaintComment(text, painter);  // the condition is not written to its end
  }
}

void PaintCommand(std::string_view command, Painter& painter) {
  if (IsBlankOrComment(command)) return painter.Paint(TrimLeft(command), CommentInk);
  const CommandLine parts = SplitCommand(command, AllCommands());
  const CommandRow* const row = AllCommands().Find(parts.Keyword);
  if (ReadLabelLine(command, AllCommands(), {})) {
    painter.Paint(WithoutComment(command), LabelInk);
    return PaintComment(command, painter);
  }
  if (row) painter.Paint(parts.Keyword, KeywordInk);
  if (row && row->Rules.Form == LineForm::Condition) return PaintCondition(parts.Parameters, painter);
  if (!row || row->TakesComments()) PaintComment(parts.Parameters, painter);
}

}  // namespace

std::vector<ColouredRange> ColoursOfLine(std::string_view line) {
  Painter painter(line);
  PaintCommand(TrimLeft(line), painter);
  return std::move(painter).Ranges();
}

}  // namespace vaxel
