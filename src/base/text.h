// Small operations on UTF-8 text. A blank is the character U+0020 alone.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vaxel {

std::string_view TrimLeft(std::string_view text);
std::string_view Trim(std::string_view text);

// The upper-case form of the Latin, Greek and Cyrillic letters; everything else stays as it stands. The
// result has as many bytes as the text.
std::string UpperCase(std::string_view text);
// Whether both texts have the same upper-case form.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// The text without its last character.
std::string_view DropLastCharacter(std::string_view text);
// At most maxBytes of the text, cut between characters, with "…" after it when it was cut.
std::string Shorten(std::string_view text, std::size_t maxBytes);

// Takes the first line, which is returned without its end (CR LF, LF or CR), off the text.
std::string_view TakeLine(std::string_view& text);

// How often the text holds the part, which is not empty, without overlaps.
std::size_t CountOf(std::string_view text, std::string_view part);

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads an unsigned decimal number with "." and an optional exponent at the start of the text. It returns how
// many characters the number takes, 0 when there is none. A number out of range reads as infinity or 0.
std::size_t ReadUnsignedNumber(std::string_view text, double& value);

// The number, sign included, with which the text begins after blanks; 0 when it begins with none.
double LeadingNumber(std::string_view text);
// Whether the whole text, blanks around it aside, is one number.
bool IsNumber(std::string_view text);

}  // namespace vaxel
