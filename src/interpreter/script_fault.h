// The fault with which a line ends the run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/drawing_fault.h"
#include "resources/text_id.h"

namespace vaxel {

class StringTable;

// How a fault is reported.
enum class FaultKind : std::uint8_t { Line, Order, UnknownCommand };

// The text that says why a line failed; it is None where there is nothing to add to the report.
using FaultReason = TextId;

// Ends the run: thrown by whatever finds a line malformed or misplaced, and caught at the run's top, which
// reports it with the line and the file. What reads parts of scripts outside a run, as the editor's colours
// do, catches it itself.
class ScriptFault {
 public:
  // The values fill the reason's "%1" to "%3".
  explicit ScriptFault(FaultReason reason, std::string value = {}, std::string second = {},
                       std::string third = {})
      : reason_(reason), value_(std::move(value)), second_(std::move(second)), third_(std::move(third)) {}
  ScriptFault(FaultKind kind, FaultReason reason, std::string value)
      : kind_(kind), reason_(reason), value_(std::move(value)) {}
  explicit ScriptFault(const DrawingFault& fault);

  // A line that the language answers with the fault of a division by zero, whatever is wrong with it; the
  // report adds the reason.
  static ScriptFault Arithmetic(FaultReason reason, std::string value = {});

  // Adds a sentence behind the reason, which says what to mend; the values fill its "%1" and "%2".
  ScriptFault& Add(TextId hint, std::string value = {}, std::string second = {}) {
    hints_.push_back({hint, std::move(value), std::move(second)});
    return *this;
  }
  // The line that was run, where it is another than the one in the script. The first one that is told counts.
  void NoteLineRun(std::string_view line) {
    if (lineRun_.empty()) lineRun_ = line;
  }
  const std::string& LineRun() const { return lineRun_; }

  // Whether what the line's variables hold may be to blame.
  bool DependsOnValues() const;

  FaultKind Kind() const { return kind_; }
  FaultReason Reason() const { return reason_; }
  // The text of the fault in the language with this base, each hint in a line of its own; it is empty when
  // there is nothing to add to the report.
  std::string Description(const StringTable& strings, int languageBase) const;

 private:
  FaultKind kind_ = FaultKind::Line;
  FaultReason reason_;
  bool arithmetic_ = false;
  struct Hint {
    TextId Text;
    std::string Value, Second;
  };
  std::vector<Hint> hints_;
  std::string lineRun_;
  std::string value_, second_, third_;
};

// Returns the value; a value that is not finite is the fault that the arithmetic ended in.
double RequireFinite(double value);

}  // namespace vaxel
