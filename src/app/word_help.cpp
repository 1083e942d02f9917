#include "app/word_help.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "app/command_search.h"
#include "app/utf16_offsets.h"
#include "base/text.h"
#include "commands/command_table.h"
#include "interpreter/system_variables.h"

namespace vaxel {
namespace {

// Who wants to read more lets the script draw it.
constexpr std::size_t LongestValue = 100;

std::string Shortened(std::string value) {
  const std::size_t end = std::min(ByteAtUnit(value, LongestValue), value.find_first_of("\r\n"));
  if (end < value.size()) value.replace(end, std::string::npos, "…");
  return value;
}

std::string TextOfVariable(std::string_view name, const WordKnowledge& knowledge) {
  const auto& [strings, base] = knowledge.Language;
  if (IsSystemVariable(name))
    return std::string(name) + ": " + std::string(strings.Text(base, TextId::SystemVariable));
  if (auto value = knowledge.ValueOf(name))
    return strings.Text(base, TextId::ValueInLastRun, name, Shortened(std::move(*value)));
  constexpr std::size_t anyLine = std::numeric_limits<std::uint32_t>::max();
  for (const ScriptSurvey::Named& known : knowledge.Survey.VariablesUpTo(anyLine)) {
    if (EqualIgnoringCase(known.Name, name))
      return std::string(name) + ": " +
             strings.Text(base, TextId::VariableOfLine, std::to_string(known.Line));
  }
  return strings.Text(base, TextId::GetsNoValue, name);
}

std::string TextOfColour(Colour colour, const HelpLanguage& language) {
  return language.Strings.Text(language.Base, TextId::ColourParts, std::to_string(RedOf(colour)),
                               std::to_string(GreenOf(colour)), std::to_string(BlueOf(colour)));
}

std::string TextOf(const ScriptToken& token, std::string_view word, const WordKnowledge& knowledge) {
  const HelpLanguage& language = knowledge.Language;
  if (token.Meant) return TextOfColour(*token.Meant, language);
  switch (token.Kind) {
    case TokenKind::Keyword: {
      const CommandRow* const row = AllCommands().Find(word);
      return row ? std::string(PurposeOf(*row, language.Strings, language.Base)) : std::string();
    }
    case TokenKind::Variable:
    case TokenKind::UnknownVariable:
      return TextOfVariable(NameOf(word), knowledge);
    default:
      return {};
  }
}

}  // namespace

std::optional<WordHelp> HelpForWord(std::string_view line, std::size_t column, const LineContext& context,
                                    const WordKnowledge& knowledge) {
  for (const ScriptToken& token : TokensOfLine(line, context)) {
    if (column < token.Begin || column >= token.End) continue;
    const std::size_t begin = ByteAtUnit(line, token.Begin);
    const std::string_view word = line.substr(begin, ByteAtUnit(line, token.End) - begin);
    std::string text = TextOf(token, word, knowledge);
    if (text.empty()) return std::nullopt;
    return WordHelp{{token.Begin, token.End}, std::move(text), token.Meant};
  }
  return std::nullopt;
}

}  // namespace vaxel
