// What vaxel-render says, in the language of its user.
#pragma once

#include <string>
#include <string_view>

#include "resources/string_table.h"

namespace vaxel {

class UserTexts {
 public:
  // Speaks the language of the table that has this base. The table must outlive the object.
  UserTexts(const StringTable& strings, int base) : strings_(&strings), base_(base) {}

  const StringTable& Strings() const { return *strings_; }
  int Base() const { return base_; }

  std::string_view Get(TextId id) const { return strings_->Text(base_, id); }
  std::string Get(const Failure& why) const { return strings_->Text(base_, why); }
  // The values may come from anywhere: they are written as Printable does.
  std::string Fill(TextId id, std::string_view value, std::string_view second = {},
                   std::string_view third = {}) const;

 private:
  const StringTable* strings_;
  int base_;
};

// Prints a line on standard error, after the program's name. The text is printable already.
void Complain(std::string_view text);

}  // namespace vaxel
