// What the parameters of a command are: the kind of each, and what stands for it when it is left out.
//
// A row of the command table says it in one text, "x?, y?, number§number=1, colour?":
//   ,    parts the parameters, § the parts of one parameter, | the forms that a line may have
//   *    stands before the first of the parameters that may come again and again
//   =V   after a kind: what is left out is worth V; "#3" is what parameter 3 is worth
//   ?    after a kind: what is left out is what stands, as the current point or colour
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "interpreter/command_row.h"
#include "interpreter/variables.h"

namespace vaxel {

enum class ParameterKind : std::uint8_t {
  Number,
  X,
  Y,
  ScaleValue,
  Step,          // of a series of values, or "auto", or a list
  ShapeOfMark,   // of a graduation
  Unit,          // of a value
  Notation,      // of figures
  Orientation,   // of a scale's figures
  Ink,           // a colour, by its name or its parts
  ColourOrNone,  // the same, or "N"
  LeadColour,    // the same before the points: a number in its place is the first coordinate
  Pen,           // a width in pixels
  PenMm,         // a width with "mm"
  PenEnds,
  Text,
  TextLetters,     // options of a text
  ArcTextLetters,  // of a text on an arc
  Multiplier,      // of the font's size, and a style
  FontSize,        // and a style
  FontName,
  FontChange,  // size and style in either manner
  ScriptFile,
  DataFile,
  PictureFile,
  PictureScale,     // a coefficient
  PictureBox,       // X, Y, Z or A and measures
  PicturePixels,    // V and the variables that take them
  PicturePosition,  // of a picture at its point
  CornerForm,       // of a frame
  DovetailEnds,
  LightType,
  PageForm,
  LogLetter,     // says that a scale is logarithmic
  TableWord,     // says that a table follows
  ListWord,      // says that a list follows
  StraightMark,  // says that a table is straight between its points
  Variable,      // the name of one that gets a value
  List,          // the name of one that holds several values
  Value,         // of an assignment
  Law,           // an expression in %V
  Bound,         // of a loop; separators in parentheses belong to it
  Prompt,        // a question; separators belong to it, but for the last one
  Argument,      // of an included script
  JumpLabel,
  Condition,
  Command,  // a whole line of one
  Separator,
  Format  // of values; separators belong to it
};

// What a part of a parameter is worth when it is left out.
struct ParameterDefault {
  enum class Kind : std::uint8_t {
    None,       // it must not be left out, or says nothing then
    Worth,      // what the text says
    Standing,   // what stands
    Parameter,  // what another parameter is worth, of number N
  };
  Kind What = Kind::None;
  std::string_view Text{};
  std::size_t N = 0;
};

struct ParameterPart {
  ParameterKind Kind{};
  ParameterDefault Default{};
};

// The parts that second separators part; at least one.
using ParameterPartList = std::vector<ParameterPart>;

// One of the forms that a command's line may have.
struct ParameterForm {
  std::vector<ParameterPartList> Parameters;
  std::size_t RepeatsFrom = 0;  // the parameters from this one to the last come again; 0: none do

  // The parts of parameter n, counted from 1; null where there is none.
  const ParameterPartList* At(std::size_t n) const;
  // So many parameters the form may have.
  bool Holds(std::size_t count) const { return RepeatsFrom != 0 || count <= Parameters.size(); }
};

// The forms of a command of the table. They live as long as the program.
std::span<const ParameterForm> FormsOf(const CommandRow& row);

// The form that a line's parameters have: of those whose marks ("L", "table", "*") the line has, the first
// that may hold as many. text is all of the parameters, without a comment.
const ParameterForm& FormOfLine(const CommandRow& row, std::string_view text, const Separators& separators);

// The parameters of a line as its command takes them: views of the text, blanks included, of which the last
// may hold separators.
std::vector<std::string_view> SplitParameters(const CommandRow& row, const ParameterForm& form,
                                              std::string_view text, const Separators& separators);

// Which parameter of the form a line's parameter n is: a line may leave the colour before its points away.
std::size_t PlaceInForm(const ParameterForm& form, std::span<const std::string_view> parameters,
                        std::size_t n);

}  // namespace vaxel
