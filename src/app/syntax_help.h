// The help that stands beside a line while it is written.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/script_tokens.h"
#include "commands/parameter_list.h"
#include "resources/string_table.h"

namespace vaxel {

// A place in a text, in UTF-16 units.
struct ShownRange {
  std::size_t Begin = 0, End = 0;
  friend bool operator==(const ShownRange&, const ShownRange&) = default;
};

struct SyntaxHelp {
  enum class Kind : std::uint8_t {
    Command,  // Text is the help of Row
    Other,    // Text is that of a label or a comment
    Unknown   // the word is no command: Text is a head, Commands are those that may be meant
  };
  Kind What = Kind::Unknown;
  std::string Text;
  const CommandRow* Row = nullptr;
  // The forms of the command in Text, and which of them the line has.
  std::vector<ShownRange> Forms;
  std::size_t Form = 0;
  // The parameter in which the cursor is: its number, from 1, and its place in the line; 0 where the cursor
  // is in none. Where its name, and that of the part, stands in Text; none where the help does not name it.
  std::size_t Parameter = 0;
  ShownRange InLine;
  std::optional<ShownRange> Name, PartName;
  // What the part is worth when it is left out, in words ("by default: 0"); empty where nothing stands for
  // it.
  std::string Default;
  std::vector<const CommandRow*> Commands;
};

struct HelpLanguage {
  const StringTable& Strings;
  int Base = 0;  // of the language of menus and help
};

// The help for a line, with the cursor before the unit of that number.
SyntaxHelp HelpForLine(std::string_view line, std::size_t column, const LineContext& context,
                       const HelpLanguage& language);

// What a part of a parameter is worth when it is left out, in words without "by default"; empty for nothing.
// help is the text of the command, in which the names of its parameters stand.
std::string DefaultText(const ParameterPart& part, const ParameterForm& form, std::size_t formIndex,
                        std::string_view help, const HelpLanguage& language);

}  // namespace vaxel
