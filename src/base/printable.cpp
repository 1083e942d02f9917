#include "base/printable.h"

#include "base/utf8.h"

namespace vaxel {
namespace {

bool IsControl(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

// These turn the order in which the characters around them are shown: "gpj.exe" could pass for "exe.jpg".
bool TurnsDirection(char32_t code) {
  return code == 0x61C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

void AppendHex(std::string& text, char32_t code, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += "0123456789abcdef"[code >> shift & 0xF];
}

}  // namespace

std::string Printable(std::string_view text, LineBreaks breaks) {
  std::string printable;
  printable.reserve(text.size());
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t code = TakeCharacter(text);
    const std::string_view bytes = before.substr(0, before.size() - text.size());
    const bool isBreak = breaks == LineBreaks::Kept && (code == '\n' || code == '\t');
    const bool isStrayByte = code == ReplacementCharacter && bytes.size() == 1;
    if (isStrayByte || (IsControl(code) && !isBreak)) {
      printable += "\\x";
      AppendHex(printable, isStrayByte ? static_cast<unsigned char>(bytes[0]) : code, 2);
    } else if (TurnsDirection(code)) {
      printable += "\\u";
      AppendHex(printable, code, 4);
    } else {
      printable += bytes;
    }
  }
  return printable;
}

}  // namespace vaxel
