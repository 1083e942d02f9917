#include "interpreter/variables.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

class NoSystemVariables : public SystemVariables {
 public:
  std::optional<std::string> Find(std::string_view) const override { return std::nullopt; }
};

TEST(Variables, EndlessTextsAreRefused) {
  // Ten references in each value to the one before, 10^9 in all, of a long text or an empty one.
  for (const std::string& value : {std::string(5000, '1'), std::string()}) {
    VariableTable growing;
    growing.Set("%V0", value);
    for (int i = 1; i < 10; ++i) {
      std::string references;
      for (int k = 0; k < 10; ++k) references += "%V" + std::to_string(i - 1) + " ";
      growing.Set("%V" + std::to_string(i), references);
    }
    try {
      Substitute("%V9", growing, NoSystemVariables(), {});
      ADD_FAILURE() << "of " << value.size();
    } catch (const ScriptFault& fault) {
      EXPECT_EQ(fault.Reason(), FaultReason::TextTooLong);
    }
  }
}

}  // namespace
}  // namespace vaxel
