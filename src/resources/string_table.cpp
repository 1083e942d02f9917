#include "resources/string_table.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"

namespace vaxel {
namespace {

constexpr std::size_t EnglishIndex = 1;
constexpr std::size_t MaxFileBytes = std::size_t{1} << 20;
constexpr std::size_t MaxProblems = 100;
constexpr std::size_t MaxCodeLength = 8;
constexpr std::size_t MaxShownBytes = 60;
// Numbers from here on are no text's.
constexpr int BeyondAllIds = std::numeric_limits<std::int16_t>::max();

// Which values a text takes: 1 for "%1", 2 for "%2", 4 for "%3".
constexpr unsigned PlaceholdersOf(std::string_view text) {
  unsigned found = 0;
  // Compilers count the steps of what they work out, and there are many texts.
  bool isMarked = false;
  for (const char c : text) {
    if (isMarked && c >= '1' && c <= '3') found |= 1U << (c - '1');
    isMarked = c == '%' && !isMarked;
  }
  return found;
}

constexpr bool IdsAscendInTheirRanges() {
  int previous = 0;
  for (const StringRow& row : StringRows) {
    const int id = static_cast<int>(row.Id);
    if (id <= previous || (id >= LanguageBlock && id < FirstLaterId)) return false;
    previous = id;
  }
  return previous < BeyondAllIds;
}

constexpr bool PlaceholdersAgree() {
  for (const StringRow& row : StringRows) {
    const unsigned english = PlaceholdersOf(row.Texts[EnglishIndex]);
    for (std::string_view text : row.Texts) {
      if (PlaceholdersOf(text) != english) return false;
    }
  }
  return true;
}

constexpr bool EveryLanguageHasTheTexts() {
  return std::ranges::all_of(StringRows, [](const StringRow& row) {
    return std::ranges::none_of(row.Texts, [](std::string_view text) { return text.empty(); });
  });
}

static_assert(IdsAscendInTheirRanges(),
              "ids of strings.def must ascend, without repetition, below 300 or from 20001 on");
static_assert((BuiltInLanguages + MaxAddedLanguages) * LanguageBlock < FirstLaterId, "blocks end before");
static_assert(PlaceholdersAgree(), "the languages of a text must use the same placeholders");
static_assert(EveryLanguageHasTheTexts(), "a text is missing in some language");

// In the order of FileFault.
constexpr std::array FileFaultTexts = {
    TextId::None,           TextId::IsFolder,      TextId::IsReadOnly,       TextId::IsTooLarge,
    TextId::IsMissing,      TextId::IsForbidden,   TextId::IsInUse,          TextId::DiskIsFull,
    TextId::DiskIsReadOnly, TextId::NameIsTooLong, TextId::NameIsImpossible, TextId::DeviceFails};
static_assert(FileFaultTexts.size() == static_cast<std::size_t>(FileFault::DeviceFails) + 1);

TextId TextOf(FileFault fault) {
  return FileFaultTexts[static_cast<std::size_t>(fault)];
}

bool IsCode(std::string_view code) {
  const auto fits = [](char c) { return IsDigit(c) || c == '-' || IsLetter(c); };
  return !code.empty() && code.size() <= MaxCodeLength && std::all_of(code.begin(), code.end(), fits);
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
  std::size_t Row = 0;
  std::string_view Text;
};

// The text that the line gives. There is none when it gives none that counts; fault then says why.
std::optional<GivenText> ReadGivenText(std::string_view line, TextId& fault) {
  const std::size_t equals = line.find('=');
  const std::string_view number = TrimBlanks(line.substr(0, equals));
  fault = TextId::LanguageLineUnreadable;
  if (equals == std::string_view::npos || number.empty()) return std::nullopt;
  if (!std::all_of(number.begin(), number.end(), IsDigit)) return std::nullopt;
  const std::string_view text = TrimBlanks(line.substr(equals + 1));
  if (text.empty()) return std::nullopt;
  int value = 0;
  for (char digit : number) value = std::min(value * 10 + (digit - '0'), BeyondAllIds);
  fault = TextId::LanguageIdUnknown;
  const auto id = static_cast<TextId>(value);
  const std::optional<std::size_t> row = RowOf(id);
  if (!row || id == TextId::LanguageCount || id == TextId::LanguageCode) return std::nullopt;
  fault = TextId::LanguagePlaceholders;
  if (PlaceholdersOf(text) != PlaceholdersOf(StringRows[*row].Texts[EnglishIndex])) return std::nullopt;
  return GivenText{*row, text};
}

}  // namespace

StringTable::StringTable() : count_(std::to_string(BuiltInLanguages)) {}

std::string_view StringTable::Text(int base, TextId id) const {
  if (base < 0 || base >= LanguageCount() * LanguageBlock || base % LanguageBlock != 0) return {};
  const std::optional<std::size_t> row = RowOf(id);
  if (!row) return {};
  if (id == TextId::LanguageCount) return count_;
  const auto language = static_cast<std::size_t>(base / LanguageBlock);
  if (language >= BuiltInLanguages) return (*added_[language - BuiltInLanguages])[*row];
  return StringRows[*row].Texts[language];
}

std::string StringTable::Text(int base, TextId id, std::string_view value, std::string_view second,
                              std::string_view third) const {
  const std::string_view pattern = Text(base, id);
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const std::string_view mark = pattern.substr(i, 2);
    if (mark == "%1" || mark == "%2" || mark == "%3" || mark == "%%") {
      text += mark == "%1" ? value : mark == "%2" ? second : mark == "%3" ? third : "%";
      ++i;
    } else {
      text += pattern[i];
    }
  }
  return text;
}

