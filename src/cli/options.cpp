#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <string_view>

#include "base/text.h"
#include "interpreter/system_variables.h"
#include "interpreter/variables.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

// Numbers beyond this make no dial, but would make numbers that no format holds.
constexpr double MaxFactor = 1000;
// The longest side that readers of PDF accept is 14400 points.
constexpr double MaxSideMm = 5000;
constexpr double MaxDpi = 20'000;
constexpr double MaxSeconds = 1'000'000;

struct NamedSize {
  std::string_view Name;
  SizeMm Size;
};
constexpr std::array<NamedSize, 3> PaperSizes = {
    {{"A4", {210, 297}}, {"A3", {297, 420}}, {"LETTER", {215.9, 279.4}}}};

struct NamedFormat {
  std::string_view Name;
  OutputFormat Format;
};
constexpr std::array<NamedFormat, 5> Formats = {{{"svg", OutputFormat::Svg},
                                                 {"pdf", OutputFormat::Pdf},
                                                 {"png", OutputFormat::Png},
                                                 {"list", OutputFormat::List},
                                                 {"txt", OutputFormat::List}}};

std::optional<double> WholeNumber(std::string_view text) {
  double value = 0;
  if (text.empty() || ReadUnsignedNumber(text, value) != text.size()) return std::nullopt;
  return value;
}

SizeMm ReadSize(const std::string& text, const char* option) {
  for (const NamedSize& paper : PaperSizes) {
    if (EqualIgnoringCase(text, paper.Name)) return paper.Size;
  }
  const std::size_t by = text.find_first_of("xX");
  if (by != std::string::npos) {
    const auto width = WholeNumber(std::string_view(text).substr(0, by));
    const auto height = WholeNumber(std::string_view(text).substr(by + 1));
    const auto fits = [](const std::optional<double>& side) {
      return side && *side > 0 && *side <= MaxSideMm;
    };
    if (fits(width) && fits(height)) return {*width, *height};
  }
  throw CLI::ValidationError(option, "'" + text + "' is not a size; examples: 200x150 (millimetres), A4");
}

double ReadFactor(const std::string& text, const char* option, double most) {
  const auto value = WholeNumber(text);
  if (!value || *value <= 0 || *value > most) {
    throw CLI::ValidationError(
        option, "'" + text + "' is not a number from above 0 to " + std::to_string(static_cast<int>(most)));
  }
  return *value;
}

std::optional<OutputFormat> FormatNamed(std::string_view name) {
  for (const NamedFormat& format : Formats) {
    if (EqualIgnoringCase(name, format.Name)) return format.Format;
  }
  return std::nullopt;
}

std::optional<OutputFormat> FormatOfFile(std::string_view fileName) {
  const std::size_t dot = fileName.find_last_of("./\\");
  if (dot == std::string_view::npos || fileName[dot] != '.') return std::nullopt;
  return FormatNamed(fileName.substr(dot + 1));
}

std::pair<std::string, std::string> ReadVariable(const std::string& text) {
  const std::size_t equals = text.find('=');
  std::string name = text.substr(0, equals);
  if (!name.starts_with('%')) name.insert(name.begin(), '%');
  if (equals == std::string::npos || !IsVariableName(name, {})) {
    throw CLI::ValidationError("-D", "'" + text + "' is not NAME=VALUE");
  }
  if (IsSystemVariable(name)) {
    throw CLI::ValidationError("-D", "'" + name + "' belongs to the system and cannot be set");
  }
  return {name, text.substr(equals + 1)};
}

// The texts of the options as they stand on the command line.
struct RawOptions {
  std::vector<std::string> Outputs;
  std::string Format, Target, Area, Page, Zoom, Zmm, Dpi, Language, OnDepth, MaxSeconds;
  std::vector<std::string> Variables;
};

std::vector<OutputRequest> ReadOutputs(const RawOptions& raw) {
  std::vector<OutputRequest> outputs;
  const std::optional<OutputFormat> standard = raw.Format.empty() ? std::nullopt : FormatNamed(raw.Format);
  for (const std::string& file : raw.Outputs.empty() ? std::vector<std::string>{"-"} : raw.Outputs) {
    OutputRequest output;
    output.FileName = file;
    if (file.empty()) throw CLI::ValidationError("-o", "an empty text is no file's name");
    const std::optional<OutputFormat> own = FormatOfFile(file);
    if (!own && !standard && !raw.Outputs.empty() && file != "-") {
      throw CLI::ValidationError("-o", "'" + file + "' does not tell its format; name it with --format");
    }
    output.Format = own.value_or(standard.value_or(OutputFormat::Svg));
    const bool printer = raw.Target.empty() ? output.Format == OutputFormat::Pdf : raw.Target == "printer";
    output.Target = printer ? TargetKind::Printer : TargetKind::Screen;
    const bool twice = std::any_of(outputs.begin(), outputs.end(),
                                   [&](const OutputRequest& other) { return other.FileName == file; });
    if (twice) throw CLI::ValidationError("-o", "'" + file + "' is given twice");
    outputs.push_back(output);
  }
  return outputs;
}

