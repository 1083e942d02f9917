#include "base/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

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

std::optional<std::string> ToWindows1252(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    std::uint32_t code = TakeCharacter(text);
    if (code >= 0x80 && (code < 0xA0 || code > 0xFF)) {
      const auto* const high = std::find(Windows1252High.begin(), Windows1252High.end(), code);
      if (high == Windows1252High.end()) return std::nullopt;
      code = 0x80 + static_cast<std::uint32_t>(high - Windows1252High.begin());
    }
    bytes += static_cast<char>(code);
  }
  return bytes;
}

std::string ToUtf16(std::string_view text, bool bigEndian) {
  std::string bytes;
  bytes.reserve(2 * text.size() + 2);
  const auto append = [&](std::uint32_t unit) {
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  };
  append(0xFEFF);
  while (!text.empty()) {
    const std::uint32_t code = TakeCharacter(text);
    if (code < 0x10000) {
      append(code);
    } else {
      append(0xD800 + ((code - 0x10000) >> 10));
      append(0xDC00 + ((code - 0x10000) & 0x3FF));
    }
  }
  return bytes;
}

bool HasNul(std::string_view text) {
  return text.find('\0') != std::string_view::npos;
}

}  // namespace

DecodedText DecodeAnyText(std::string bytes) {
  DecodedText decoded;
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    const bool bigEndian = bytes.front() == '\xFE';
    decoded.Encoding = bigEndian ? TextEncoding::Utf16BigEndian : TextEncoding::Utf16LittleEndian;
    decoded.Text = FromUtf16(std::string_view(bytes).substr(2), bigEndian);
  } else if (IsValidUtf8(bytes)) {
    const bool marked = bytes.starts_with(Utf8Mark);
    if (marked) bytes.erase(0, Utf8Mark.size());
    decoded.Encoding = marked ? TextEncoding::Utf8WithMark : TextEncoding::Utf8;
    decoded.Text = std::move(bytes);
  } else {
    decoded.Encoding = TextEncoding::Windows1252;
    decoded.Text = FromWindows1252(bytes);
  }
  return decoded;
}

std::optional<DecodedText> DecodeText(std::string bytes) {
  DecodedText decoded = DecodeAnyText(std::move(bytes));
  if (HasNul(decoded.Text)) return std::nullopt;
  return decoded;
}

EncodedText EncodeText(std::string_view text, TextEncoding wanted) {
  std::optional<std::string> bytes;
  switch (wanted) {
    case TextEncoding::Windows1252:
      bytes = ToWindows1252(text);
      break;
    case TextEncoding::Utf16LittleEndian:
    case TextEncoding::Utf16BigEndian:
      bytes = ToUtf16(text, wanted == TextEncoding::Utf16BigEndian);
      break;
    case TextEncoding::Utf8:
      bytes = text;
      break;
    case TextEncoding::Utf8WithMark:
      break;
  }
  // Some texts look like another encoding in the one wanted.
  if (bytes && DecodeAnyText(*bytes).Text == text) return {*std::move(bytes), wanted};
  return {std::string(Utf8Mark).append(text), TextEncoding::Utf8WithMark};
}

std::string NormaliseLineEnds(std::string text) {
  constexpr char endOfFile = '\x1A';
  if (text.ends_with(endOfFile)) text.pop_back();
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
