#include "interpreter/data_fields.h"

#include <algorithm>

#include "base/text.h"

namespace vaxel {
namespace {

// A TAB is a blank where it does not separate.
std::string_view TrimWhite(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// The place after the quotes with which a text begins; the end of the text where they are not closed.
std::size_t EndOfQuotes(std::string_view text) {
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != '"') continue;
    if (i + 1 == text.size() || text[i + 1] != '"') return i + 1;
    ++i;
  }
  return text.size();
}

std::size_t FindOutsideQuotes(std::string_view line, std::string_view separator) {
  bool isQuoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') isQuoted = !isQuoted;
    if (!isQuoted && line.substr(i).starts_with(separator)) return i;
  }
  return std::string_view::npos;
}

std::string_view SeparatorOf(std::string_view line) {
  for (std::string_view separator : {";", "\t", ","}) {
    if (FindOutsideQuotes(line, separator) != std::string_view::npos) return separator;
  }
  return " ";
}

// A number with one decimal comma.
bool IsNumberWithComma(std::string_view field) {
  const std::string_view digits = field.substr(field.starts_with('-') || field.starts_with('+') ? 1 : 0);
  const bool isNumber =
      std::all_of(digits.begin(), digits.end(), [](char c) { return IsDigit(c) || c == ','; });
  return isNumber && digits.size() > 1 && std::count(digits.begin(), digits.end(), ',') == 1;
}

std::string FieldText(std::string_view field, bool mayHaveComma) {
  field = TrimWhite(field);
  std::string text;
  if (field.starts_with('"') && EndOfQuotes(field) == field.size()) {
    field.remove_prefix(1);
    if (field.ends_with('"')) field.remove_suffix(1);
    for (std::size_t i = 0; i < field.size(); ++i) {
      text += field[i];
      if (field[i] == '"' && i + 1 < field.size() && field[i + 1] == '"') ++i;
    }
    return text;
  }
  text = field;
  if (mayHaveComma && IsNumberWithComma(text)) std::replace(text.begin(), text.end(), ',', '.');
  std::replace(text.begin(), text.end(), '\t', ' ');
  return text;
}

}  // namespace

std::vector<std::string> SplitFields(std::string_view line, std::size_t most, std::string_view separator) {
  if (separator.empty()) separator = SeparatorOf(line);
  const bool hasDecimalCommas = separator == ";" || separator == "\t";
  std::vector<std::string> fields;
  line = TrimWhite(line);
  while (fields.size() + 1 < most) {
    const std::size_t end = FindOutsideQuotes(line, separator);
    if (end == std::string_view::npos) break;
    fields.push_back(FieldText(line.substr(0, end), hasDecimalCommas));
    line.remove_prefix(end + separator.size());
    if (separator == " ") line = TrimWhite(line);
  }
  fields.push_back(FieldText(line, hasDecimalCommas));
  return fields;
}

}  // namespace vaxel
