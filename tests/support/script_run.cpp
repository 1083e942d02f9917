#include "tests/support/script_run.h"

#include <new>

#include "commands/command_table.h"
#include "render/list_renderer.h"

namespace vaxel::test {
namespace {

class RecordingHost : public RunHost {
 public:
  RecordingHost(ScriptRun& run, const RunSettings& settings) : run_(run), settings_(settings) {}

  void ShowError(const ErrorReport& report) override { run_.Errors.push_back(report); }
  RunSignal ProcessPendingEvents() override {
    return ++run_.Questions == settings_.SignalAt ? RunSignal::Abort : RunSignal::GoOn;
  }
  void WriteComment(std::string_view, std::uint32_t lineNumber, std::string_view comment) override {
    run_.Comments.push_back(std::to_string(lineNumber) + ":" + std::string(comment));
  }
  void ShowNotice(std::string_view, std::uint32_t lineNumber, std::string_view text) override {
    run_.Notices.push_back(std::to_string(lineNumber) + ":" + std::string(text));
  }
  bool Confirm(BoxKind, std::string_view, std::uint32_t lineNumber, std::string_view title,
               std::string_view text) override {
    run_.Boxes.push_back(std::to_string(lineNumber) + ":" + std::string(title) + "\n" + std::string(text));
    return settings_.AnswersOk;
  }
  Answer Ask(std::string_view, std::uint32_t lineNumber, std::string_view prompt,
             std::string_view proposal) override {
    run_.Boxes.push_back(std::to_string(lineNumber) + ":" + std::string(prompt) + " [" +
                         std::string(proposal) + "]");
    if (asked_ == settings_.Answers.size()) return {Answer::Kind::Unavailable};
    const std::string& answer = settings_.Answers[asked_++];
    return {answer == "cancel" ? Answer::Kind::Cancelled : Answer::Kind::Given, answer};
  }
  std::string Today() override { return "21/11/2026"; }
  std::string FullFileName(std::string_view fileName) override {
    return fileName.empty() ? "" : "C:\\Cadrans\\" + std::string(fileName);
  }
  std::string FindFile(std::string_view scriptName, std::string_view name) override {
    if (settings_.Files.contains(std::string(name))) return std::string(name);
    if (settings_.Folder.empty()) return "";
    // What an included script names lies beside that script; the main one has no folder here.
    return vaxel::FindFile(PathOf(scriptName).has_parent_path() ? scriptName : settings_.Folder, name);
  }
  Result<std::string> ReadFile(std::string_view fileName, std::size_t maxBytes) override {
    run_.RoomForFile = maxBytes;
    const auto file = settings_.Files.find(std::string(fileName));
    if (file == settings_.Files.end()) return ReadWholeFile(fileName, maxBytes);
    if (file->second.size() > maxBytes) return Failure{.Fault = FileFault::IsTooLarge};
    if (settings_.LacksMemory) throw std::bad_alloc();
    return file->second;
  }

 private:
  ScriptRun& run_;
  const RunSettings& settings_;
  std::size_t asked_ = 0;
};

class StringSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override { text += bytes; }
  std::string text;
};

}  // namespace

RunSettings ForPrinter() {
  RunSettings settings;
  settings.Target = {.Kind = TargetKind::Printer,
                     .WidthMm = 210,
                     .HeightMm = 297,
                     .PixelMm = 25.4 / 600,
                     .IsPixelDevice = false};
  return settings;
}

std::string ScriptRun::Reason() const {
  if (Errors.empty()) return {};
  const std::string& text = Errors.back().Text;
  const std::size_t blankLine = text.rfind("\n\n");
  return blankLine == std::string::npos ? text.substr(text.rfind('\n') + 1) : text.substr(blankLine + 2);
}

ScriptRun RunText(std::string_view script, const RunSettings& settings) {
  ScriptRun result;
  RecordingHost host(result, settings);
  const StringTable strings;
  RunContext run(host, AllCommands(), strings, result.List);
  run.LangBase = settings.LangBase;
  run.IsStraight = settings.IsStraight;
  for (const auto& [name, value] : settings.Variables) run.Level().Variables.Set(name, value);
  result.End = RunScript(run, settings.Target, std::string(script), settings.FileName);
  result.OrderState = run.OrderState;
  result.Work = run.Work.Total();
  for (std::size_t i = 0; i < static_cast<std::size_t>(run.Levels[0].Variables.VarCount); ++i) {
    result.Variables.emplace_back(run.Levels[0].Variables.VarNames[i], run.Levels[0].Variables.VarValues(i));
  }
  return result;
}

std::string PagesText(const DisplayList& list) {
  StringSink sink;
  ListRenderer renderer(sink);
  PlayAll(list, renderer);
  return sink.text;
}

std::string ListText(const DisplayList& list) {
  const std::string pages = PagesText(list);
  std::string text;
  for (std::string_view rest = pages; !rest.empty();) {
    const std::size_t end = rest.find('\n') + 1;
    if (!rest.starts_with("page ")) text += rest.substr(0, end);
    rest.remove_prefix(end);
  }
  return text;
}

std::string Drawn(std::string_view script, const RunSettings& settings) {
  const ScriptRun run = RunText(script, settings);
  return run.Errors.empty() ? ListText(run.List) : "error: " + run.Errors.back().Text;
}

}  // namespace vaxel::test
