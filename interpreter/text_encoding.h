// From the bytes of a file to text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vaxel {

enum class TextEncoding : std::uint8_t { Utf8, Utf8WithMark, Utf16LittleEndian, Utf16BigEndian, Windows1252 };

struct DecodedText {
  std::string Text;  // UTF-8
  TextEncoding Encoding = TextEncoding::Utf8;
};

// UTF-16 when a byte-order mark says so, UTF-8 when the bytes are valid UTF-8, else Windows-1252. None for
// bytes that are no text: those that hold a NUL character. A lone surrogate becomes U+FFFD.
std::optional<DecodedText> DecodeText(std::string bytes);

// Every line end (CR LF, LF or CR) as one LF.
std::string NormaliseLineEnds(std::string text);

}  // namespace vaxel
