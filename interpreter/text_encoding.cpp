#include "interpreter/text_encoding.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include "text/utf8.h"

namespace vaxel {
namespace {

// The bytes 0x80 to 0x9F of Windows code page 1252; the five that it leaves open stand for themselves.
constexpr std::array<std::uint16_t, 32> Windows1252High = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::string FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? Windows1252High[byte - 0x80] : byte);
  }
  return text;
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  const auto unitAt = [&](std::size_t i) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
  };
  std::string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    std::uint32_t code = unitAt(i);
    if (code >= 0xD800 && code < 0xE000) {
      const std::uint32_t low = code < 0xDC00 && i + 3 < bytes.size() ? unitAt(i + 2) : 0;
      if (low >= 0xDC00 && low < 0xE000) {
        code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      } else {
        code = ReplacementCharacter;
      }
    }
    AppendUtf8(text, code);
  }
  return text;
}

bool HasNul(std::string_view text) {
  return text.find('\0') != std::string_view::npos;
}

}  // namespace

std::optional<DecodedText> DecodeText(std::string bytes) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  DecodedText decoded;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    const bool bigEndian = bytes.front() == '\xFE';
    decoded.Encoding = bigEndian ? TextEncoding::Utf16BigEndian : TextEncoding::Utf16LittleEndian;
    decoded.Text = FromUtf16(std::string_view(bytes).substr(2), bigEndian);
  } else if (IsValidUtf8(bytes)) {
    const bool marked = bytes.starts_with(mark);
    if (marked) bytes.erase(0, mark.size());
    decoded.Encoding = marked ? TextEncoding::Utf8WithMark : TextEncoding::Utf8;
    decoded.Text = std::move(bytes);
  } else {
    decoded.Encoding = TextEncoding::Windows1252;
    decoded.Text = FromWindows1252(bytes);
  }
  if (HasNul(decoded.Text)) return std::nullopt;
  return decoded;
}

std::string NormaliseLineEnds(std::string text) {
  std::size_t from = text.find('\r');
  if (from == std::string::npos) return text;
  std::size_t to = from;
  for (; from < text.size(); ++from) {
    char c = text[from];
    if (c == '\r') {
      if (from + 1 < text.size() && text[from + 1] == '\n') continue;
      c = '\n';
    }
    text[to++] = c;
  }
  text.resize(to);
  return text;
}

}  // namespace vaxel
