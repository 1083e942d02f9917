// Translates the text of an expression into instructions.
#pragma once

#include <string_view>

#include "interpreter/program.h"

namespace vaxel {

// Reads the text of an expression into instructions, operands before what is done with them. Where the text
// is no expression it stops: the instructions then give the value of what was read so far. A fault in the
// text becomes an instruction, so that those of computations before it come first.
//
// The instructions are added to the code. The function sets of the expression whether it is complete, its
// variables and its stack.
void ReadExpression(InstructionList& code, std::string_view text, std::string_view separator,
                    const ReferenceScope* scope, Expression& expression);

// The place in a text that is no expression at which it stops being one; its length where something is
// missing at its end.
std::size_t EndOfExpression(std::string_view text, std::string_view separator);

}  // namespace vaxel
