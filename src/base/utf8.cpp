#include "base/utf8.h"

#include <algorithm>

#include <cstddef>

namespace vaxel {
namespace {

// The length of the well-formed UTF-8 sequence at the start of the text; 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  if (length < 3) return length;
  // Overlong forms, surrogates and code points beyond the last one are malformed.
  const unsigned second = byte(1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool beyond = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
  return overlong || beyond ? 0 : length;
}

}  // namespace

void AppendUtf8(std::string& text, char32_t code) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

char32_t TakeCharacter(std::string_view& text) {
  const std::size_t length = SequenceLength(text);
  const auto lead = static_cast<unsigned char>(text.front());
  char32_t code = length == 1 ? lead : length == 0 ? ReplacementCharacter : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  text.remove_prefix(length == 0 ? 1 : length);
  return code;
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::size_t Utf16Length(std::string_view text) {
  std::size_t units = 0;
  while (!text.empty()) units += TakeCharacter(text) > 0xFFFF ? 2 : 1;
  return units;
}

bool IsValidUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace vaxel
