#include "tests/render/cairo_outputs.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "base/units.h"
#include "render/cairo_module.h"
#include "render/svg_renderer.h"
#include "render/system_decoder.h"

namespace vaxel::test {
namespace {

namespace fs = std::filesystem;

class FileSink : public ByteSink {
 public:
  explicit FileSink(const fs::path& path) : file_(path, std::ios::binary) {}
  void Write(std::string_view bytes) override {
    file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

 private:
  std::ofstream file_;
};

const CairoFunctions& Cairo() {
  const Result<const CairoFunctions*> functions = LoadCairo();
  if (!functions) throw std::runtime_error(functions.Why().Words);
  return **functions;
}

}  // namespace

fs::path MeasuredFolder() {
  const fs::path folder = fs::path(VAXEL_BINARY_DIR) / "measured";
  fs::create_directories(folder);
  return folder;
}

void Execute(const std::string& command) {
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

std::string OutputOf(const std::string& command) {
  std::string printed;
  FILE* const pipe = popen(command.c_str(), "r");
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) printed += static_cast<char>(c);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return printed;
}

fs::path WriteSvgPage(const DisplayList& list, const std::string& name, std::size_t page) {
  const fs::path svg = MeasuredFolder() / (name + ".svg");
  FileSink sink(svg);
  SvgRenderer renderer(sink);
  PlayPage(list, page, renderer);
  return svg;
}

Picture ThroughPdf(const DisplayList& list, const std::string& name, double dpi, std::size_t page) {
  const fs::path pdf = MeasuredFolder() / (name + ".pdf");
  {
    FileSink sink(pdf);
    SystemDecoder decoder;
    EXPECT_TRUE(Cairo().WritePdf(list, {"measured", 0}, &decoder, sink).Outcome);
  }
  const std::string number = std::to_string(page + 1);
  const std::string picture = (MeasuredFolder() / (name + "-pdf-" + number)).string();
  Execute("pdftoppm -png -singlefile -f " + number + " -r " + std::to_string(dpi) + " '" + pdf.string() +
          "' '" + picture + "'");
  return {picture + ".png", dpi / MillimetresPerInch};
}

Picture ThroughSvg(const DisplayList& list, const std::string& name, double dpi, std::size_t page) {
  const fs::path svg = WriteSvgPage(list, name, page);
  const std::string picture = (MeasuredFolder() / (name + "-svg.png")).string();
  const std::string resolution = std::to_string(static_cast<int>(dpi));
  Execute("rsvg-convert -b white -d " + resolution + " -p " + resolution + " -o '" + picture + "' '" +
          svg.string() + "'");
  return {picture, dpi / MillimetresPerInch};
}

Picture ThroughPng(const DisplayList& list, const std::string& name, double dpi, std::size_t page) {
  const fs::path png = MeasuredFolder() / (name + ".png");
  {
    FileSink sink(png);
    SystemDecoder decoder;
    EXPECT_TRUE(Cairo().WritePng(list, page, dpi, &decoder, sink).Outcome);
  }
  return {png.string(), dpi / MillimetresPerInch};
}

}  // namespace vaxel::test
