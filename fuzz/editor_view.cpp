#include "fuzz/editor_view.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "app/completion.h"
#include "app/keyword_spelling.h"
#include "app/script_survey.h"
#include "app/script_tokens.h"
#include "app/syntax_help.h"
#include "base/utf8.h"
#include "fuzz/target.h"
#include "resources/string_table.h"

namespace vaxel::fuzz {
namespace {

// So many lines before the end are written in.
constexpr std::size_t WrittenLines = 2;

class SmallOutside : public CompletionSource {
 public:
  std::vector<std::string> FilesIn(std::string_view folder, std::size_t) override {
    return {std::string(folder) + "inc.dat"};
  }
  std::span<const std::string> Fonts() override { return fonts_; }

 private:
  std::vector<std::string> fonts_ = {"Arial", "Times New Roman"};
};

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) lines.push_back(TakeLine(text));
  return lines;
}

LineContext ContextOf(const ScriptSurvey& survey) {
  return {.IsVariable = [&survey](std::string_view name) { return survey.HasVariable(name); }};
}

void CheckTokens(std::string_view line, const LineContext& context) {
  const std::size_t length = Utf16Length(context.Before) + Utf16Length(line);
  std::size_t end = 0;
  for (const ScriptToken& token : TokensOfLine(line, context)) {
    Require(token.Begin >= end && token.End > token.Begin && token.End <= length,
            "the words of a line stand in order within it", line);
    end = token.End;
  }
}

}  // namespace

void ReadAsEditor(std::string_view text) {
  ScriptSurvey survey;
  survey.Read(text);
  const LineContext context = ContextOf(survey);
  for (const std::string_view line : LinesOf(text)) CheckTokens(line, context);
}

void WriteAsEditor(std::string_view text) {
  static const StringTable strings;
  const HelpLanguage language = {strings, LanguageBlock};
  ScriptSurvey survey;
  survey.Read(text);
  const LineContext context = ContextOf(survey);
  SmallOutside outside;
  const std::vector<std::string_view> lines = LinesOf(text);
  const std::size_t first = lines.size() - std::min(lines.size(), WrittenLines);
  for (std::size_t i = first; i < lines.size(); ++i) {
    const std::size_t length = Utf16Length(lines[i]);
    for (const std::size_t column : {length, length / 2}) {
      HelpForLine(lines[i], column, context, language);
      const Completions offers =
          Complete({lines[i], column, i + 1, true}, {context, survey, outside, language});
      Require(offers.Begin <= offers.End && offers.End <= length, "an offer takes a part of the line's place",
              lines[i]);
    }
    SpellKeywords(lines[i], context);
  }
}

}  // namespace vaxel::fuzz
