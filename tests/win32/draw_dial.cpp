// Usage: draw_dial SCRIPT DPI PICTURE.png [TIMES]
//
// Draws a script's first page as the window shows it, for someone to look at, and says how long that takes.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text_encoding.h"
#include "render/gdi/export.h"
#include "render/gdi/view.h"
#include "render/system_decoder.h"
#include "render/system_measurer.h"
#include "tests/support/script_run.h"

namespace vaxel {
namespace {

double Milliseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

int Draw(const std::string& script, double dpi, const std::string& picture, int times) {
  SystemMeasurer measurer;
  SystemDecoder decoder;
  test::RunSettings settings;
  settings.FileName = script;
  settings.Folder = NameOf(PathOf(script).parent_path()) + "/";
  settings.Target.PixelMm = 25.4 / 96;
  settings.Target.Measurer = &measurer;
  settings.Target.Decoder = &decoder;
  Result<std::string> bytes = ReadWholeFile(script, 1 << 20);
  const auto text = bytes ? DecodeText(*std::move(bytes)) : std::nullopt;
  const test::ScriptRun run = test::RunText(text ? text->Text : "", settings);
  if (run.List.Pages().empty()) return 1;
  const double scale = dpi / 25.4;
  const Page& page = run.List.Pages()[0];
  const ViewFrame frame = {static_cast<int>(std::ceil(page.Width * scale)),
                           static_cast<int>(std::ceil(page.Height * scale)),
                           {scale, scale, 0, 0}};
  GdiView view(run.List, &decoder);
  for (int i = 0; i < times; ++i) {
    const auto start = std::chrono::steady_clock::now();
    view.Draw(0, frame);
    std::printf("%d x %d pixels, %zu operations: %.1f ms\n", frame.Width, frame.Height, page.Count,
                Milliseconds(std::chrono::steady_clock::now() - start));
  }
  OutputFile file(picture);
  Result<> written = WriteGdiPng(run.List, 0, dpi, {.Decoder = &decoder}, file);
  if (written) written = file.Commit();
  if (written) return 0;
  const std::string failure = StringTable().Text(LanguageBlock, written.Why());
  std::fprintf(stderr, "draw_dial: %s\n", failure.c_str());
  return 1;
}

}  // namespace
}  // namespace vaxel

int main(int count, char** arguments) {
  if (count < 4) return 2;
  return vaxel::Draw(arguments[1], std::atof(arguments[2]), arguments[3],
                     count > 4 ? std::atoi(arguments[4]) : 1);
}
