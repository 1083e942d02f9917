#include "resources/string_table.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr std::size_t EnglishIndex = 1;
constexpr std::size_t MaxFileBytes = std::size_t{1} << 20;
constexpr std::size_t MaxProblems = 100;
constexpr std::size_t MaxCodeLength = 8;
constexpr std::size_t MaxShownBytes = 60;

// Which values a text takes: 1 for "%1", 2 for "%2".
constexpr unsigned PlaceholdersOf(std::string_view text) {
  unsigned found = 0;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '%') continue;
    if (text[i + 1] == '1') found |= 1;
    if (text[i + 1] == '2') found |= 2;
    if (text[i + 1] == '%') ++i;
  }
  return found;
}

constexpr bool IdsAscendWithinBlock() {
  int previous = -1;
  for (const StringRow& row : StringRows) {
    if (row.Id <= previous || row.Id >= LanguageBlock) return false;
    previous = row.Id;
  }
  return true;
}

constexpr bool PlaceholdersAgree() {
  for (const StringRow& row : StringRows) {
    for (std::string_view text : row.Texts) {
      if (PlaceholdersOf(text) != PlaceholdersOf(row.Texts[EnglishIndex])) return false;
    }
  }
  return true;
}

// The ranges that programs and added languages count on as a whole.
constexpr bool RangesAreComplete() {
  for (int id = 101; id <= 254; ++id) {
    const bool isBetween = id > 171 && id < 201;
    if (!isBetween && !HasString(id)) return false;
  }
  return HasString(LanguageCountId) && HasString(LanguageNameId) && HasString(LanguageCodeId);
}

static_assert(IdsAscendWithinBlock(), "ids of strings.def must ascend, without repetition, below 300");
static_assert(PlaceholdersAgree(), "the languages of a text must use the same placeholders");
static_assert(RangesAreComplete(), "a message or a help text is missing in some language");

using RowIndex = std::array<const StringRow*, LanguageBlock>;

constexpr RowIndex IndexRows() {
  RowIndex index{};
  for (const StringRow& row : StringRows) index[static_cast<std::size_t>(row.Id)] = &row;
  return index;
}

constexpr RowIndex Index = IndexRows();

bool IsCode(std::string_view code) {
  const auto fits = [](char c) {
    return IsDigit(c) || c == '-' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  };
  return !code.empty() && code.size() <= MaxCodeLength && std::all_of(code.begin(), code.end(), fits);
}

// Takes the first line, without its end, off the text.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end);
  if (text.starts_with("\r\n")) {
    text.remove_prefix(2);
  } else if (!text.empty()) {
    text.remove_prefix(1);
  }
  return line;
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// "\n" is a line break. The blanks around the text are those of the English one: in a file nobody sees them.
std::string WithEnglishBlanks(std::string_view written, std::string_view english) {
  const std::size_t first = english.find_first_not_of(' ');
  const std::size_t last = english.find_last_not_of(' ');
  std::string text(english.substr(0, first));
  for (std::size_t i = 0; i < written.size(); ++i) {
    const bool isBreak = written.substr(i, 2) == "\\n";
    text += isBreak ? '\n' : written[i];
    if (isBreak) ++i;
  }
  return text.append(english.substr(last + 1));
}

// A line of a language's file that gives a text.
struct GivenText {
  std::size_t Id = 0;
  std::string_view Text;
};

// None, and the fault, when the line gives none that counts.
std::optional<GivenText> ReadGivenText(std::string_view line, LineFault& fault) {
  const std::size_t equals = line.find('=');
  const std::string_view number = TrimBlanks(line.substr(0, equals));
  fault = LineFault::NotALine;
  if (equals == std::string_view::npos || number.empty()) return std::nullopt;
  if (!std::all_of(number.begin(), number.end(), IsDigit)) return std::nullopt;
  GivenText given{0, TrimBlanks(line.substr(equals + 1))};
  if (given.Text.empty()) return std::nullopt;
  for (char digit : number) {
    given.Id = std::min<std::size_t>(given.Id * 10 + static_cast<std::size_t>(digit - '0'), LanguageBlock);
  }
  fault = LineFault::UnknownId;
  if (given.Id == LanguageBlock || !Index[given.Id]) return std::nullopt;
  if (given.Id == LanguageCountId || given.Id == LanguageCodeId) return std::nullopt;
  fault = LineFault::Placeholders;
  if (PlaceholdersOf(given.Text) != PlaceholdersOf(Index[given.Id]->Texts[EnglishIndex])) return std::nullopt;
  return given;
}

}  // namespace

