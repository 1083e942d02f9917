#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "resources/text_id.h"

namespace vaxel {

class Parameters;
struct RunContext;

// What a run has done so far, as bits of RunContext::OrderState.
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
  // The same, but parts behind a second separator stay where they name lists: in the parameters 1, 5, 9, …
  ValueLists,
  ValueTextLists,          // 1, 2, 5, 6, 9, 10, …
  OrientedValueTextLists,  // 2, 3, 6, 7, 10, 11, …
  FourthList,              // 4
  Raw                      // none: the command reads names
};

// Where a command counts. Elsewhere it is passed over.
enum class Scope : std::uint8_t { Everywhere, ScreenOnly, PrinterOnly, MainScriptOnly };

using CommandHandler = void (*)(RunContext& run, const Parameters& parameters);

// A line that is run again and again, with what can be worked out beforehand worked out.
class PreparedCommand {
 public:
  virtual ~PreparedCommand() = default;
  // Does all that running the line does. False, with nothing done, where that must be done in the plain way:
  // it depends on what the variables hold.
  virtual bool Run(RunContext& run) = 0;
};

// Prepares a line of a command, of which keyword and text are those of the line; null when it cannot be.
// Separators are those in force: the line is prepared anew when they change.
using CommandPreparer = std::unique_ptr<PreparedCommand> (*)(const RunContext& run, std::string_view keyword,
                                                             std::string_view text);

// One keyword of the language.
struct CommandRow {
  static constexpr std::int16_t NoLimit = 0x7FFF;

  std::string_view Keyword;   // upper case
  std::string_view Spelling;  // as shown to users
  CommandHandler Handler = nullptr;
  TextId HelpId{};        // its syntax help
  std::int16_t Sets = 0;  // order bits
  Scope Where = Scope::Everywhere;
  VariableUse Variables = VariableUse::Replaced;
  // The parameter from which all that follows is one text, in which separators and apostrophes are ordinary
  // characters; 0: none. An apostrophe then begins no comment in the whole line.
  std::uint8_t TextFrom = 0;
  // Null: where all parameters are numbers and fixed texts, they are prepared for the handler.
  CommandPreparer Prepare = nullptr;
  std::int16_t OrderLimit = NoLimit;  // the order word of the main script must not exceed it
};

// The commands that a run knows.
class CommandSet {
 public:
  virtual ~CommandSet() = default;
  // The row of a keyword in upper case; null for an unknown one.
  virtual const CommandRow* Find(std::string_view keyword) const = 0;
  // The spelling of the keyword most like an unknown one; empty when none is like it.
  virtual std::string_view Suggest(std::string_view keyword) const = 0;
};

}  // namespace vaxel
