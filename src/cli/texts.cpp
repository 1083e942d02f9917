#include "cli/texts.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include "base/printable.h"
#include "base/text.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

using Row = std::array<std::string_view, BuiltInLanguages>;

constexpr Row Rows[] = {
#define CLI_TEXT(name, french, english, spanish) Row{french, english, spanish},
#include "cli/texts.def"
#undef CLI_TEXT
};

}  // namespace

std::string_view CliTexts::Get(CliText text) const {
  return Rows[static_cast<std::size_t>(text)][static_cast<std::size_t>(base_ / LanguageBlock)];
}

std::string CliTexts::Fill(CliText text, std::initializer_list<std::string_view> values) const {
  const std::string_view pattern = Get(text);
  std::string filled;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const bool isMark = pattern[i] == '%' && i + 1 < pattern.size() && IsDigit(pattern[i + 1]);
    const auto place = isMark ? static_cast<std::size_t>(pattern[i + 1] - '1') : values.size();
    if (place >= values.size()) {
      filled += pattern[i];
      continue;
    }
    filled += Printable(values.begin()[place]);
    ++i;
  }
  return filled;
}

void Complain(std::string_view text) {
  const std::string line = "vaxel-render: " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace vaxel
