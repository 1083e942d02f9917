#include "app/syntax_help.h"

#include <algorithm>

#include "app/command_search.h"
#include "app/help_syntax.h"
#include "app/script_line.h"
#include "app/utf16_offsets.h"
#include "base/text.h"

namespace vaxel {
namespace {

ShownRange UnitsOf(std::string_view text, const TextRange& range) {
  const std::size_t begin = Utf16Length(text.substr(0, range.Begin));
  return {begin, begin + Utf16Length(text.substr(range.Begin, range.End - range.Begin))};
}

TextId StandingText(ParameterKind kind) {
  switch (kind) {
    case ParameterKind::X:
    case ParameterKind::Y:
      return TextId::DefaultCurrentPoint;
    case ParameterKind::Ink:
    case ParameterKind::ColourOrNone:
    case ParameterKind::LeadColour:
      return TextId::DefaultCurrentColour;
    case ParameterKind::ScaleValue:
      return TextId::DefaultScaleEnd;
    case ParameterKind::Pen:
    case ParameterKind::PenMm:
    case ParameterKind::PenEnds:
    case ParameterKind::Number:
      return TextId::DefaultCurrentPen;
    default:
      return TextId::DefaultUnchanged;
  }
}

// The name of parameter n of a form; null where the help has none.
const SyntaxParameter* NamedParameter(const std::vector<SyntaxLine>& lines, std::size_t formIndex,
                                      const ParameterForm& form, std::size_t n) {
  if (formIndex >= lines.size() || n == 0) return nullptr;
  const std::vector<SyntaxParameter>& named = lines[formIndex].Parameters;
  const std::size_t count = form.Parameters.size();
  if (n > count) {
    if (form.RepeatsFrom == 0) return nullptr;
    n = form.RepeatsFrom + (n - form.RepeatsFrom) % (count + 1 - form.RepeatsFrom);
  }
  return n > named.size() ? nullptr : &named[n - 1];
}

class LineHelp {
 public:
  LineHelp(std::string_view line, std::size_t cursor, const LineContext& context,
           const HelpLanguage& language)
      : line_(line), cursor_(cursor), context_(context), language_(language) {}

  // offset bytes of the line stand in lines before it.
  SyntaxHelp Read(std::size_t offset) {
    offset_ = offset;
    const ScriptLineParts parts = ReadScriptLine(line_, context_.Separators);
    const CommandInLine* const command = parts.CommandAt(line_, cursor_);
    const bool isInComment = !parts.Comment.empty() && cursor_ > BeginOf(parts.Comment, line_);
    if (!parts.Label.empty() && !isInComment) {
      TellOther(Help::Label);
    } else if (isInComment || (!command && !parts.Comment.empty())) {
      TellOther(Help::Comment);
    } else if (!parts.Variable.empty()) {
      TellOther(Help::Assignment);
    } else if (!command || !command->Row) {
      TellUnknown(command ? command->Keyword : std::string_view());
    } else {
      TellCommand(*command);
    }
    return std::move(help_);
  }

 private:
  void TellOther(TextId text) {
    help_.What = SyntaxHelp::Kind::Other;
    help_.Text = language_.Strings.Text(language_.Base, text);
  }

  void TellUnknown(std::string_view word) {
    help_.Commands = FindCommands(word, language_.Strings, language_.Base);
    const bool isSuggested = !word.empty() && !help_.Commands.empty();
    help_.Text = language_.Strings.Text(language_.Base,
                                        isSuggested ? TextId::DidYouMeanCommands : TextId::NoSuchCommand);
    if (help_.Commands.empty()) help_.Commands = FindCommands({}, language_.Strings, language_.Base);
  }

  void TellCommand(const CommandInLine& command) {
    help_.What = SyntaxHelp::Kind::Command;
    help_.Row = command.Row;
    help_.Text = language_.Strings.Text(language_.Base, command.Row->Help);
    forms_ = SyntaxOf(help_.Text);
    for (const SyntaxLine& form : forms_) help_.Forms.push_back(UnitsOf(help_.Text, form));
    if (command.IsCondition()) {
      TellCondition(command);
    } else if (!command.Row->Rules.Takes.empty()) {
      TellParameter(command);
    }
  }

