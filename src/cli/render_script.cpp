#include "cli/render_script.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/output_file.h"
#include "base/text_encoding.h"
#include "base/utf8.h"
#include "cli/console_host.h"
#include "commands/command_table.h"
#include "drawing/display_list.h"
#include "interpreter/run.h"
#include "render/cairo_module.h"
#include "render/list_renderer.h"
#include "render/svg_renderer.h"
#include "render/system_decoder.h"
#include "render/system_measurer.h"
#include "resources/string_table.h"

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
  constexpr std::size_t maxBytes = std::size_t{512} << 20;
  FileContent content = name == "-" ? ReadToEnd(stdin, maxBytes) : ReadWholeFile(name, maxBytes);
  if (content.Status == FileStatus::TooLarge) content.Reason = "it is larger than 512 MB";
  if (content.Status != FileStatus::Read) {
    Complain("cannot read " + DisplayName(name, "standard input") + ": " + content.Reason);
    return std::nullopt;
  }
  auto decoded = DecodeText(std::move(content.Bytes));
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

std::string Title(const RenderOptions& options) {
  if (options.Script == "-") return "Vaxel";
  const std::string title = PathOf(options.Script).stem().string();
  return IsValidUtf8(title) ? title : "Vaxel";
}

// What all runs and outputs share of this machine.
struct Machine {
  ConsoleHost Host;
  SystemMeasurer Measurer{};
  SystemDecoder Decoder{};
  StringTable Strings{};
};

// Writes one page, or the whole list in the formats that hold several.
WriteResult WriteFormat(const RenderOptions& options, const OutputRequest& output, const DisplayList& list,
                        std::size_t page, Machine& machine, ByteSink& sink) {
  WriteResult result;
  switch (output.Format) {
    case OutputFormat::Svg: {
      SvgRenderer renderer(sink);
      PlayPage(list, page, renderer);
      return result;
    }
    case OutputFormat::List: {
      ListRenderer renderer(sink);
      PlayAll(list, renderer);
      return result;
    }
    case OutputFormat::Pdf:
    case OutputFormat::Png:
      break;
  }
  const CairoFunctions* const cairo = LoadCairo(result.Error);
  if (!cairo) return result;
  if (output.Format == OutputFormat::Pdf)
    return cairo->WritePdf(list, {Title(options), SourceDate()}, &machine.Decoder, sink);
  return cairo->WritePng(list, page, options.Dpi.value_or(PngDpi), &machine.Decoder, sink);
}

// "dial.svg" for the first page, then "dial-2.svg", "dial-3.svg", …
std::string PageFileName(const std::string& fileName, std::size_t page) {
  if (page == 0) return fileName;
  const std::size_t dot = fileName.find_last_of("./\\");
  const bool hasExtension = dot != std::string::npos && fileName[dot] == '.';
  const std::size_t at = hasExtension ? dot : fileName.size();
  return fileName.substr(0, at) + "-" + std::to_string(page + 1) + fileName.substr(at);
}

ExitStatus WriteOutput(const RenderOptions& options, const OutputRequest& output, const DisplayList& list,
                       Machine& machine) {
  const bool oneFile = output.Format == OutputFormat::Pdf || output.Format == OutputFormat::List;
  const std::size_t files = oneFile ? 1 : list.Pages().size();
  if (files > 1 && output.FileName == "-") {
    Complain("the drawing has " + std::to_string(files) + " pages: name a file, each page becomes one");
    return ExitStatus::WrongUsage;
  }
  for (std::size_t page = 0; page < files; ++page) {
    const std::string name = PageFileName(output.FileName, page);
    OutputFile file(name);
    WriteResult result = WriteFormat(options, output, list, page, machine, file);
    for (const FontReplacement& font : result.Replaced) {
      machine.Host.ShowNotice(
          "", 0, machine.Strings.Text(options.LangBase + FontReplacedNotice, font.Wanted, font.Used));
    }
    if (machine.Host.Watch.IsInterrupted()) return ExitStatus::Interrupted;
    if (result.Error.empty()) result.Error = file.Commit();
    if (result.Error.empty()) continue;
    Complain("cannot write " + DisplayName(name, "standard output") + ": " + result.Error);
    return ExitStatus::FileFailed;
  }
  return ExitStatus::Drawn;
}

// Everything of the script that its runs share.
struct Script {
  std::string FileName;  // "-": standard input
  std::string Text;
};

// Runs the script for one kind of target; the list gets at least one page.
ExitStatus RunFor(TargetKind kind, const RenderOptions& options, const Script& script, Machine& machine,
                  DisplayList& list) {
  RunContext run(machine.Host, AllCommands(), machine.Strings, list);
  run.LangBase = options.LangBase;
  machine.Host.BeginRun();
  for (const auto& [name, value] : options.Variables) run.Level().Variables.Set(name, value);
  RunTarget target = TargetFor(kind, options);
  target.Measurer = &machine.Measurer;
  target.Decoder = &machine.Decoder;
  switch (RunScript(run, target, script.Text, script.FileName == "-" ? "" : script.FileName)) {
    case RunEnd::Failed:
      return ExitStatus::ScriptFailed;
    case RunEnd::Aborted:
      return ExitStatus::Interrupted;
    case RunEnd::Empty:
      std::fprintf(stderr, "%s: the script is empty, so is the drawing\n", machine.Host.ScriptName().c_str());
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
  Script script{FindScript(options.Script), {}};
  if (WouldOverwriteScript(options, script.FileName)) return ExitStatus::WrongUsage;
  std::optional<std::string> text = ReadScript(script.FileName);
  if (!text) return ExitStatus::FileFailed;
  script.Text = std::move(*text);
  Machine machine{ConsoleHost(DisplayName(script.FileName, "<stdin>"), options)};
  // Every run comes before the first output: a script that fails on paper alone writes nothing.
  std::map<TargetKind, DisplayList> lists;
  for (const OutputRequest& output : options.Outputs) {
    const auto [place, isNew] = lists.try_emplace(output.Target);
    if (!isNew) continue;
    const ExitStatus status = RunFor(output.Target, options, script, machine, place->second);
    if (!machine.Decoder.Failure().empty()) Complain("no picture can be drawn: " + machine.Decoder.Failure());
    if (status != ExitStatus::Drawn) return status;
  }
  if (!machine.Measurer.Failure().empty()) {
    Complain("texts are measured roughly: " + machine.Measurer.Failure());
  }
  for (const OutputRequest& output : options.Outputs) {
    const DisplayList& list = lists[output.Target];
    const ExitStatus status = WriteOutput(options, output, list, machine);
    if (status != ExitStatus::Drawn) return status;
  }
  return ExitStatus::Drawn;
}

}  // namespace vaxel
