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
  CliText Value;        // what the help calls the value, where there are no choices
  CliText Help;
};

using T = CliText;
constexpr OptionRow Rows[] = {
    {OptionId::Script, "SCRIPT", Use::Once, nullptr, T::FileValue, T::ScriptHelp},
    {OptionId::Output, "-o", Use::Repeatable, nullptr, T::FileValue, T::OutputHelp},
    {OptionId::Format, "--format", Use::Once, "svg|pdf|png|list", T::FileValue, T::FormatHelp},
    {OptionId::Target, "--target", Use::Once, "screen|printer", T::FileValue, T::TargetHelp},
    {OptionId::Area, "--area", Use::Once, nullptr, T::AreaValue, T::AreaHelp},
    {OptionId::Page, "--page", Use::Once, nullptr, T::SizeValue, T::PageHelp},
    {OptionId::Zoom, "--zoom", Use::Once, nullptr, T::NumberValue, T::ZoomHelp},
    {OptionId::Zmm, "--zmm", Use::Once, nullptr, T::NumberValue, T::ZmmHelp},
    {OptionId::Dpi, "--dpi", Use::Once, nullptr, T::NumberValue, T::DpiHelp},
    {OptionId::Language, "--language", Use::Once, "fr|en|es", T::FileValue, T::LanguageHelp},
    {OptionId::Variable, "-D", Use::Repeatable, nullptr, T::VariableValue, T::VariableHelp},
    {OptionId::Answer, "--answer", Use::Repeatable, nullptr, T::AnswerValue, T::AnswerHelp},
    {OptionId::OnDepth, "--on-depth", Use::Once, "ok|cancel", T::FileValue, T::OnDepthHelp},
    {OptionId::MaxSeconds, "--max-seconds", Use::Once, nullptr, T::NumberValue, T::MaxSecondsHelp},
    {OptionId::Version, "--version", Use::Flag, nullptr, T::FileValue, T::VersionHelp},
    {OptionId::Help, "-h,--help", Use::Flag, nullptr, T::FileValue, T::HelpHelp}};

constexpr bool RowsFollowTheIds() {
  std::size_t id = 0;
  for (const OptionRow& row : Rows) {
    if (static_cast<std::size_t>(row.Id) != id++) return false;
  }
  return id == static_cast<std::size_t>(OptionId::Count);
}
static_assert(RowsFollowTheIds(), "an option without a row, or rows out of order");

// Of the choices the one that is meant; empty when it is none.
std::string ChoiceNamed(std::string_view choices, std::string_view value) {
  while (!choices.empty()) {
    const std::string_view choice = choices.substr(0, choices.find('|'));
    if (EqualIgnoringCase(choice, value)) return std::string(choice);
    choices.remove_prefix(std::min(choice.size() + 1, choices.size()));
  }
  return {};
}

// The library splits the arguments and nothing else: its messages know one language.
void Split(CLI::App& app, std::vector<std::string> arguments, const CliTexts& texts) {
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::ArgumentMismatch& mismatch) {
    const std::string_view what = mismatch.what();
    throw UsageError{texts.Fill(CliText::NoValue, {what.substr(0, what.find(':'))})};
  } catch (const CLI::ParseError& error) {
    throw UsageError{texts.Fill(CliText::UnknownArgument, {error.what()})};
  }
  const std::vector<std::string> unknown = app.remaining();
  if (!unknown.empty()) throw UsageError{texts.Fill(CliText::UnknownArgument, {unknown.front()})};
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

std::string FormOf(const OptionRow& row, const CliTexts& texts) {
  std::string form = row.Name;
  if (const std::size_t comma = form.find(','); comma != std::string::npos) form.insert(comma + 1, " ");
  if (row.How == Use::Flag || row.Id == OptionId::Script) return form;
  return (form += ' ').append(row.Choices ? row.Choices : texts.Get(row.Value));
}

}  // namespace

CommandLine::CommandLine(std::vector<std::string> arguments, const CliTexts& texts) {
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
      throw UsageError{texts.Fill(CliText::Repeated, {row.Name})};
    if (!row.Choices || values.empty()) continue;
    const std::string choice = ChoiceNamed(row.Choices, values[0]);
    if (choice.empty()) {
      throw UsageError{texts.Fill(CliText::NotAChoice, {row.Name, values[0], row.Choices})};
    }
    values[0] = choice;
  }
}

const char* NameOf(OptionId option) {
  return Rows[static_cast<std::size_t>(option)].Name;
}

std::string HelpText(const CliTexts& texts) {
  std::size_t widest = 0;
  for (const OptionRow& row : Rows) widest = std::max(widest, WidthOf(FormOf(row, texts)));
  const std::size_t column = 2 + widest + 2;
  std::string help;
  AppendWrapped(help, texts.Get(CliText::Purpose), 0);
  help.append("\n").append(texts.Get(CliText::Usage)).append("\n\n");
  for (const OptionRow& row : Rows) {
    const std::string form = FormOf(row, texts);
    help.append("  ").append(form).append(std::string(column - 2 - WidthOf(form), ' '));
    AppendWrapped(help, texts.Get(row.Help), column);
  }
  return help;
}

}  // namespace vaxel
