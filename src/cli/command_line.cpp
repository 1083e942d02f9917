#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace vaxel {
namespace {

enum class Use : std::uint8_t { Once, Repeatable, Flag };

struct OptionRow {
  OptionId Id;
  const char* Name;
  Use How;
  const char* Choices;  // the only values, apart by "|"; null: any
  TextId Value;         // what the help calls the value, where there are no choices
  TextId Help;
};

using T = TextId;
constexpr OptionRow Rows[] = {
    {OptionId::Script, "SCRIPT", Use::Once, nullptr, T::CliFileValue, T::CliScriptHelp},
    {OptionId::Output, "-o", Use::Repeatable, nullptr, T::CliFileValue, T::CliOutputHelp},
    {OptionId::Format, "--format", Use::Once, "svg|pdf|png|list", T::CliFileValue, T::CliFormatHelp},
    {OptionId::Target, "--target", Use::Once, "screen|printer", T::CliFileValue, T::CliTargetHelp},
    {OptionId::Area, "--area", Use::Once, nullptr, T::CliAreaValue, T::CliAreaHelp},
    {OptionId::Page, "--page", Use::Once, nullptr, T::CliSizeValue, T::CliPageHelp},
    {OptionId::Zoom, "--zoom", Use::Once, nullptr, T::CliNumberValue, T::CliZoomHelp},
    {OptionId::Zmm, "--zmm", Use::Once, nullptr, T::CliNumberValue, T::CliZmmHelp},
    {OptionId::Dpi, "--dpi", Use::Once, nullptr, T::CliNumberValue, T::CliDpiHelp},
    {OptionId::CropMarks, "--crop-marks", Use::Flag, nullptr, T::CliFileValue, T::CliCropMarksHelp},
    {OptionId::Ruler, "--ruler", Use::Flag, nullptr, T::CliFileValue, T::CliRulerHelp},
    {OptionId::Mirror, "--mirror", Use::Flag, nullptr, T::CliFileValue, T::CliMirrorHelp},
    {OptionId::Copies, "--copies", Use::Once, nullptr, T::CliCopiesValue, T::CliCopiesHelp},
    {OptionId::Gap, "--gap", Use::Once, nullptr, T::CliMillimetresValue, T::CliGapHelp},
    {OptionId::Calibrate, "--calibrate", Use::Once, nullptr, T::CliFactorsValue, T::CliCalibrateHelp},
    {OptionId::Language, "--language", Use::Once, "fr|en|es", T::CliFileValue, T::CliLanguageHelp},
    {OptionId::Variable, "-D", Use::Repeatable, nullptr, T::CliVariableValue, T::CliVariableHelp},
    {OptionId::Answer, "--answer", Use::Repeatable, nullptr, T::CliAnswerValue, T::CliAnswerHelp},
    {OptionId::OnDepth, "--on-depth", Use::Once, "ok|cancel", T::CliFileValue, T::CliOnDepthHelp},
    {OptionId::MaxSeconds, "--max-seconds", Use::Once, nullptr, T::CliNumberValue, T::CliMaxSecondsHelp},
    {OptionId::Strict, "--strict", Use::Flag, nullptr, T::CliFileValue, T::CliStrictHelp},
    {OptionId::Root, "--root", Use::Once, nullptr, T::CliFolderValue, T::CliRootHelp},
    {OptionId::NoFiles, "--no-files", Use::Flag, nullptr, T::CliFileValue, T::CliNoFilesHelp},
    {OptionId::AllowNetwork, "--allow-network", Use::Flag, nullptr, T::CliFileValue, T::CliAllowNetworkHelp},
    {OptionId::Version, "--version", Use::Flag, nullptr, T::CliFileValue, T::CliVersionHelp},
    {OptionId::Help, "-h,--help", Use::Flag, nullptr, T::CliFileValue, T::CliHelpHelp}};

constexpr bool RowsFollowTheIds() {
  std::size_t id = 0;
  for (const OptionRow& row : Rows) {
    if (static_cast<std::size_t>(row.Id) != id++) return false;
  }
  return id == static_cast<std::size_t>(OptionId::Count);
}
static_assert(RowsFollowTheIds(), "an option without a row, or rows out of order");

// The one of the choices that is meant; it is empty when the value is none of them.
std::string ChoiceNamed(std::string_view choices, std::string_view value) {
  while (!choices.empty()) {
    const std::string_view choice = choices.substr(0, choices.find('|'));
    if (EqualIgnoringCase(choice, value)) return std::string(choice);
    choices.remove_prefix(std::min(choice.size() + 1, choices.size()));
  }
  return {};
}

// The library splits the arguments and nothing else: its messages know one language.
void Split(CLI::App& app, std::vector<std::string> arguments, const UserTexts& texts) {
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ArgumentMismatch& mismatch) {
    const std::string_view what = mismatch.what();
    throw UsageError{texts.Fill(TextId::CliNoValue, what.substr(0, what.find(':')))};
  } catch (const CLI::ParseError& error) {
    throw UsageError{texts.Fill(TextId::CliUnknownArgument, error.what())};
  }
  const std::vector<std::string> unknown = app.remaining();
  if (!unknown.empty()) throw UsageError{texts.Fill(TextId::CliUnknownArgument, unknown.front())};
}

