#include "cli/options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/files.h"
#include "base/text.h"
#include "cli/command_line.h"
#include "cli/user_texts.h"
#include "interpreter/system_variables.h"
#include "interpreter/variables.h"

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

std::optional<SizeMm> SizeNamed(std::string_view text) {
  for (const NamedSize& paper : PaperSizes) {
    if (EqualIgnoringCase(text, paper.Name)) return paper.Size;
  }
  const std::size_t by = text.find_first_of("xX");
  if (by == std::string_view::npos) return std::nullopt;
  const auto width = WholeNumber(text.substr(0, by));
  const auto height = WholeNumber(text.substr(by + 1));
  const auto fits = [](const std::optional<double>& side) { return side && *side > 0 && *side <= MaxSideMm; };
  if (!fits(width) || !fits(height)) return std::nullopt;
  return SizeMm{*width, *height};
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

// Makes of the values what they mean; throws UsageError where one means nothing.
class OptionReader {
 public:
  OptionReader(const CommandLine& line, const UserTexts& texts) : line_(line), texts_(texts) {}

  RenderOptions Read() const {
    RenderOptions options;
    if (!line_.Has(OptionId::Script)) throw UsageError{std::string(texts_.Get(TextId::CliNoScript))};
    options.Script = *line_.Find(OptionId::Script);
    options.Outputs = ReadOutputs();
    ReadSize(OptionId::Area, options.Area);
    ReadSize(OptionId::Page, options.Page);
    options.Zoom = ReadFactor(OptionId::Zoom, MaxFactor).value_or(1);
    options.Zmm = ReadFactor(OptionId::Zmm, MaxFactor).value_or(1);
    options.Dpi = ReadFactor(OptionId::Dpi, MaxDpi);
    options.Sheets = ReadSheets(options.Outputs);
    options.GoOnAtDepth = Is(OptionId::OnDepth, "cancel");
    options.MaxSeconds = ReadFactor(OptionId::MaxSeconds, MaxSeconds);
    options.Strict = line_.Has(OptionId::Strict);
    options.Rights = ReadRights();
    options.Answers = line_.Values(OptionId::Answer);
    options.Variables = ReadVariables();
    return options;
  }

 private:
  [[noreturn]] void Refuse(TextId reason, std::string_view value = {}, std::string_view second = {},
                           std::string_view third = {}) const {
    throw UsageError{texts_.Fill(reason, value, second, third)};
  }

  bool Is(OptionId option, std::string_view choice) const {
    const std::string* const value = line_.Find(option);
    return value && *value == choice;
  }

  FileRights ReadRights() const {
    FileRights rights{line_.Has(OptionId::NoFiles), std::nullopt, line_.Has(OptionId::AllowNetwork)};
    const std::string* const root = line_.Find(OptionId::Root);
    if (!root) return rights;
    std::error_code ignored;
    if (!std::filesystem::is_directory(PathOf(*root), ignored))
      Refuse(TextId::CliNotAFolder, NameOf(OptionId::Root), *root);
    rights.Root = *root;
    return rights;
  }

  void ReadSize(OptionId option, SizeMm& size) const {
    const std::string* const text = line_.Find(option);
    if (!text) return;
    const std::optional<SizeMm> named = SizeNamed(*text);
    if (!named) Refuse(TextId::CliNotASize, NameOf(option), *text);
    size = *named;
  }

  std::optional<double> ReadFactor(OptionId option, double most) const {
    const std::string* const text = line_.Find(option);
    if (!text) return std::nullopt;
    const auto value = WholeNumber(*text);
    if (value && *value > 0 && *value <= most) return value;
    Refuse(TextId::CliNotANumber, NameOf(option), *text, std::to_string(static_cast<int>(most)));
  }

  // What is not drawn on the sheets of a printer would come out otherwise than it was asked for.
  SheetOptions ReadSheets(const std::vector<OutputRequest>& outputs) const {
    for (const OptionId option : {OptionId::CropMarks, OptionId::Ruler, OptionId::Mirror, OptionId::Copies,
                                  OptionId::Gap, OptionId::Calibrate}) {
      if (!line_.Has(option)) continue;
      for (const OutputRequest& output : outputs) {
        if (output.Format != OutputFormat::Pdf) Refuse(TextId::CliPdfOnly, NameOf(option), output.FileName);
      }
    }
    SheetOptions sheets;
    sheets.CropMarks = line_.Has(OptionId::CropMarks);
    sheets.Ruler = line_.Has(OptionId::Ruler);
    sheets.Mirrored = line_.Has(OptionId::Mirror);
    ReadCopies(sheets);
    ReadFactors(sheets.Factors);
    return sheets;
  }

  void ReadCopies(SheetOptions& sheets) const {
    if (const std::string* const text = line_.Find(OptionId::Copies)) {
      const double most = static_cast<double>(MaxCopies);
      const double count = WholeNumber(*text).value_or(0);
      const bool fits = EqualIgnoringCase(*text, "fit");
      if (!fits && !(count >= 1 && count <= most && count == std::floor(count)))
        Refuse(TextId::CliNotCopies, NameOf(OptionId::Copies), *text, std::to_string(MaxCopies));
      sheets.Copies = fits ? AsManyAsFit : static_cast<std::size_t>(count);
    }
    const std::string* const text = line_.Find(OptionId::Gap);
    if (!text) return;
    if (!line_.Has(OptionId::Copies))
      Refuse(TextId::CliGapAlone, NameOf(OptionId::Gap), NameOf(OptionId::Copies));
    const std::optional<double> gap = WholeNumber(*text);
    if (!gap || !(*gap >= 0 && *gap <= MaxGapMm))
      Refuse(TextId::CliNotAGap, NameOf(OptionId::Gap), *text, std::to_string(std::lround(MaxGapMm)));
    sheets.GapMm = *gap;
  }

  void ReadFactors(Calibration& factors) const {
    const std::string* const text = line_.Find(OptionId::Calibrate);
    if (!text) return;
    const std::string_view whole = *text;
    const std::size_t by = std::min(whole.find_first_of("xX"), whole.size());
    const auto x = WholeNumber(whole.substr(0, by));
    const auto y = WholeNumber(whole.substr(std::min(by + 1, whole.size())));
    factors = {x.value_or(0), y.value_or(0)};
    if (!IsPlausible(factors)) Refuse(TextId::CliNotFactors, NameOf(OptionId::Calibrate), whole);
  }

  std::vector<OutputRequest> ReadOutputs() const {
    std::vector<OutputRequest> outputs;
    std::vector<std::string> files = line_.Values(OptionId::Output);
    if (files.empty()) files.emplace_back("-");
    const std::string* const format = line_.Find(OptionId::Format);
    const std::optional<OutputFormat> standard = format ? FormatNamed(*format) : std::nullopt;
    for (const std::string& file : files) {
      if (file.empty()) Refuse(TextId::CliEmptyFileName);
      const std::optional<OutputFormat> own = FormatOfFile(file);
      if (!own && !standard && file != "-") Refuse(TextId::CliNoFormat, file);
      OutputRequest output;
      output.FileName = file;
      output.Format = own.value_or(standard.value_or(OutputFormat::Svg));
      const bool isUsual = !line_.Has(OptionId::Target) && output.Format == OutputFormat::Pdf;
      output.Target = isUsual || Is(OptionId::Target, "printer") ? TargetKind::Printer : TargetKind::Screen;
      const bool isTwice = std::any_of(outputs.begin(), outputs.end(),
                                       [&](const OutputRequest& other) { return other.FileName == file; });
      if (isTwice) Refuse(TextId::CliOutputTwice, file);
      outputs.push_back(output);
    }
    return outputs;
  }

  std::pair<std::string, std::string> ReadVariable(const std::string& text) const {
    const std::size_t equals = text.find('=');
    std::string name = text.substr(0, equals);
    if (!name.starts_with('%')) name.insert(name.begin(), '%');
    if (equals == std::string::npos || !IsVariableName(name, {})) Refuse(TextId::CliNotAVariable, text);
    if (IsSystemVariable(name)) Refuse(TextId::CliSystemVariable, name);
    return {name, text.substr(equals + 1)};
  }

  // Of variables with the same name the last counts.
  std::vector<std::pair<std::string, std::string>> ReadVariables() const {
    std::vector<std::pair<std::string, std::string>> variables;
    for (const std::string& text : line_.Values(OptionId::Variable)) {
      auto variable = ReadVariable(text);
      std::erase_if(variables,
                    [&](const auto& earlier) { return EqualIgnoringCase(earlier.first, variable.first); });
      variables.push_back(std::move(variable));
    }
    const std::size_t most = VariableTable::MaxVariables;
    if (variables.size() > most) Refuse(TextId::CliTooManyVariables, std::to_string(most));
    return variables;
  }

  const CommandLine& line_;
  const UserTexts& texts_;
};

}  // namespace

std::optional<RenderOptions> ReadOptions(std::vector<std::string> arguments, const UserTexts& texts,
                                         ExitStatus& status) {
  try {
    const CommandLine line(std::move(arguments), texts);
    if (!line.Has(OptionId::Help) && !line.Has(OptionId::Version)) return OptionReader(line, texts).Read();
    const std::string text = line.Has(OptionId::Help) ? HelpText(texts) : "vaxel-render " VAXEL_VERSION "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
    status = ExitStatus::Drawn;
  } catch (const UsageError& error) {
    status = ExitStatus::WrongUsage;
    Complain(error.Text + "\n" + std::string(texts.Get(TextId::CliSeeHelp)));
  }
  return std::nullopt;
}

}  // namespace vaxel
