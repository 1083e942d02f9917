// Every example, for screen and printer, against the list that was looked at and kept. A mismatch writes the
// new list beside the old one as NAME.new; scripts/accept-golden takes it over when its picture is right.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/script_run.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void CompareWithGolden(const fs::path& script, const std::string& target, RunSettings settings) {
  settings.Folder = script.parent_path().string() + "/";
  const ScriptRun run = RunText(Contents(script), settings);
  ASSERT_EQ(run.End, RunEnd::Completed) << script << ": " << run.Reason();
  const fs::path kept =
      fs::path(VAXEL_SOURCE_DIR) / "tests/golden" / (script.stem().string() + target + ".txt");
  const std::string list = PagesText(run.List);
  if (list == Contents(kept)) return;
  const fs::path fresh = kept.string() + ".new";
  std::ofstream(fresh, std::ios::binary) << list;
  ADD_FAILURE() << "compare " << kept << " with " << fresh;
}

TEST(Golden, ExamplesDrawWhatTheyDrew) {
  int examples = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(VAXEL_SOURCE_DIR) / "examples")) {
    if (entry.path().extension() != ".dat") continue;
    ++examples;
    CompareWithGolden(entry.path(), ".screen", {});
    CompareWithGolden(entry.path(), ".printer", ForPrinter());
  }
  EXPECT_GE(examples, 20);
}

TEST(Golden, TemplatesOfNewScriptsDrawTheSame) {
  std::string first;
  for (const char* code : {"fr", "en", "es"}) {
    const fs::path name =
        fs::path(VAXEL_SOURCE_DIR) / "src/resources/templates" / ("Vaxel_" + std::string(code) + ".DaN");
    for (RunSettings settings : {RunSettings(), ForPrinter()}) {
      const ScriptRun run = RunText(Contents(name), settings);
      EXPECT_EQ(run.End, RunEnd::Completed) << name << ": " << run.Reason();
      EXPECT_GT(run.List.Size(), 60U);
      if (settings.Target.Kind != TargetKind::Screen) continue;
      if (first.empty()) first = PagesText(run.List);
      EXPECT_EQ(PagesText(run.List), first) << name;
    }
  }
}

}  // namespace
}  // namespace vaxel::test
