// Files of added languages, whose lines name texts by their numbers.
#pragma once

#include <string>
#include <string_view>

#include "resources/text_id.h"

namespace vaxel::test {

inline std::string NumberOf(TextId id) {
  return std::to_string(static_cast<int>(id));
}

// The line that gives this text.
inline std::string LineOf(TextId id, std::string_view text) {
  return NumberOf(id) + " = " + std::string(text) + "\n";
}

}  // namespace vaxel::test
