#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "drawing/drawing_fault.h"

namespace vaxel {

class StringTable;

// How a fault is reported.
enum class FaultKind : std::uint8_t { Line, Order, UnknownCommand };

// Why a line failed; the values are ids of the string table.
enum class FaultReason : std::int16_t {
  None = 0,
  Unforeseen = 171,
  DivisionByZero = 173,
  Overflow = 174,
  Domain = 175,
  Expression = 176,
  Nesting = 177,
  UnknownVariable = 178,
  TooManyVariables = 179,
  CircularVariable = 180,
  DuplicateLabel = 182,
  UnfinishedLine = 183,
  MissingParameter = 184,
  TooManyOperations = 185,
  TextTooLong = 186,
  MissingCoordinate = 187,
  BadPoint = 188,
  DashWithoutLength = 189,
  IncludedOnly = 190,
  BadOrientation = 191,
  BadInterval = 192,
  NotAList = 193,
  DidYouMean = 194,
  ReadOnlyVariable = 195,
  BadVariableName = 196,
  OutOfMemory = 197,
  BadTextOption = 198,
  BadFontSize = 199,
  MissingParenthesis = 200,
  ListLengths = 255,
  BadValueFormat = 256,
  TooMuchText = 258,
  NoSupport = 259,
  UnknownOption = 260,
  FileMissing = 261,
  FileUnreadable = 262,
  FileTooLarge = 263,
  NotAPicture = 264,
  PictureIncomplete = 265,
  PictureTooLarge = 266,
  TooManyPictures = 267,
  BadPictureSize = 268,
  BadOpening = 269,
  BadNumber = 270,
  NoRoomForDovetails = 271,
  UnknownTarget = 272,
  BadComparison = 273,
  MissingThen = 274,
  NoDataFile = 275,
  NotAText = 276,
  NoAnswer = 277,
  TimeUp = 278,
  IncompleteParameter = 280
};

// Ends the run: thrown by whatever finds a line malformed or misplaced, and caught by the run alone, which
// reports it with the line and the file.
class ScriptFault {
 public:
  // value fills the reason's "%1".
  explicit ScriptFault(FaultReason reason, std::string value = {})
      : reason_(reason), value_(std::move(value)) {}
  ScriptFault(FaultKind kind, FaultReason reason, std::string value)
      : kind_(kind), reason_(reason), value_(std::move(value)) {}
  explicit ScriptFault(const DrawingFault& fault);

  // A line that the language answers with the fault of a division by zero, whatever is wrong with it; the
  // report adds the reason.
  static ScriptFault Arithmetic(FaultReason reason, std::string value = {});

  FaultKind Kind() const { return kind_; }
  FaultReason Reason() const { return reason_; }
  // In the language with this base; empty when there is nothing to add to the report.
  std::string Description(const StringTable& strings, int languageBase) const;

 private:
  FaultKind kind_ = FaultKind::Line;
  FaultReason reason_;
  bool arithmetic_ = false;
  std::string value_;
};

// Returns the value; a value that is not finite is the fault that the arithmetic ended in.
double RequireFinite(double value);

}  // namespace vaxel
