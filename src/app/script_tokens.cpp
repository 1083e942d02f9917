#include "app/script_tokens.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/script_line.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "interpreter/colour_value.h"
#include "interpreter/line_reader.h"
#include "interpreter/parameters.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

struct ByteToken {
  std::string_view Text;
  TokenKind Kind;
  std::optional<Colour> Meant;
};

// The name of a parameter by its place, which whoever includes the script may give.
bool IsPlaceName(std::string_view name) {
  return name.size() > 1 && std::all_of(name.begin() + 1, name.end(), IsDigit);
}

class Tokenizer {
 public:
  Tokenizer(std::string_view line, const LineContext& context) : line_(line), context_(context) {}

  std::vector<ByteToken> Read() && {
    const ScriptLineParts parts = ReadScriptLine(line_, context_.Separators);
    for (const CommandInLine& command : parts.Commands) AddCommand(command);
    Add(Trim(parts.Label), TokenKind::LabelName);
    AddExpression(parts.Variable);
    Add(parts.Comment, TokenKind::Comment);
    return std::move(tokens_);
  }

 private:
  void Add(std::string_view text, TokenKind kind, std::optional<Colour> meant = {}) {
    if (!text.empty()) tokens_.push_back({text, kind, meant});
  }

  void AddCommand(const CommandInLine& command) {
    if (command.IsAssignment()) {
      Add(command.Keyword, TokenKind::Variable);
    } else {
      Add(command.Keyword, command.Row ? TokenKind::Keyword : TokenKind::UnknownKeyword);
    }
    if (!command.Row || command.IsCondition()) {
      AddExpression(command.Text);
      Add(command.Word, TokenKind::Keyword);
      if (command.Jumps) AddTarget(command.Target);
      return;
    }
    const LineParameters parameters = ParametersIn(command, context_.Separators);
    for (std::size_t n = 1; n <= parameters.Texts.size(); ++n) {
      const std::string_view text = parameters.Texts[n - 1];
      const ParameterPartList* const parts = parameters.At(n);
      AddParameter(text, parts ? parts->front().Kind : ParameterKind::Number);
      if (n < parameters.Texts.size()) {
        Add(line_.substr(EndOf(text, line_), context_.Separators.First.size()), TokenKind::Separator);
      }
    }
  }

  void AddTarget(std::string_view target) {
    if (target.find('%') != std::string_view::npos) return AddExpression(target);
    Add(Trim(target), TokenKind::LabelName);
  }

  void AddParameter(std::string_view text, ParameterKind kind) {
    switch (kind) {
      case ParameterKind::Text:
      case ParameterKind::Prompt:
      case ParameterKind::FontName:
      case ParameterKind::ScriptFile:
      case ParameterKind::DataFile:
      case ParameterKind::PictureFile:
        return AddText(text);
      case ParameterKind::Ink:
      case ParameterKind::ColourOrNone:
      case ParameterKind::LeadColour:
        return AddColour(text);
      case ParameterKind::JumpLabel:
        return AddTarget(text);
      case ParameterKind::Law:
        law_ = true;
        return AddExpression(text);
      case ParameterKind::Argument:
        return AddArgument(text);
      default:
        return AddExpression(text);
    }
  }

  void AddColour(std::string_view text) {
    const std::string& second = context_.Separators.Second;
    std::size_t begin = 0;
    for (std::string_view part : SplitAt(text, second)) {
      if (begin > 0) Add(text.substr(begin - second.size(), second.size()), TokenKind::Separator);
      const std::optional<Colour> meant = LookAtColour(part, context_.Separators).Value;
      if (!meant || part.find('%') != std::string_view::npos) {
        AddExpression(part);
      } else {
        Add(Trim(part), TokenKind::ColourName, meant);
      }
      begin += part.size() + second.size();
    }
  }

  // "%Name=value": the name is one of the included script.
  void AddArgument(std::string_view text) {
    const std::size_t equals = text.find('=');
    const std::string_view name = Trim(text.substr(0, equals));
    if (equals == std::string_view::npos || !name.starts_with('%')) return AddExpression(text);
    Add(name, TokenKind::Variable);
    AddExpression(text.substr(equals + 1));
  }

  // A text, with the variables in it.
  void AddText(std::string_view text) {
    text = Trim(text);
    if (IsLiteral(text)) return Add(text, TokenKind::Text);
    while (!text.empty()) {
      const std::size_t sign = std::min(text.size(), text.find('%'));
      Add(text.substr(0, sign), TokenKind::Text);
      text.remove_prefix(sign);
      if (!text.empty()) TakeReference(text, TokenKind::Text);
    }
  }