void Interpret(const RawOptions& raw, RenderOptions& options) {
  options.Outputs = ReadOutputs(raw);
  if (!raw.Area.empty()) options.Area = ReadSize(raw.Area, "--area");
  if (!raw.Page.empty()) options.Page = ReadSize(raw.Page, "--page");
  if (!raw.Zoom.empty()) options.Zoom = ReadFactor(raw.Zoom, "--zoom", MaxFactor);
  if (!raw.Zmm.empty()) options.Zmm = ReadFactor(raw.Zmm, "--zmm", MaxFactor);
  if (!raw.Dpi.empty()) options.Dpi = ReadFactor(raw.Dpi, "--dpi", MaxDpi);
  options.GoOnAtDepth = raw.OnDepth == "cancel";
  if (!raw.MaxSeconds.empty()) options.MaxSeconds = ReadFactor(raw.MaxSeconds, "--max-seconds", MaxSeconds);
  if (!raw.Language.empty()) options.LangBase = StringTable().BaseOfCode(raw.Language);
  for (const std::string& text : raw.Variables) {
    auto variable = ReadVariable(text);
    std::erase_if(options.Variables,
                  [&](const auto& earlier) { return EqualIgnoringCase(earlier.first, variable.first); });
    options.Variables.push_back(std::move(variable));
  }
  if (options.Variables.size() > VariableTable::MaxVariables) {
    throw CLI::ValidationError("-D", "a script has at most 32 variables");
  }
}

void Declare(CLI::App& app, RawOptions& raw, RenderOptions& options) {
  app.add_option("SCRIPT", options.Script, "the script; - reads standard input")->required();
  app.add_option(
         "-o", raw.Outputs,
         "a file to write; repeatable; .svg .pdf .png .list or .txt says its format; - is standard output "
         "(default: -)")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--format", raw.Format, "format of an output whose name does not say it (default: svg)")
      ->check(CLI::IsMember({"svg", "pdf", "png", "list"}, CLI::ignore_case));
  app.add_option("--target", raw.Target, "what the script draws for (default: printer for PDF, else screen)")
      ->check(CLI::IsMember({"screen", "printer"}));
  app.add_option("--area", raw.Area, "size of the screen in mm (default: 200x200)")->type_name("WxH");
  app.add_option("--page", raw.Page, "paper in portrait: A4, A3, Letter or WxH in mm (default: A4)")
      ->type_name("SIZE");
  app.add_option("--zoom", raw.Zoom, "zoom of the screen or the printout (default: 1)")->type_name("F");
  app.add_option("--zmm", raw.Zmm, "millimetres of the screen that show a true one (default: 1)")
      ->type_name("F");
  app.add_option("--dpi", raw.Dpi,
                 "device pixels an inch of the screen target (default: 96), in which pens are measured, and "
                 "resolution of PNG (default: 300); a printer page has 600")
      ->type_name("N");
  app.add_option("--language", raw.Language, "language of messages (default: fr)")
      ->check(CLI::IsMember({"fr", "en", "es"}));
  app.add_option("-D", raw.Variables, "a variable of the script; repeatable")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  app.add_option("--answer", options.Answers, "answer to a question of the script, in order; repeatable")
      ->type_name("TEXT")
      ->allow_extra_args(false);
  app.add_option(
         "--on-depth", raw.OnDepth,
         "what to do with a file included too deep: ok ends the run, cancel leaves it out (default: ok)")
      ->check(CLI::IsMember({"ok", "cancel"}));
  app.add_option("--max-seconds", raw.MaxSeconds, "end a run that loops longer than this with an error")
      ->type_name("N");
  app.set_version_flag("--version", "vaxel-render " VAXEL_VERSION);
}

}  // namespace

std::optional<RenderOptions> ReadOptions(std::vector<std::string> arguments, ExitStatus& status) {
  CLI::App app("Draws a Vaxel script: the dial of a measuring instrument, at true size.", "vaxel-render");
  RawOptions raw;
  RenderOptions options;
  Declare(app, raw, options);
  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(std::move(arguments));
    Interpret(raw, options);
    return options;
  } catch (const CLI::Success& success) {
    status = ExitStatus::Drawn;
    app.exit(success);
  } catch (const CLI::ParseError& error) {
    status = ExitStatus::WrongUsage;
    std::cerr << "vaxel-render: " << error.what() << "\nvaxel-render --help lists the options\n";
  }
  return std::nullopt;
}

}  // namespace vaxel
