// The interface texts of all languages.
//
// The table is organised in blocks of 300 ids, one block per language in the same order: a text's id in
// a language is its id in the first block plus the language's base (0 French, 300 English, 600 Spanish,
// from 900 on what the user has added).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace vaxel {

inline constexpr int BuiltInLanguages = 3;
inline constexpr int LanguageBlock = 300;
// The numbers of languages and their bases stay within 16 bits.
inline constexpr int MaxAddedLanguages = 60;

// Ids that say something of the table itself.
inline constexpr int LanguageCountId = 3;
inline constexpr int LanguageNameId = 5;
inline constexpr int LanguageCodeId = 8;

struct StringRow {
  int Id;
  std::array<std::string_view, BuiltInLanguages> Texts;
};

inline constexpr StringRow StringRows[] = {
#define VAXEL_STRING(id, french, english, spanish) {id, {french, english, spanish}},
#include "resources/strings.def"
#undef VAXEL_STRING
};

// Whether the id (0 to 299, without a language's base) has a text in every built-in language.
constexpr bool HasString(int id) {
  for (const StringRow& row : StringRows) {
    if (row.Id != id) continue;
    for (std::string_view text : row.Texts) {
      if (text.empty()) return false;
    }
    return true;
  }
  return false;
}

// What is wrong in the file of an added language; the values are ids of the table. The line's English text
// stays.
enum class LineFault : std::int16_t {
  NotALine = 287,      // no "number = text"
  UnknownId = 288,     // no text of this number may be given
  Placeholders = 289,  // others than the English text has
  Repeated = 290,
  // The file as a whole is refused.
  TooLarge = 291,
  NotAText = 292,
  BadCode = 293,
  LanguageExists = 294,
  NameMissing = 295,
  TooManyLanguages = 296
};

struct LineProblem {
  std::size_t Line = 0;  // from 1; 0: of the whole file, no language was added
  LineFault Fault = LineFault::NotALine;
  std::string Value{};  // fills the fault's "%1"
};

class StringTable {
 public:
  // The built-in languages.
  StringTable();

  int LanguageCount() const { return BuiltInLanguages + static_cast<int>(added_.size()); }

  // The text of an id with its language's base added; empty for an id that has none. It stays valid as long
  // as the table lives and no language is added.
  std::string_view Text(int id) const;
  // The same with "%1" replaced by value, "%2" by second and "%%" by "%".
  std::string Text(int id, std::string_view value, std::string_view second = {}) const;

  // The base of the language whose code is given ("fr", "en", "es", …) in either case; -1 for another one.
  int BaseOfCode(std::string_view code) const;

  // Makes the text of the file Vaxel_CODE.lng the next language. What it lacks, and what is wrong in it,
  // stays English; the problems, of which the first 100 are returned, tell of the latter.
  std::vector<LineProblem> AddLanguage(std::string_view code, std::string_view fileText);

 private:
  using Block = std::array<std::string, LanguageBlock>;

  bool HasName(std::string_view name) const;

  // The places of the texts stay when another language is added.
  std::deque<Block> added_;
  std::string count_;
};

}  // namespace vaxel
