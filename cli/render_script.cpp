#include "cli/render_script.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "cli/console_host.h"
#include "cli/output_file.h"
#include "commands/command_table.h"
#include "drawing/display_list.h"
#include "interpreter/run.h"
#include "interpreter/text_encoding.h"
#include "render/cairo_module.h"
#include "render/list_renderer.h"
#include "render/svg_renderer.h"
#include "text/utf8.h"

namespace vaxel {
namespace {

constexpr double MillimetresPerInch = 25.4;
constexpr double ScreenDpi = 96;
constexpr double PrinterDpi = 600;
constexpr double PngDpi = 300;

void Complain(const std::string& text) {
  std::fprintf(stderr, "vaxel-render: %s\n", text.c_str());
}

std::string DisplayName(const std::string& fileName, const char* standard) {
  return fileName == "-" ? standard : fileName;
}

// A name without extension may be that of a ".dat" file.
std::string FindScript(const std::string& name) {
  std::error_code ignored;
  const std::filesystem::path path = PathOf(name);
  const bool asIs = name == "-" || path.has_extension() || std::filesystem::exists(path, ignored);
  return !asIs && std::filesystem::exists(PathOf(name + ".dat"), ignored) ? name + ".dat" : name;
}

std::optional<std::string> ReadScript(const std::string& name) {
  std::string error;
  auto bytes = ReadWholeFile(name, error);
  if (!bytes) {
    Complain("cannot read " + DisplayName(name, "standard input") + ": " + error);
    return std::nullopt;
  }
  auto decoded = DecodeText(std::move(*bytes));
  if (!decoded) {
    Complain(DisplayName(name, "standard input") + " is not a text: it holds NUL characters");
    return std::nullopt;
  }
  return std::move(decoded->Text);
}

RunTarget TargetFor(TargetKind kind, const RenderOptions& options) {
  const bool printer = kind == TargetKind::Printer;
  const SizeMm& size = printer ? options.Page : options.Area;
  RunTarget target;
  target.Kind = kind;
  target.WidthMm = size.Width;
  target.HeightMm = size.Height;
  target.PixelMm = MillimetresPerInch / (printer ? PrinterDpi : options.Dpi.value_or(ScreenDpi));
  target.Zoom = options.Zoom;
  target.Zmm = options.Zmm;
  return target;
}

std::optional<std::int64_t> SourceDate() {
  const char* text = std::getenv("SOURCE_DATE_EPOCH");
  if (!text) return std::nullopt;
  const std::string_view digits = text;
  std::int64_t seconds = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return seconds;
}

std::string Title(const RenderOptions& options) {
  if (options.Script == "-") return "Vaxel";
  const std::string title = PathOf(options.Script).stem().string();
  return IsValidUtf8(title) ? title : "Vaxel";
}

// Writes one page, or the whole list in the formats that hold several. Returns what failed.
std::string WriteFormat(const RenderOptions& options, const OutputRequest& output, const DisplayList& list,
                        std::size_t page, ByteSink& sink) {
  std::string error;
  switch (output.Format) {
    case OutputFormat::Svg: {
      SvgRenderer renderer(sink);
      PlayPage(list, page, renderer);
      return error;
    }
    case OutputFormat::List: {
      ListRenderer renderer(sink);
      PlayAll(list, renderer);
      return error;
    }
    case OutputFormat::Pdf:
    case OutputFormat::Png:
      break;
  }
  const CairoFunctions* const cairo = LoadCairo(error);
  if (!cairo) return error;
  return output.Format == OutputFormat::Pdf ? cairo->WritePdf(list, {Title(options), SourceDate()}, sink)
                                            : cairo->WritePng(list, page, options.Dpi.value_or(PngDpi), sink);
}

// "dial.svg" for the first page, then "dial-2.svg", "dial-3.svg", …
std::string PageFileName(const std::string& fileName, std::size_t page) {
  if (page == 0) return fileName;
  const std::size_t dot = fileName.find_last_of("./\\");
  const bool hasExtension = dot != std::string::npos && fileName[dot] == '.';
  const std::size_t at = hasExtension ? dot : fileName.size();
  return fileName.substr(0, at) + "-" + std::to_string(page + 1) + fileName.substr(at);
}

ExitStatus WriteOutput(const RenderOptions& options, const OutputRequest& output, const DisplayList& list) {
  const bool oneFile = output.Format == OutputFormat::Pdf || output.Format == OutputFormat::List;
  const std::size_t files = oneFile ? 1 : list.Pages().size();
  if (files > 1 && output.FileName == "-") {
    Complain("the drawing has " + std::to_string(files) + " pages: name a file, each page becomes one");
    return ExitStatus::WrongUsage;
  }
  for (std::size_t page = 0; page < files; ++page) {
    const std::string name = PageFileName(output.FileName, page);
    OutputFile file(name);
    std::string error = WriteFormat(options, output, list, page, file);
    if (error.empty()) error = file.Commit();
    if (error.empty()) continue;
    Complain("cannot write " + DisplayName(name, "standard output") + ": " + error);
    return ExitStatus::FileFailed;
  }
  return ExitStatus::Drawn;
}

// Runs the script for one kind of target; the list gets at least one page.
ExitStatus RunFor(TargetKind kind, const RenderOptions& options, const std::string& text,
                  const std::string& fileName, DisplayList& list) {
  ConsoleHost host(DisplayName(fileName, "<stdin>"));
  RunContext run(host, AllCommands(), list);
  run.LangBase = options.LangBase;
  for (const auto& [name, value] : options.Variables) run.Level().Variables.Set(name, value);
  const RunTarget target = TargetFor(kind, options);
  switch (RunScript(run, target, text, fileName == "-" ? "" : fileName)) {
    case RunEnd::Failed:
      return ExitStatus::ScriptFailed;
    case RunEnd::Empty:
      std::fprintf(stderr, "%s: the script is empty, so is the drawing\n", host.ScriptName().c_str());
      list.BeginPage(target.WidthMm, target.HeightMm);
      break;
    case RunEnd::Completed:
      break;
  }
  return ExitStatus::Drawn;
}

bool WouldOverwriteScript(const RenderOptions& options, const std::string& fileName) {
  std::error_code ignored;
  for (const OutputRequest& output : options.Outputs) {
    const bool isFile = output.FileName != "-" && fileName != "-";
    const std::filesystem::path target = PathOf(output.FileName);
    if (!isFile || !std::filesystem::is_regular_file(target, ignored)) continue;
    if (!std::filesystem::equivalent(target, PathOf(fileName), ignored)) continue;
    Complain("-o " + output.FileName + " would overwrite the script");
    return true;
  }
  return false;
}

}  // namespace

ExitStatus RenderScript(const RenderOptions& options) {
  const std::string fileName = FindScript(options.Script);
  if (WouldOverwriteScript(options, fileName)) return ExitStatus::WrongUsage;
  const std::optional<std::string> text = ReadScript(fileName);
  if (!text) return ExitStatus::FileFailed;
  // Every run comes before the first output: a script that fails on paper alone writes nothing.
  std::map<TargetKind, DisplayList> lists;
  for (const OutputRequest& output : options.Outputs) {
    const auto [place, isNew] = lists.try_emplace(output.Target);
    if (!isNew) continue;
    const ExitStatus status = RunFor(output.Target, options, *text, fileName, place->second);
    if (status != ExitStatus::Drawn) return status;
  }
  for (const OutputRequest& output : options.Outputs) {
    const ExitStatus status = WriteOutput(options, output, lists[output.Target]);
    if (status != ExitStatus::Drawn) return status;
  }
  return ExitStatus::Drawn;
}

}  // namespace vaxel
