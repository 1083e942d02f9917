// What the interpreter knows of a command: its row in the table of commands.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "resources/text_id.h"

namespace vaxel {

class Parameters;
struct RunContext;

// These bits of RunContext::OrderState tell what a run has done so far.
enum OrderBit : std::int16_t {
  OrderFormat = 1,    // FormatI
  OrderCentre = 4,    // CentreE or CentreI
  OrderIncluded = 8,  // Fichier
  OrderSupport = 32,  // a scale support exists
  OrderDrawn = 64     // something was drawn
};

// How the references to variables in a command's parameters are replaced before it is run.
enum class VariableUse : std::uint8_t {
  Replaced,  // all of them; one variable may then carry several parameters
  // The same, but parts after a second separator stay where they name lists: in the parameters 1, 5, 9, …
  ValueLists,
  ValueTextLists,          // 1, 2, 5, 6, 9, 10, …
  OrientedValueTextLists,  // 2, 3, 6, 7, 10, 11, …
  FirstList,               // 1
  SecondList,              // 2
  FourthList,              // 4
  Raw                      // none: the command reads names
};

// Where a command counts. Elsewhere it is passed over.
enum class Scope : std::uint8_t { Everywhere, ScreenOnly, PrinterOnly, MainScriptOnly };

using CommandHandler = void (*)(RunContext& run, const Parameters& parameters);

// A line of a command that reads its text in its own way, with what the command has worked out of it.
class CompiledCommand {
 public:
  virtual ~CompiledCommand() = default;
  virtual void Run(RunContext& run) = 0;
};

// Keyword and text are those of the line, and live as long. The result is null for a line that the handler is
// to run.
using CommandCompiler = std::unique_ptr<CompiledCommand> (*)(std::string_view keyword, std::string_view text);

// How a line of a command is read after its keyword.
enum class LineForm : std::uint8_t {
  Parameters,  // an apostrophe begins a comment
  Assignment,  // the keyword is a variable's name
  Condition,   // the keyword ends at a blank, a "=" belongs to the comparison; a command follows THEN
  Text         // from one parameter on all is one text, in which separators and apostrophes are ordinary
               // characters; an apostrophe begins no comment in the whole line
};

// Whether the command is an edge of a loop, all lines of which lie between two commands.
enum class BlockEdge : std::uint8_t { None, Begin, End };

// What sets a command apart from most others.
struct CommandRules {
  static constexpr std::int16_t NoLimit = 0x7FFF;
  static constexpr std::uint8_t AnyNumber = 0xFF;

  std::int16_t Sets = 0;  // order bits
  // So many parameters count; when the last of them is a colour of three parts, two more are a part of it.
  std::uint8_t Most = AnyNumber;
  std::int16_t OrderLimit = NoLimit;  // the order word of the main script must not exceed it
  Scope Where = Scope::Everywhere;
  LineForm Form = LineForm::Parameters;
  std::uint8_t TextFrom = 0;  // of the form Text the parameter that is the text, from 1; else 0
  VariableUse Variables = VariableUse::Replaced;
  CommandCompiler Compile = nullptr;  // null: the handler runs all lines
  std::string_view Shown{};           // the keyword that users see instead; empty: the row's own
  // The language did not always have it: the manual says which these are, and "Keyword :" stays a label.
  bool IsAddition = false;
  BlockEdge Block = BlockEdge::None;
  // What the parameters are, for those who help to write a line; what runs it asks its handler.
  std::string_view Takes{};
};

// One keyword of the language.
struct CommandRow {
  std::string_view Keyword;  // as users see it; it is recognised in any case
  CommandHandler Handler = nullptr;
  TextId Help{};  // its syntax
  CommandRules Rules{};

  std::string_view Spelling() const { return Rules.Shown.empty() ? Keyword : Rules.Shown; }
  bool TakesComments() const {
    return Rules.Form == LineForm::Parameters || Rules.Form == LineForm::Assignment;
  }
};

// The commands that a run knows.
class CommandSet {
 public:
  virtual ~CommandSet() = default;
  // The row of a keyword, which may be in any case; it is null for an unknown one.
  virtual const CommandRow* Find(std::string_view keyword) const = 0;
  // The spelling of the keyword most like an unknown one; it is empty when none is like it.
  virtual std::string_view Suggest(std::string_view keyword) const = 0;
};

}  // namespace vaxel