std::string StringTable::Text(int base, const Failure& why) const {
  if (why.Fault != FileFault::None) return std::string(Text(base, TextOf(why.Fault)));
  return why.Text == TextId::None ? why.Words : Text(base, why.Text, why.Words);
}

int StringTable::BaseOfCode(std::string_view code) const {
  for (int base = 0; base < LanguageCount() * LanguageBlock; base += LanguageBlock) {
    if (EqualIgnoringCase(Text(base, TextId::LanguageCode), code)) return base;
  }
  return -1;
}

bool StringTable::HasName(std::string_view name) const {
  for (int base = 0; base < LanguageCount() * LanguageBlock; base += LanguageBlock) {
    if (EqualIgnoringCase(Text(base, TextId::LanguageName), name)) return true;
  }
  return false;
}

std::vector<LineProblem> StringTable::AddLanguage(std::string_view code, std::string_view fileText) {
  const auto refused = [](TextId fault, std::string_view value = {}) {
    return LineProblem{0, fault, Shorten(value, MaxShownBytes)};
  };
  if (fileText.size() > MaxFileBytes) return {refused(TextId::LanguageFileTooLarge)};
  if (fileText.find('\0') != std::string_view::npos || !IsValidUtf8(fileText)) {
    return {refused(TextId::LanguageFileNotAText)};
  }
  if (!IsCode(code)) return {refused(TextId::LanguageCodeWrong, code)};
  if (BaseOfCode(code) >= 0) return {refused(TextId::LanguageExists, code)};
  if (added_.size() == MaxAddedLanguages) {
    return {refused(TextId::TooManyLanguages, std::to_string(LanguageCount()))};
  }

  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (fileText.starts_with(byteOrderMark)) fileText.remove_prefix(byteOrderMark.size());
  std::vector<LineProblem> problems;
  Block block;
  for (std::size_t number = 1; !fileText.empty(); ++number) {
    const std::string_view line = TrimBlanks(TakeLine(fileText));
    if (line.empty() || line.starts_with('\'')) continue;
    TextId fault{};
    const std::optional<GivenText> given = ReadGivenText(line, fault);
    if (given && block[given->Row].empty()) {
      block[given->Row] = WithEnglishBlanks(given->Text, StringRows[given->Row].Texts[EnglishIndex]);
    } else if (problems.size() < MaxProblems) {
      problems.push_back(
          {number, given ? TextId::LanguageTextRepeated : fault, Shorten(line, MaxShownBytes)});
    }
  }

  const std::string& name = block[*RowOf(TextId::LanguageName)];
  if (name.empty() || HasName(name)) {
    const TextId fault = name.empty() ? TextId::LanguageNameMissing : TextId::LanguageExists;
    problems.insert(problems.begin(), refused(fault, name));
    if (problems.size() > MaxProblems) problems.pop_back();
    return problems;
  }
  for (std::size_t row = 0; row < block.size(); ++row) {
    if (block[row].empty()) block[row] = StringRows[row].Texts[EnglishIndex];
  }
  block[*RowOf(TextId::LanguageCode)] = code;
  added_.push_back(std::make_unique<const Block>(std::move(block)));
  count_ = std::to_string(LanguageCount());
  return problems;
}

}  // namespace vaxel
