#include "interpreter/variables.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "interpreter/script_fault.h"

namespace vaxel {
namespace {

// Its value looks like a reference.
class OneSystemVariable : public SystemVariables {
 public:
  std::optional<std::string> Find(std::string_view name) const override {
    return name == "%FILE" ? std::optional<std::string>("C:\\%A.dat") : std::nullopt;
  }
};

std::string Replaced(const std::string& text, const VariableTable& variables,
                     const Separators& separators = {}) {
  return Substitute(text, variables, OneSystemVariable(), separators);
}

FaultReason ReasonOf(const VariableTable& variables, const std::string& text) {
  try {
    Replaced(text, variables);
  } catch (const ScriptFault& fault) {
    return fault.Reason();
  }
  return FaultReason::None;
}

TEST(Variables, ReferencesAreReplacedByValues) {
  VariableTable variables;
  variables.Set("%R", "20");
  variables.Set("%Rayon", "50");
  variables.Set("%Deux", "2*%R");
  variables.Set("%r", "21");
  EXPECT_EQ(variables.VarCount, 3);
  EXPECT_EQ(variables.VarNames[0], "%R");
  EXPECT_EQ(Replaced("%R+%RAYON°,(%deux)%R", variables), "21+50°,(2*21)21");
  EXPECT_EQ(Replaced("%R§%R", variables), "21§21");
  EXPECT_EQ(Replaced("%R;%R", variables, {";", "#"}), "21;21");
  EXPECT_EQ(Replaced("none", variables), "none");
  variables.Set("%FILE", "hidden");
  EXPECT_EQ(Replaced("%FILE %R", variables), "C:\\%A.dat 21");
}

TEST(Variables, ReportsWhatCannotBeReplaced) {
  VariableTable variables;
  variables.Set("%A", "%B");
  variables.Set("%B", "1+%A");
  EXPECT_EQ(ReasonOf(variables, "%A"), FaultReason::CircularVariable);
  EXPECT_EQ(ReasonOf(variables, "%C"), FaultReason::UnknownVariable);
  EXPECT_EQ(ReasonOf(variables, "50 %"), FaultReason::UnknownVariable);

  // Ten references in each value to the one before, 10^9 in all, of a long text or an empty one.
  for (const std::string& value : {std::string(5000, '1'), std::string()}) {
    VariableTable growing;
    growing.Set("%V0", value);
    for (int i = 1; i < 10; ++i) {
      std::string references;
      for (int k = 0; k < 10; ++k) references += "%V" + std::to_string(i - 1) + " ";
      growing.Set("%V" + std::to_string(i), references);
    }
    EXPECT_EQ(ReasonOf(growing, "%V9"), FaultReason::TextTooLong);
  }
}

TEST(Variables, ALevelHasThirtyTwo) {
  VariableTable variables;
  for (int i = 0; i < 32; ++i) variables.Set("%V" + std::to_string(i), "x");
  variables.Set("%v31", "y");
  EXPECT_EQ(*variables.Find("%V31"), "y");
  EXPECT_THROW(variables.Set("%V32", "x"), ScriptFault);
}

}  // namespace
}  // namespace vaxel
