// From the bytes of a file to text, and back.
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

// The bytes are UTF-16 when a byte-order mark says so, UTF-8 when they are valid UTF-8, else Windows-1252.
// There is no text when they hold a NUL character. A lone surrogate becomes U+FFFD.
std::optional<DecodedText> DecodeText(std::string bytes);

// The same for bytes that may hold NUL characters, which the text then holds, too.
DecodedText DecodeAnyText(std::string bytes);

struct EncodedText {
  std::string Bytes;  // mark included
  TextEncoding Encoding = TextEncoding::Utf8;
};

// The bytes that decode to this text: in the wanted encoding or, when they would not, in UTF-8 with a mark.
EncodedText EncodeText(std::string_view text, TextEncoding wanted);

// Every line end (CR LF, LF or CR) as one LF. The character 0x1A that old programs end a file with is
// dropped.
std::string NormaliseLineEnds(std::string text);

}  // namespace vaxel
