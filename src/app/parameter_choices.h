// The letters and words that a parameter may be, with what they mean.
#pragma once

#include <span>
#include <string_view>

#include "commands/parameter_list.h"
#include "resources/text_id.h"

namespace vaxel {

struct ParameterChoice {
  std::string_view Word;
  TextId Meaning{};
};

struct ParameterChoices {
  std::span<const ParameterChoice> List;
  // Whether several of them may stand together, in any order, as the letters of a text's options.
  bool AreLetters = false;
};

// It is empty for a kind that is no choice.
ParameterChoices ChoicesOf(ParameterKind kind);

}  // namespace vaxel
