// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vaxel {

inline constexpr char32_t ReplacementCharacter = 0xFFFD;

void AppendUtf8(std::string& text, char32_t code);

// Takes the first character off the text, which is not empty. A byte that begins no well-formed sequence is
// taken alone and reads as U+FFFD.
char32_t TakeCharacter(std::string_view& text);

// How many characters a well-formed text has.
std::size_t CharacterCount(std::string_view text);

// The length of the text in the 16-bit units in which the platform's editors count.
std::size_t Utf16Length(std::string_view text);

// Whether the text is well-formed.
bool IsValidUtf8(std::string_view text);

}  // namespace vaxel
