#include "fuzz/svg_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace vaxel::fuzz {
namespace {

using namespace std::string_view_literals;

// What the value of an attribute is.
enum class ValueKind { Number, Numbers, Colour, Free };

struct AttributeRow {
  std::string_view Name;
  ValueKind Kind;
};

constexpr AttributeRow Attributes[] = {{"x", ValueKind::Number},
                                       {"y", ValueKind::Number},
                                       {"x1", ValueKind::Number},
                                       {"y1", ValueKind::Number},
                                       {"x2", ValueKind::Number},
                                       {"y2", ValueKind::Number},
                                       {"cx", ValueKind::Number},
                                       {"cy", ValueKind::Number},
                                       {"r", ValueKind::Number},
                                       {"rx", ValueKind::Number},
                                       {"ry", ValueKind::Number},
                                       {"width", ValueKind::Number},
                                       {"height", ValueKind::Number},
                                       {"stroke-width", ValueKind::Number},
                                       {"font-size", ValueKind::Number},
                                       {"textLength", ValueKind::Number},
                                       {"data-line", ValueKind::Number},
                                       {"viewBox", ValueKind::Numbers},
                                       {"points", ValueKind::Numbers},
                                       {"d", ValueKind::Numbers},
                                       {"transform", ValueKind::Numbers},
                                       {"fill", ValueKind::Colour},
                                       {"stroke", ValueKind::Colour},
                                       {"xmlns", ValueKind::Free},
                                       {"xmlns:xlink", ValueKind::Free},
                                       {"xlink:href", ValueKind::Free},
                                       {"xml:space", ValueKind::Free},
                                       {"style", ValueKind::Free},
                                       {"lengthAdjust", ValueKind::Free},
                                       {"text-rendering", ValueKind::Free},
                                       {"preserveAspectRatio", ValueKind::Free},
                                       {"stroke-linecap", ValueKind::Free},
                                       {"stroke-linejoin", ValueKind::Free},
                                       {"font-family", ValueKind::Free},
                                       {"font-weight", ValueKind::Free},
                                       {"font-style", ValueKind::Free}};

constexpr std::array Elements = {"svg"sv,    "g"sv,       "line"sv, "rect"sv, "polygon"sv,
                                 "circle"sv, "ellipse"sv, "path"sv, "text"sv, "image"sv};

bool IsNumber(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

bool IsColour(std::string_view text) {
  const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
  return text == "none" ||
         (text.size() == 7 && text[0] == '#' && std::all_of(text.begin() + 1, text.end(), isDigit));
}

class Reader {
 public:
  explicit Reader(std::string_view document) : rest_(document) {}

  // Throws what is wrong.
  void Read() {
    Characters();
    do {
      Expect("<");
      Tag();
      if (open_.empty() || open_.back() != "text") Blanks();
      if (!open_.empty() && open_.back() == "text") Content();
    } while (!open_.empty());
    Blanks();
    if (!rest_.empty()) Fail("text behind the document");
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw std::runtime_error(what + ": " + std::string(rest_.substr(0, 300)));
  }
  bool Take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }
  void Expect(std::string_view text) {
    if (!Take(text)) Fail("'" + std::string(text) + "' is missing");
  }
  void Blanks() {
    while (Take(" ") || Take("\n")) {
    }
  }
  std::string_view TakeUntil(std::string_view ends) {
    const std::size_t at = std::min(rest_.find_first_of(ends), rest_.size());
    const std::string_view text = rest_.substr(0, at);
    rest_.remove_prefix(at);
    return text;
  }

  // XML has no other characters than these, and UTF-8 no other forms of them.
  void Characters() const {
    for (std::size_t at = 0; at < rest_.size();) {
      const auto first = static_cast<unsigned char>(rest_[at]);
      const std::size_t length = first < 0x80   ? 1
                                 : first < 0xC2 ? 0
                                 : first < 0xE0 ? 2
                                 : first < 0xF0 ? 3
                                                : 4;
      char32_t code = length == 1 ? first : first & (0x7FU >> length);
      for (std::size_t i = 1; i < length; ++i) {
        const unsigned next = at + i < rest_.size() ? static_cast<unsigned char>(rest_[at + i]) : 0U;
        if (next >> 6 != 2) throw std::runtime_error("no UTF-8: " + std::string(rest_.substr(at, 100)));
        code = code << 6 | (next & 0x3F);
      }
      constexpr std::array<char32_t, 5> least = {0x110000, 0, 0x80, 0x800, 0x10000};
      const bool isOfXml = code >= 0x20 || code == '\t' || code == '\n' || code == '\r';
      const bool isNone = (code >= 0xD800 && code < 0xE000) || code == 0xFFFE || code == 0xFFFF;
      if (!isOfXml || isNone || code > 0x10FFFF || code < least[length])
        throw std::runtime_error("a character that XML has not: " + std::string(rest_.substr(at, 100)));
      at += length;
    }
  }

  void Tag() {
    if (Take("/")) {
      if (open_.empty() || TakeUntil(">") != open_.back()) Fail("another element was open");
      open_.pop_back();
      return Expect(">");
    }
    const std::string_view name = TakeUntil(" >/");
    if (std::find(Elements.begin(), Elements.end(), name) == Elements.end()) Fail("an unknown element");
    if (open_.empty() != (name == "svg")) Fail("an element in the wrong place");
    std::vector<std::string_view> seen;
    while (Take(" ")) seen.push_back(Attribute(seen));
    if (!Take("/")) open_.push_back(name);
    Expect(">");
  }

  std::string_view Attribute(const std::vector<std::string_view>& seen) {
    const std::string_view name = TakeUntil("=");
    if (std::find(seen.begin(), seen.end(), name) != seen.end()) Fail("an attribute twice");
    Expect("=\"");
    const std::string_view value = TakeUntil("\"");
    Expect("\"");
    const auto* const row = std::find_if(std::begin(Attributes), std::end(Attributes),
                                         [name](const AttributeRow& known) { return known.Name == name; });
    if (row == std::end(Attributes)) Fail("an unknown attribute before");
    if (!Fits(row->Kind, value)) Fail(std::string(name) + " = " + std::string(value));
    return name;
  }

  bool Fits(ValueKind kind, std::string_view value) const {
    switch (kind) {
      case ValueKind::Number:
        // Those of the document itself are in millimetres.
        if (open_.empty() && value.ends_with("mm")) value.remove_suffix(2);
        return IsNumber(value);
      case ValueKind::Numbers:
        return AreNumbers(value);
      case ValueKind::Colour:
        return IsColour(value);
      case ValueKind::Free:
        break;
    }
    return IsEscaped(value);
  }

  // Numbers between what else stands in paths and transformations.
  static bool AreNumbers(std::string_view value) {
    constexpr std::string_view between = " ,()MLAZ";
    for (const std::string_view word : {"rotate"sv, "matrix"sv})
      if (value.starts_with(word)) value.remove_prefix(word.size());
    while (!value.empty()) {
      const std::size_t length = std::min(value.find_first_of(between), value.size());
      if (length > 0 && !IsNumber(value.substr(0, length))) return false;
      value.remove_prefix(std::min(length + 1, value.size()));
    }
    return true;
  }

  static bool IsEscaped(std::string_view text) {
    for (std::size_t at = 0; (at = text.find_first_of("&<", at)) != std::string_view::npos; ++at) {
      const auto isHere = [&](std::string_view entity) { return text.substr(at).starts_with(entity); };
      if (!isHere("&amp;") && !isHere("&lt;") && !isHere("&gt;") && !isHere("&quot;")) return false;
    }
    return true;
  }

  void Content() {
    const std::string_view text = TakeUntil("<");
    if (!IsEscaped(text) || text.find('>') != std::string_view::npos) Fail("text that is not escaped before");
  }

  std::string_view rest_;
  std::vector<std::string_view> open_;
};

}  // namespace

std::string FaultOfSvg(std::string_view document) {
  try {
    Reader(document).Read();
  } catch (const std::runtime_error& fault) {
    return fault.what();
  }
  return {};
}

}  // namespace vaxel::fuzz
