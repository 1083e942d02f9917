// Every example, for screen and printer, against the list that was looked at and kept, and its SVG against a
// sum of its bytes. A mismatch writes the new list, or the new sums, beside the old as NAME.new;
// scripts/accept-golden takes it over when its picture is right. These tests run on every system, so that all
// draw the same.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "app/script_file.h"
#include "render/svg_renderer.h"
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

std::set<fs::path> Examples() {
  std::set<fs::path> examples;
  for (const auto& entry : fs::directory_iterator(fs::path(VAXEL_SOURCE_DIR) / "examples")) {
    if (entry.path().extension() == ".dat") examples.insert(entry.path());
  }
  return examples;
}

class SvgText : public ByteSink {
 public:
  void Write(std::string_view bytes) override { Text += bytes; }
  std::string Text;
};

std::string SumsOfSvg(const fs::path& script, const std::string& target, RunSettings settings) {
  settings.Folder = script.parent_path().string() + "/";
  const ScriptRun run = RunText(Contents(script), settings);
  std::ostringstream sums;
  for (std::size_t page = 0; page < run.List.Pages().size(); ++page) {
    SvgText svg;
    SvgRenderer renderer(svg);
    PlayPage(run.List, page, renderer);
    sums << script.stem().string() << target << " " << page + 1 << " " << std::hex << HashOf(svg.Text)
         << std::dec << "\n";
  }
  return sums.str();
}

TEST(Golden, ExamplesDrawWhatTheyDrew) {
  const std::set<fs::path> examples = Examples();
  for (const fs::path& script : examples) {
    CompareWithGolden(script, ".screen", {});
    CompareWithGolden(script, ".printer", ForPrinter());
  }
  EXPECT_GE(examples.size(), 20U);
}

TEST(Golden, ExamplesAreTheSameSvg) {
  std::string sums;
  for (const fs::path& script : Examples())
    sums += SumsOfSvg(script, ".screen", {}) + SumsOfSvg(script, ".printer", ForPrinter());
  const fs::path kept = fs::path(VAXEL_SOURCE_DIR) / "tests/golden/svg-sums.txt";
  if (sums == Contents(kept)) return;
  const fs::path fresh = kept.string() + ".new";
  std::ofstream(fresh, std::ios::binary) << sums;
  ADD_FAILURE() << "compare " << kept << " with " << fresh;
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
