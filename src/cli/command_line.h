// The options of vaxel-render: which there are, how they are given and what the help says of them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/user_texts.h"

namespace vaxel {

enum class OptionId : std::uint8_t {
  Script,
  Output,
  Format,
  Target,
  Area,
  Page,
  Zoom,
  Zmm,
  Dpi,
  CropMarks,
  Ruler,
  Mirror,
  Copies,
  Gap,
  Calibrate,
  Language,
  Variable,
  Answer,
  OnDepth,
  MaxSeconds,
  Strict,
  Root,
  NoFiles,
  AllowNetwork,
  Version,
  Help,
  Count
};

// What is wrong with the arguments, in the user's words; printable.
struct UsageError {
  std::string Text;
};

// The options as they are given, before anything is made of their values.
class CommandLine {
 public:
  // The arguments are those of the program without its name. Throws UsageError where an argument is unknown,
  // a value missing or none of an option's choices, or an option repeated that may not be.
  CommandLine(std::vector<std::string> arguments, const UserTexts& texts);

  // The values of an option in the order in which they were given; a choice reads as the help writes it.
  const std::vector<std::string>& Values(OptionId option) const {
    return values_[static_cast<std::size_t>(option)];
  }
  bool Has(OptionId option) const { return !Values(option).empty(); }
  // The value of an option that is given at most once; null when it is not given.
  const std::string* Find(OptionId option) const { return Has(option) ? Values(option).data() : nullptr; }

 private:
  std::array<std::vector<std::string>, static_cast<std::size_t>(OptionId::Count)> values_;
};

// The name as it is typed, "--zoom".
const char* NameOf(OptionId option);

// The text of --help, in lines of at most 80 characters.
std::string HelpText(const UserTexts& texts);

}  // namespace vaxel
