#include "interpreter/run_context.h"

#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"
#include "interpreter/colour_value.h"
#include "interpreter/script_fault.h"
#include "interpreter/script_lines.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

constexpr std::size_t ShownWord = 60;

}  // namespace

ScriptLevel::ScriptLevel() : Lines(std::make_unique<ScriptLines>()) {}

ScriptLevel::~ScriptLevel() = default;

void RunContext::SetPen(const Pen& pen) {
  Level().CurrentPen = pen;
  Surface.DrawWidth = pen.Width;
  Surface.SquareEnds = pen.SquareEnds;
}

Colour RunContext::ColourOr(std::string_view text, Colour otherwise) {
  const ColourReading colour = ReadColour(text, Separators);
  if (colour.IsDoubtful) Notice(TextId::UnknownColour, Shorten(Trim(text), ShownWord));
  return colour.Value.value_or(otherwise);
}

void RunContext::NoteOrder(std::int16_t after) {
  // An order error has a word below 0.
  if (OrderState <= 0) OrderSteps.clear();
  OrderState = after;
  const LogicalLine& line = Levels[0].Line;
  OrderSteps.push_back({after, line.Number, Shorten(line.Text, ShownWord)});
}

std::string RunContext::ReadFile(std::string_view fileName, const std::string& shown) const {
  constexpr std::size_t maxBytes = 100'000'000;
  Work.Ask();
  Result<std::string> bytes = Host.ReadFile(fileName, maxBytes - std::min(maxBytes, BytesOfFiles()));
  Work.Ask();
  if (bytes) return *std::move(bytes);
  if (bytes.Why().Fault == FileFault::IsTooLarge) throw ScriptFault(FaultReason::FileTooLarge, shown);
  throw ScriptFault(FaultReason::FileUnreadable, shown + " (" + Strings.Text(LangBase, bytes.Why()) + ")");
}

std::size_t RunContext::BytesOfFiles() const {
  std::size_t bytes = 0;
  for (std::size_t level = 0; level < CurrentLevel; ++level) {
    if (level > 0) bytes += Levels[level].Text.size();
    bytes += Levels[level].Data.Size();
  }
  for (const auto& [name, picture] : Pictures) bytes += picture->Bytes.size();
  return bytes;
}

void RunContext::WriteComment(std::string_view comment) {
  Host.WriteComment(Level().FileName, Level().Line.Number, comment);
}

void RunContext::Notice(TextId text, std::string_view value, std::string_view second,
                        std::string_view third) const {
  const ScriptLevel& level = Level();
  constexpr std::size_t most = 100'000;
  if (Notices.Count() > most || !Notices.Add(level.FileName, level.Line.Number, text)) return;
  if (Notices.Count() > most) text = TextId::TooManyNotices;
  Host.ShowNotice(level.FileName, level.Line.Number, Strings.Text(LangBase, text, value, second, third));
}

std::string RunContext::Substitute(std::string_view text) const {
  LooseSign loose;
  std::string replaced =
      vaxel::Substitute(text, Level().Variables, RunVariables(*this), Separators, loose, Work);
  if (!loose.Text.empty()) Notice(TextId::SignInValue, loose.Text, loose.Variable);
  return replaced;
}

std::string RunContext::SettableName(std::string_view written) const {
  std::string name = NameOf(written);
  if (!IsVariableName(name, Separators))
    throw ScriptFault(FaultReason::BadVariableName, Shorten(written, 60));
  if (IsSystemVariable(name)) throw ScriptFault(FaultReason::ReadOnlyVariable, name);
  return name;
}

void RunContext::SetVariable(std::string_view name, std::string_view value) {
  const std::string settable = SettableName(name);
  Work.Add(value.size());
  constexpr std::size_t most = 10'000, surelyMore = 4 * most;
  if (value.size() > most) {
    const std::string* const present = Level().Variables.Find(settable);
    const std::string_view before = present ? std::string_view(*present) : std::string_view();
    if (before.size() < surelyMore && CharacterCount(before) <= most && CharacterCount(value) > most) {
      Notice(TextId::LongVariable, settable);
    }
    RequireRoom(value.size(), before.size());
  }
  Level().Variables.Set(settable, value);
}

void RunContext::RequireRoom(std::size_t bytes, std::size_t freed) const {
  constexpr std::size_t most = 100'000'000;
  // Less than that in each variable is no danger.
  constexpr std::size_t little = most / (MaxLevels * VariableTable::MaxVariables);
  if (bytes <= little) return;
  for (std::size_t level = 0; level < CurrentLevel; ++level) bytes += Levels[level].Variables.TextLength();
  if (bytes - freed > most) throw ScriptFault(FaultReason::TooMuchInVariables);
}

void RunContext::EndLevel(ScriptLevel& level) {
  level.Lines->GoTo(Label{level.Text.size(), level.Line.Number}, false);
}

void RunContext::EndAllLevels() {
  for (std::size_t i = 0; i < CurrentLevel; ++i) EndLevel(Levels[i]);
}

}  // namespace vaxel
