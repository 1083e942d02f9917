#include "fuzz/script_input.h"

#include <utility>

#include "base/text_encoding.h"
#include "drawing/display_list.h"
#include "fuzz/target.h"

namespace vaxel::fuzz {
namespace {

constexpr std::string_view FileMark = "==== ";
// A run is ended at so many questions whether it goes on: about a thousand lines, or ten thousand figures.
constexpr int MostQuestions = 150;

std::string PlaceText(const test::ScriptRun& run) {
  std::string text;
  for (const ErrorReport& error : run.Errors)
    text += error.FileName + ":" + std::to_string(error.LineNumber) + ":" + error.Text + "\n";
  for (const auto* lines : {&run.Comments, &run.Notices, &run.Boxes})
    for (const std::string& line : *lines) text += line + "\n";
  return text;
}

}  // namespace

ScriptInput ReadScript(std::string_view bytes) {
  ScriptInput input;
  std::string script, *part = &script;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (line.starts_with(FileMark)) {
      part = &input.Settings.Files[std::string(line.substr(FileMark.size()))];
    } else {
      (*part += line) += '\n';
    }
  }
  if (input.Settings.Files.contains("printer")) input.Settings.Target = test::ForPrinter().Target;
  input.Settings.Answers = {"2", "%I", "1 + 1"};
  input.Settings.SignalAt = MostQuestions;
  auto decoded = DecodeText(std::move(script));
  input.IsText = decoded.has_value();
  if (decoded) input.Text = std::move(decoded->Text);
  return input;
}

std::string Everything(const test::ScriptRun& run) {
  std::string text = test::PagesText(run.List) + PlaceText(run);
  for (const auto& [name, value] : run.Variables) text += name + "=" + value + "\n";
  return text + std::to_string(static_cast<int>(run.End)) + " " + std::to_string(run.OrderState);
}

}  // namespace vaxel::fuzz