  void TakeReference(std::string_view& text, TokenKind otherwise) {
    static const VariableTable none;
    // No name is as long, and a line of nothing but names must not be read again for each of them.
    constexpr std::size_t mostBytes = 100;
    std::size_t longest = std::min(text.size(), mostBytes);
    const auto isWithinCharacter = [&](std::size_t i) {
      return (static_cast<unsigned>(text[i]) & 0xC0U) == 0x80;
    };
    while (longest > 1 && longest < text.size() && isWithinCharacter(longest)) --longest;
    std::string_view begun = text.substr(0, longest);
    if (begun.starts_with("%{")) begun = begun.substr(0, begun.find('}') + 1);  // npos: all of it
    if (begun.empty()) begun = text.substr(0, longest);
    const std::string_view reference = ReferenceAt(begun, none, context_.Separators);
    const std::string name = NameOf(reference);
    if (reference == "%%" || name.size() < 2) {
      Add(reference, otherwise);
    } else {
      Add(reference, IsKnown(name) ? TokenKind::Variable : TokenKind::UnknownVariable);
    }
    text.remove_prefix(std::max<std::size_t>(1, reference.size()));
  }

  bool IsKnown(std::string_view name) const {
    if (!context_.IsVariable || IsSystemVariable(name) || IsPlaceName(name)) return true;
    return (law_ && EqualIgnoringCase(name, "%V")) || context_.IsVariable(name);
  }

  // Numbers, variables and second separators; what is between them has no colour of its own.
  void AddExpression(std::string_view text) {
    const std::string& second = context_.Separators.Second;
    for (std::size_t i = 0; i < text.size();) {
      std::string_view rest = text.substr(i);
      double value = 0;
      if (rest.front() == '%') {
        TakeReference(rest, TokenKind::Plain);
        i = text.size() - rest.size();
      } else if (rest.starts_with(second)) {
        Add(rest.substr(0, second.size()), TokenKind::Separator);
        i += second.size();
      } else if (IsLetter(rest.front()) || static_cast<unsigned char>(rest.front()) >= 0x80) {
        // The figures of "Val1" or "x2" are a part of the word.
        do ++i;
        while (i < text.size() && (IsLetter(text[i]) || IsDigit(text[i])));
      } else if (const std::size_t length = ReadUnsignedNumber(rest, value)) {
        Add(rest.substr(0, length), TokenKind::Number);
        i += length;
      } else {
        ++i;
      }
    }
  }

  std::string_view line_;
  const LineContext& context_;
  bool law_ = false;
  std::vector<ByteToken> tokens_;
};

struct Inks {
  TokenKind Kind;
  Colour OnLight, OnDark;
};

constexpr auto AllInks = std::to_array<Inks>({
    {TokenKind::Plain, Black, MakeColour(222, 222, 222)},
    {TokenKind::Keyword, MakeColour(0, 0, 192), MakeColour(130, 175, 255)},
    {TokenKind::UnknownKeyword, MakeColour(192, 0, 0), MakeColour(255, 128, 128)},
    {TokenKind::LabelName, MakeColour(160, 0, 160), MakeColour(232, 150, 232)},
    {TokenKind::Variable, MakeColour(0, 104, 120), MakeColour(96, 208, 216)},
    {TokenKind::UnknownVariable, MakeColour(176, 72, 0), MakeColour(255, 168, 88)},
    {TokenKind::Number, MakeColour(40, 76, 128), MakeColour(170, 204, 232)},
    {TokenKind::Text, MakeColour(128, 72, 24), MakeColour(232, 200, 144)},
    {TokenKind::ColourName, MakeColour(104, 48, 144), MakeColour(200, 176, 255)},
    {TokenKind::Separator, Black, MakeColour(222, 222, 222)},
    {TokenKind::Comment, MakeColour(0, 112, 0), MakeColour(120, 192, 120)},
});

constexpr bool InksAreInOrder() {
  for (std::size_t i = 0; i < AllInks.size(); ++i) {
    if (AllInks[i].Kind != static_cast<TokenKind>(i)) return false;
  }
  return AllInks.size() == static_cast<std::size_t>(TokenKind::Comment) + 1;
}
static_assert(InksAreInOrder());

// The line as the reader would see it: TABs are blanks, a mark of continuation is none of its text.
std::string ReadableLine(std::string_view line, std::string_view before) {
  std::string text(before);
  text += line;
  std::replace(text.begin(), text.end(), '\t', ' ');
  if (IsContinued(text)) text.back() = ' ';
  return text;
}

}  // namespace

std::vector<ScriptToken> TokensOfLine(std::string_view line, const LineContext& context) {
  const std::string text = ReadableLine(line, context.Before);
  const std::size_t skipped = context.Before.size();
  std::vector<ByteToken> found = Tokenizer(text, context).Read();
  UnitCounter units(line);
  std::vector<ScriptToken> tokens;
  for (const ByteToken& token : found) {
    const std::size_t end = EndOf(token.Text, text);
    if (end <= skipped || token.Kind == TokenKind::Plain) continue;
    const std::size_t begin = std::max(skipped, BeginOf(token.Text, text));
    const std::size_t from = units.UnitsAt(begin - skipped);
    tokens.push_back({from, units.UnitsAt(end - skipped), token.Kind, token.Meant});
  }
  return tokens;
}

Colour InkOf(TokenKind kind, bool isDark) {
  const Inks& inks = AllInks[static_cast<std::size_t>(kind)];
  return isDark ? inks.OnDark : inks.OnLight;
}

}  // namespace vaxel
