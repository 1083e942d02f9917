// The help text of a command, cut into the names of its parameters.
//
// A help text begins with the forms of its command, "Cercle[I] = [xx], [yy], rayon[§coefficient]
// [,début, fin, couleur]", and says below what the command does. It comes in any language, also in one that a
// user has added, and need not be well-formed.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace vaxel {

// A place in a help text, in bytes. It is empty where there is nothing.
struct TextRange {
  std::size_t Begin = 0, End = 0;

  bool IsEmpty() const { return Begin >= End; }
};

// The name of a parameter without the brackets around it, and those of its parts.
struct SyntaxParameter : TextRange {
  std::vector<TextRange> Parts{};
};

// One of the forms, which may go over several lines.
struct SyntaxLine : TextRange {
  // Of a condition these are the condition and what follows THEN or GOTO.
  std::vector<SyntaxParameter> Parameters{};
};

std::vector<SyntaxLine> SyntaxOf(std::string_view help);

}  // namespace vaxel
