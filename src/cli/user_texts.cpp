#include "cli/user_texts.h"

#include <cstdio>

#include "base/printable.h"

namespace vaxel {

std::string UserTexts::Fill(TextId id, std::string_view value, std::string_view second,
                            std::string_view third) const {
  return strings_->Text(base_, id, Printable(value), Printable(second), Printable(third));
}

void Complain(std::string_view text) {
  const std::string line = "vaxel-render: " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace vaxel