  void TellCondition(const CommandInLine& command) {
    const std::span<const ParameterForm> forms = FormsOf(*command.Row);
    const bool hasTwo = forms.size() > 1;
    help_.Form = hasTwo && !command.Word.empty() && !command.Jumps ? 1 : 0;
    if (cursor_ < BeginOf(command.Text, line_)) return;
    const bool isBehind = !command.Word.empty() && cursor_ > EndOf(command.Word, line_);
    const std::string_view text = isBehind ? command.Target : command.Text;
    Emphasise(forms[help_.Form], isBehind ? 2 : 1, 0, text);
  }

  void TellParameter(const CommandInLine& command) {
    const LineParameters parameters = ParametersIn(command, context_.Separators);
    const std::span<const ParameterForm> forms = FormsOf(*command.Row);
    help_.Form = static_cast<std::size_t>(parameters.Form - forms.data());
    if (cursor_ < BeginOf(command.Text, line_) || cursor_ <= EndOf(command.Keyword, line_)) return;
    const LineParameters::Place place = parameters.PlaceAt(line_, cursor_, context_.Separators);
    Emphasise(*parameters.Form, parameters.PlaceOf(place.N), place.Part, parameters.Texts[place.N - 1]);
  }

  void Emphasise(const ParameterForm& form, std::size_t n, std::size_t part, std::string_view text) {
    const ParameterPartList* const parts = form.At(n);
    if (!parts) return;
    help_.Parameter = n;
    if (text.data()) {
      const std::size_t begin = std::max(offset_, BeginOf(text, line_)),
                        end = std::max(begin, EndOf(text, line_));
      help_.InLine = UnitsOf(line_.substr(offset_), {begin - offset_, end - offset_});
    }
    const SyntaxParameter* const named = NamedParameter(forms_, help_.Form, form, n);
    if (named && !named->IsEmpty()) help_.Name = UnitsOf(help_.Text, *named);
    const bool hasParts = named && named->Parts.size() > 1 && part < named->Parts.size();
    if (hasParts) help_.PartName = UnitsOf(help_.Text, named->Parts[part]);
    const ParameterPart& described = (*parts)[std::min(part, parts->size() - 1)];
    const std::string worth = DefaultText(described, form, help_.Form, help_.Text, language_);
    if (worth.empty()) return;
    help_.Default = language_.Strings.Text(language_.Base, TextId::DefaultIs, worth);
  }

  std::string_view line_;
  std::size_t cursor_;
  const LineContext& context_;
  const HelpLanguage& language_;
  std::size_t offset_ = 0;
  std::vector<SyntaxLine> forms_;
  SyntaxHelp help_;
};

}  // namespace

std::string DefaultText(const ParameterPart& part, const ParameterForm& form, std::size_t formIndex,
                        std::string_view help, const HelpLanguage& language) {
  switch (part.Default.What) {
    case ParameterDefault::Kind::None:
      break;
    case ParameterDefault::Kind::Worth:
      return std::string(part.Default.Text);
    case ParameterDefault::Kind::Standing:
      return std::string(language.Strings.Text(language.Base, StandingText(part.Kind)));
    case ParameterDefault::Kind::Parameter: {
      const std::vector<SyntaxLine> lines = SyntaxOf(help);
      const SyntaxParameter* const named = NamedParameter(lines, formIndex, form, part.Default.N);
      if (!named || named->Parts.empty()) break;
      const TextRange& name = named->Parts.front();
      return std::string(help.substr(name.Begin, name.End - name.Begin));
    }
  }
  return {};
}

SyntaxHelp HelpForLine(std::string_view line, std::size_t column, const LineContext& context,
                       const HelpLanguage& language) {
  std::string text(context.Before);
  text += line;
  std::replace(text.begin(), text.end(), '\t', ' ');
  const std::size_t offset = context.Before.size();
  return LineHelp(text, offset + ByteAtUnit(line, column), context, language).Read(offset);
}

}  // namespace vaxel
