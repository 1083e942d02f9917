// The interface texts of all languages.
//
// A text is asked for by its name and by the base of a language: 0 is French, 300 English, 600 Spanish, from
// 900 on come the languages that the user has added. The bases are those of blocks of 300 ids, one block a
// language, which hold the texts with ids below 300. The blocks are nearly full, so later texts have ids from
// FirstLaterId on, which belong to no block and are the same in every language.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "resources/text_id.h"

namespace vaxel {

inline constexpr int BuiltInLanguages = 3;
inline constexpr int LanguageBlock = 300;
// It lies above all blocks that there can be.
inline constexpr int FirstLaterId = 20001;
// The numbers of languages and their bases stay within 16 bits.
inline constexpr int MaxAddedLanguages = 60;

struct StringRow {
  TextId Id;
  std::array<std::string_view, BuiltInLanguages> Texts;
};

inline constexpr StringRow StringRows[] = {
#define VAXEL_STRING(name, id, french, english, spanish) {TextId::name, {french, english, spanish}},
#include "resources/strings.def"
};

// The place of a text in StringRows; None has none, nor has a number that is no text's.
constexpr std::optional<std::size_t> RowOf(TextId id) {
  const auto* const found = std::ranges::lower_bound(StringRows, id, {}, &StringRow::Id);
  const auto row = static_cast<std::size_t>(found - std::begin(StringRows));
  if (row == std::size(StringRows) || StringRows[row].Id != id) return std::nullopt;
  return row;
}

// What is wrong in the file of an added language. The line's English text stays.
struct LineProblem {
  std::size_t Line = 0;  // from 1; 0: of the whole file, no language was added
  TextId Fault = TextId::None;
  std::string Value{};  // fills the fault's "%1"
};

class StringTable {
 public:
  // The built-in languages, which take no memory.
  StringTable();

  int LanguageCount() const { return BuiltInLanguages + static_cast<int>(added_.size()); }

  // The text of an id in the language with this base; it is empty for an id or a base that is none. It stays
  // valid as long as the table lives and no language is added.
  std::string_view Text(int base, TextId id) const;
  // The same with "%1" replaced by value, "%2" by second, "%3" by third and "%%" by "%".
  std::string Text(int base, TextId id, std::string_view value, std::string_view second = {},
                   std::string_view third = {}) const;
  // Why something has failed, in its own words or in those of the table.
  std::string Text(int base, const Failure& why) const;

  // The base of the language whose code is given ("fr", "en", "es", …) in either case; any other code gives
  // -1.
  int BaseOfCode(std::string_view code) const;

  // Makes the text of the file Vaxel_CODE.lng the next language. What it lacks, and what is wrong in it,
  // stays English; the problems, of which the first 100 are returned, tell of the latter.
  std::vector<LineProblem> AddLanguage(std::string_view code, std::string_view fileText);

 private:
  using Block = std::array<std::string, std::size(StringRows)>;  // in the order of StringRows

  bool HasName(std::string_view name) const;

  // The places of the texts stay when another language is added.
  std::vector<std::unique_ptr<const Block>> added_;
  std::string count_;
};

}  // namespace vaxel
