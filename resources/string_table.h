// The interface texts of all languages.
//
// The table is organised in blocks of 300 ids, one block per language in the same order: a text's id in
// a language is its id in the first block plus the language's base (0 French, 300 English, 600 Spanish).
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vaxel {

inline constexpr int LanguageCount = 3;
inline constexpr int LanguageBlock = 300;

struct StringRow {
  int Id;
  std::array<std::string_view, LanguageCount> Texts;
};

inline constexpr StringRow StringRows[] = {
#define VAXEL_STRING(id, french, english, spanish) {id, {french, english, spanish}},
#include "resources/strings.def"
#undef VAXEL_STRING
};

// Whether the id (0 to 299, without a language's base) has a text in every language.
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

// The base of the language whose two-letter code is given ("fr", "en", "es"); -1 for another code.
int LanguageBaseOf(std::string_view code);

// The text of an id with its language's base added; empty for an id that has none. The text lives as
// long as the program.
std::string_view TableString(int id);

// The same with "%1" replaced by value, "%2" by second and "%%" by "%".
std::string TableString(int id, std::string_view value, std::string_view second = {});

}  // namespace vaxel