StringTable::StringTable() : count_(std::to_string(BuiltInLanguages)) {}

std::string_view StringTable::Text(int id) const {
  if (id < 0 || id >= LanguageCount() * LanguageBlock) return {};
  const auto language = static_cast<std::size_t>(id / LanguageBlock);
  const auto place = static_cast<std::size_t>(id % LanguageBlock);
  if (place == LanguageCountId) return count_;
  if (language >= BuiltInLanguages) return added_[language - BuiltInLanguages][place];
  const StringRow* row = Index[place];
  return row ? row->Texts[language] : std::string_view{};
}

std::string StringTable::Text(int id, std::string_view value, std::string_view second) const {
  const std::string_view pattern = Text(id);
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const std::string_view mark = pattern.substr(i, 2);
    if (mark == "%1" || mark == "%2" || mark == "%%") {
      text += mark == "%1" ? value : mark == "%2" ? second : "%";
      ++i;
    } else {
      text += pattern[i];
    }
  }
  return text;
}

int StringTable::BaseOfCode(std::string_view code) const {
  for (int base = 0; base < LanguageCount() * LanguageBlock; base += LanguageBlock) {
    if (EqualIgnoringCase(Text(base + LanguageCodeId), code)) return base;
  }
  return -1;
}

bool StringTable::HasName(std::string_view name) const {
  for (int base = 0; base < LanguageCount() * LanguageBlock; base += LanguageBlock) {
    if (EqualIgnoringCase(Text(base + LanguageNameId), name)) return true;
  }
  return false;
}

std::vector<LineProblem> StringTable::AddLanguage(std::string_view code, std::string_view fileText) {
  const auto refused = [](LineFault fault, std::string_view value = {}) {
    return LineProblem{0, fault, Shorten(value, MaxShownBytes)};
  };
  if (fileText.size() > MaxFileBytes) return {refused(LineFault::TooLarge)};
  if (fileText.find('\0') != std::string_view::npos || !IsValidUtf8(fileText)) {
    return {refused(LineFault::NotAText)};
  }
  if (!IsCode(code)) return {refused(LineFault::BadCode, code)};
  if (BaseOfCode(code) >= 0) return {refused(LineFault::LanguageExists, code)};
  if (added_.size() == MaxAddedLanguages) {
    return {refused(LineFault::TooManyLanguages, std::to_string(LanguageCount()))};
  }

  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (fileText.starts_with(byteOrderMark)) fileText.remove_prefix(byteOrderMark.size());
  std::vector<LineProblem> problems;
  Block block;
  for (std::size_t number = 1; !fileText.empty(); ++number) {
    const std::string_view line = TrimBlanks(TakeLine(fileText));
    if (line.empty() || line.starts_with('\'')) continue;
    LineFault fault{};
    const std::optional<GivenText> given = ReadGivenText(line, fault);
    if (given && block[given->Id].empty()) {
      block[given->Id] = WithEnglishBlanks(given->Text, Index[given->Id]->Texts[EnglishIndex]);
    } else if (problems.size() < MaxProblems) {
      problems.push_back({number, given ? LineFault::Repeated : fault, Shorten(line, MaxShownBytes)});
    }
  }

  const std::string& name = block[LanguageNameId];
  if (name.empty() || HasName(name)) {
    const LineFault fault = name.empty() ? LineFault::NameMissing : LineFault::LanguageExists;
    problems.insert(problems.begin(), refused(fault, name));
    return problems;
  }
  for (const StringRow& row : StringRows) {
    std::string& text = block[static_cast<std::size_t>(row.Id)];
    if (text.empty()) text = row.Texts[EnglishIndex];
  }
  block[LanguageCodeId] = code;
  added_.push_back(std::move(block));
  count_ = std::to_string(LanguageCount());
  return problems;
}

}  // namespace vaxel
