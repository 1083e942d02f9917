#include "interpreter/variables.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "interpreter/script_fault.h"
#include "interpreter/work_meter.h"

namespace vaxel {
namespace {

class NoSystemVariables : public SystemVariables {
 public:
  std::optional<std::string> Find(std::string_view) const override { return std::nullopt; }
};

class PatientHost : public RunHost {
 public:
  void ShowError(const ErrorReport&) override {}
  RunSignal ProcessPendingEvents() override { return RunSignal::GoOn; }
  void WriteComment(std::string_view, std::uint32_t, std::string_view) override {}
  void ShowNotice(std::string_view, std::uint32_t, std::string_view) override {}
  bool Confirm(BoxKind, std::string_view, std::uint32_t, std::string_view, std::string_view) override {
    return true;
  }
  Answer Ask(std::string_view, std::uint32_t, std::string_view, std::string_view) override { return {}; }
  std::string Today() override { return {}; }
  std::string FullFileName(std::string_view) override { return {}; }
  std::string FindFile(std::string_view, std::string_view) override { return {}; }
  Result<std::string> ReadFile(std::string_view, std::size_t) override { return std::string(); }
};

std::string Replaced(std::string_view text, const VariableTable& variables) {
  LooseSign loose;
  PatientHost host;
  WorkMeter work(host);
  return Substitute(text, variables, NoSystemVariables(), {}, loose, work);
}

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
      Replaced("%V9", growing);
      ADD_FAILURE() << "of " << value.size();
    } catch (const ScriptFault& fault) {
      EXPECT_EQ(fault.Reason(), FaultReason::TextTooLong);
    }
  }
}

// Where a name ends must not be looked for in all that follows: this would take minutes.
TEST(Variables, ManyReferencesAreReplacedInOneScan) {
  VariableTable variables;
  variables.Set("%a", "1");
  variables.Set("%{a", "1");
  constexpr std::size_t count = 60'000;
  for (const std::string reference : {"%a,", "%a§", "%a°", "%a+", "%{a}", "%{a,"}) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += reference;
    const auto start = std::chrono::steady_clock::now();
    Replaced(text, variables);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << reference;
  }
  EXPECT_EQ(Replaced("%{a}%{a}%a,%{a,%{a", variables), "111,1,1");
}

// A separator of several characters ends a name where it stands before any other end.
TEST(Variables, NamesEndAtTheFirstMark) {
  struct Case {
    const char* Text;
    Separators Marks;
    const char* Name;
  };
  const Case cases[] = {{"%ab", {}, "%ab"},
                        {"%ab,c", {}, "%ab"},
                        {"%ab°", {}, "%ab"},
                        {"%a§1", {}, "%a"},
                        {"%a-b,c", {}, "%a"},
                        {"%", {}, "%"},
                        {"%=a", {}, "%"},
                        {"%ax;y", {";", "x"}, "%a"},
                        {"%a;;b", {";;", "§"}, "%a"},
                        {"%a;b;;", {";;", "§"}, "%a;b"},
                        {"%a;-b", {";-", "§"}, "%a;"},
                        // Between braces nothing else ends a name; else the brace is a part of it.
                        {"%{a}b", {}, "%{a}"},
                        {"%{a}%{b}", {}, "%{a}"},
                        {"%{}a", {}, "%{}a"},
                        {"%{a b}", {}, "%{a"},
                        {"%{a,b}", {}, "%{a"},
                        {"%{a%b}", {}, "%{a%b}"},
                        {"%{a%%}", {}, "%{a"},
                        {"%{a", {}, "%{a"},
                        {"%{a}b", {"}", "§"}, "%{a"},
                        {"%{a}xz", {"}xy", "§"}, "%{a}"},
                        {"%{a}bcdefg", {"}bcdefg", "§"}, "%{a"}};
  for (const Case& c : cases) EXPECT_EQ(ReferenceAt(c.Text, {}, c.Marks), c.Name) << c.Text;
}

}  // namespace
}  // namespace vaxel
