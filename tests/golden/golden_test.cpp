// Every example, for screen and printer, against the list that was looked at and kept. A mismatch writes the
// new list beside the old one as NAME.new; scripts/accept-golden takes it over when its picture is right.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

const fs::path Source = VAXEL_SOURCE_DIR;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Golden {
  fs::path Script;
  TargetKind Kind;

  std::string Name() const {
    return Script.stem().string() + (Kind == TargetKind::Screen ? ".screen" : ".printer");
  }
};

std::vector<Golden> AllGoldens() {
  std::vector<Golden> goldens;
  for (const auto& entry : fs::directory_iterator(Source / "examples")) {
    if (entry.path().extension() != ".dat") continue;
    goldens.push_back({entry.path(), TargetKind::Screen});
    goldens.push_back({entry.path(), TargetKind::Printer});
  }
  return goldens;
}

class GoldenTest : public testing::TestWithParam<Golden> {};

TEST_P(GoldenTest, ExampleDrawsWhatItDrew) {
  const Golden& golden = GetParam();
  const RunSettings settings = golden.Kind == TargetKind::Screen ? RunSettings{} : ForPrinter();
  const ScriptRun run = RunText(Contents(golden.Script), settings);
  ASSERT_EQ(run.End, RunEnd::Completed) << run.Reason();
  const fs::path kept = Source / "tests/golden" / (golden.Name() + ".txt");
  const std::string list = PagesText(run.List);
  if (list == Contents(kept)) return;
  const fs::path fresh = Source / "tests/golden" / (golden.Name() + ".txt.new");
  std::ofstream(fresh, std::ios::binary) << list;
  ADD_FAILURE() << "compare " << kept << " with " << fresh;
}

INSTANTIATE_TEST_SUITE_P(Examples, GoldenTest, testing::ValuesIn(AllGoldens()), [](const auto& test) {
  std::string name = test.param.Name();
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
});

}  // namespace
}  // namespace vaxel::test
