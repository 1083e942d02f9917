#include "resources/string_table.h"

#include <cstddef>

namespace vaxel {
namespace {

constexpr int CodeId = 8;

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
    const bool expected = row.Texts[0].find("%1") != std::string_view::npos;
    for (std::string_view text : row.Texts) {
      if ((text.find("%1") != std::string_view::npos) != expected) return false;
    }
  }
  return true;
}

static_assert(IdsAscendWithinBlock(), "ids of strings.def must ascend, without repetition, below 300");
static_assert(PlaceholdersAgree(), "the languages of a text must use the same placeholders");

using RowIndex = std::array<const StringRow*, LanguageBlock>;

constexpr RowIndex IndexRows() {
  RowIndex index{};
  for (const StringRow& row : StringRows) index[static_cast<std::size_t>(row.Id)] = &row;
  return index;
}

constexpr RowIndex Index = IndexRows();

}  // namespace

int LanguageBaseOf(std::string_view code) {
  for (std::size_t language = 0; language < LanguageCount; ++language) {
    if (Index[CodeId]->Texts[language] == code) return static_cast<int>(language) * LanguageBlock;
  }
  return -1;
}

std::string_view TableString(int id) {
  if (id < 0 || id >= LanguageCount * LanguageBlock) return {};
  const StringRow* row = Index[static_cast<std::size_t>(id % LanguageBlock)];
  return row ? row->Texts[static_cast<std::size_t>(id / LanguageBlock)] : std::string_view{};
}

std::string TableString(int id, std::string_view value, std::string_view second) {
  const std::string_view pattern = TableString(id);
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

}  // namespace vaxel
