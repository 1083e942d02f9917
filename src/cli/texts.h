// What vaxel-render itself says, in the languages of the interface.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vaxel {

enum class CliText : std::uint8_t {
#define CLI_TEXT(name, french, english, spanish) name,
#include "cli/texts.def"
#undef CLI_TEXT
};

// One language of them; base is that of the string table, 0 for French, 300 for English, 600 for Spanish.
class CliTexts {
 public:
  explicit CliTexts(int base) : base_(base) {}

  int Base() const { return base_; }
  std::string_view Get(CliText text) const;
  // "%1" to "%9" replaced by the values, which may come from anywhere: they are written as Printable does.
  std::string Fill(CliText text, std::initializer_list<std::string_view> values) const;

 private:
  int base_;
};

// Prints a line on standard error, behind the program's name. The text is printable already.
void Complain(std::string_view text);

}  // namespace vaxel
