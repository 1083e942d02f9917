// Places in a line as the platform's editors count them: in UTF-16 units.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/utf8.h"

namespace vaxel {

// The byte at which so many units have gone by; the end of the text when it has fewer. Within a character it
// is that character's beginning.
inline std::size_t ByteAtUnit(std::string_view text, std::size_t units) {
  std::string_view rest = text;
  std::size_t count = 0;
  while (!rest.empty()) {
    std::string_view behind = rest;
    count += TakeCharacter(behind) > 0xFFFF ? 2 : 1;
    if (count > units) break;
    rest = behind;
  }
  return text.size() - rest.size();
}

// Turns bytes of one text into units; each place lies not before the last one, so that all of them together
// take one pass over the text.
class UnitCounter {
 public:
  explicit UnitCounter(std::string_view text) : text_(text) {}

  std::size_t UnitsAt(std::size_t byte) {
    units_ += Utf16Length(text_.substr(byte_, byte - byte_));
    byte_ = byte;
    return units_;
  }

 private:
  std::string_view text_;
  std::size_t byte_ = 0, units_ = 0;
};

}  // namespace vaxel