constexpr std::size_t LineWidth = 80;

// Characters, as far as the texts of the help have them: none is wider or narrower than one place.
std::size_t WidthOf(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// Puts the text's words into lines that begin in this column; the first line has been begun.
void AppendWrapped(std::string& lines, std::string_view text, std::size_t column) {
  std::size_t at = column;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    if (at > column && at + 1 + WidthOf(word) > LineWidth) {
      lines += "\n" + std::string(column, ' ');
      at = column;
    } else if (at > column) {
      lines += ' ';
      ++at;
    }
    lines += word;
    at += WidthOf(word);
  }
  lines += '\n';
}

std::string FormOf(const OptionRow& row, const UserTexts& texts) {
  std::string form = row.Name;
  if (const std::size_t comma = form.find(','); comma != std::string::npos) form.insert(comma + 1, " ");
  if (row.How == Use::Flag || row.Id == OptionId::Script) return form;
  return (form += ' ').append(row.Choices ? row.Choices : texts.Get(row.Value));
}

}  // namespace

CommandLine::CommandLine(std::vector<std::string> arguments, const UserTexts& texts) {
  CLI::App app;
  app.set_help_flag();
  app.allow_extras();
  app.allow_windows_style_options(false);  // "/dials/vu.dat" is a file
  std::vector<CLI::Option*> options;
  for (const OptionRow& row : Rows) {
    options.push_back(row.How == Use::Flag ? app.add_flag(row.Name) : app.add_option(row.Name));
    options.back()->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
  Split(app, std::move(arguments), texts);
  for (const OptionRow& row : Rows) {
    std::vector<std::string>& values = values_[static_cast<std::size_t>(row.Id)];
    values = options[static_cast<std::size_t>(row.Id)]->results();
    if (row.How == Use::Once && values.size() > 1)
      throw UsageError{texts.Fill(TextId::CliRepeated, row.Name)};
    if (!row.Choices || values.empty()) continue;
    const std::string choice = ChoiceNamed(row.Choices, values[0]);
    if (choice.empty()) {
      throw UsageError{texts.Fill(TextId::CliNotAChoice, row.Name, values[0], row.Choices)};
    }
    values[0] = choice;
  }
}

const char* NameOf(OptionId option) {
  return Rows[static_cast<std::size_t>(option)].Name;
}

std::string HelpText(const UserTexts& texts) {
  std::size_t widest = 0;
  for (const OptionRow& row : Rows) widest = std::max(widest, WidthOf(FormOf(row, texts)));
  const std::size_t column = 2 + widest + 2;
  std::string help;
  AppendWrapped(help, texts.Get(TextId::CliPurpose), 0);
  help.append("\n").append(texts.Get(TextId::CliUsage)).append("\n\n");
  for (const OptionRow& row : Rows) {
    const std::string form = FormOf(row, texts);
    help.append("  ").append(form).append(std::string(column - 2 - WidthOf(form), ' '));
    AppendWrapped(help, texts.Get(row.Help), column);
  }
  return help;
}

}  // namespace vaxel
