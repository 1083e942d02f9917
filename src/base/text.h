// Small operations on UTF-8 text. A blank is U+0020 or one of the blanks that do not break, U+00A0 and
// U+202F.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vaxel {

std::string_view TrimLeft(std::string_view text);
std::string_view Trim(std::string_view text);
// The same for a text that is kept or drawn: what does not break is a part of it.
std::string_view TrimText(std::string_view text);
// How many bytes the blank at the start of the text takes; 0 when there is none.
inline std::size_t BlankLength(std::string_view text) {
  if (text.empty()) return 0;
  // Most texts need no second look.
  if (static_cast<unsigned char>(text.front()) < 0xC2) return text.front() == ' ' ? 1 : 0;
  if (text.starts_with("\u00A0")) return 2;
  return text.starts_with("\u202F") ? 3 : 0;
}
// The place of the first blank; npos when there is none.
std::size_t FindBlank(std::string_view text);
// The text with every blank as U+0020.
std::string WithPlainBlanks(std::string_view text);

// How many bytes a dash at the start of the text takes that looks like "-" and is none, as word processors
// and web pages write them; 0 when there is none. The text with "-" for all of them.
std::size_t WrongMinusLength(std::string_view text);
std::string WithPlainMinus(std::string_view text);

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

// Of ASCII alone.
constexpr bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
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
