// What a run asks for outside itself, answered on a terminal.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/options.h"
#include "cli/run_watch.h"
#include "cli/user_texts.h"
#include "interpreter/run_host.h"
#include "interpreter/script_files.h"

namespace vaxel {

// What a run says goes to standard error, as "FILE:LINE: text", with nothing in it that a terminal would
// obey.
class ConsoleHost : public RunHost {
 public:
  // scriptName stands for the main script in what is printed. The texts must live as long.
  ConsoleHost(std::string scriptName, const RenderOptions& options, const UserTexts& texts)
      : Watch(options.MaxSeconds, texts.Get(TextId::FontLibraryFails)),
        texts_(texts),
        files_(options.Script == "-" ? std::string_view() : scriptName, options.Rights),
        scriptName_(std::move(scriptName)),
        answers_(options.Answers),
        prepared_(options.Answers.size()),
        goesOnWithoutDepth_(options.GoOnAtDepth),
        mayAsk_(options.Script != "-"),
        isStrict_(options.Strict) {}

  void ShowError(const ErrorReport& report) override;
  // The signal of Ctrl+C, or of the limit of time.
  RunSignal ProcessPendingEvents() override { return Watch.Signal(); }
  void WriteComment(std::string_view fileName, std::uint32_t lineNumber, std::string_view comment) override;
  // The same notice of a line is printed once, however often the script is run; one without a line only when
  // no line has given it.
  void ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) override;
  // The text is printed. The answer is OK, or for files included too deep what the options say.
  bool Confirm(BoxKind kind, std::string_view fileName, std::uint32_t lineNumber, std::string_view title,
               std::string_view text) override;
  // The answer is the next of those that were given with the options, then what is typed on the terminal.
  // What was answered or cancelled in one run is so in the next.
  Answer Ask(std::string_view fileName, std::uint32_t lineNumber, std::string_view prompt,
             std::string_view proposal) override;
  void BeginRun() { asked_ = 0; }
  // The date in the format of the process's locale; that of SOURCE_DATE_EPOCH, where it is set, as
  // 2026-11-21.
  std::string Today() override;
  std::string FullFileName(std::string_view fileName) override;
  std::string FindFile(std::string_view scriptName, std::string_view name) override;
  Result<std::string> ReadFile(std::string_view fileName, std::size_t maxBytes) override;

  // Whether there was a notice that counts as an error.
  bool HasRefused() const { return isStrict_ && !notices_.empty(); }

  RunWatch Watch;
  const std::string& ScriptName() const { return scriptName_; }
  // The files that the runs have read, by the names that were given to ReadFile.
  const std::set<std::string>& FilesRead() const { return filesRead_; }

 private:
  void Print(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) const;
  std::string WithPrintableNames(std::string_view text) const;

  const UserTexts& texts_;
  ScriptFiles files_;
  std::string scriptName_;
  std::set<std::string> filesRead_;
  std::set<std::string> notices_, noticeTexts_;  // with their places, and without
  std::vector<std::string> answers_;             // those typed so far are added
  std::size_t prepared_;                         // of them come from the options
  std::size_t asked_ = 0;                        // in this run
  bool isCancelled_ = false;                     // the question after these answers
  bool goesOnWithoutDepth_;
  bool mayAsk_;  // else standard input is the script
  bool isStrict_;
};

// The seconds since 1970 that stand for the present in reproducible outputs; there are none where the
// environment has no SOURCE_DATE_EPOCH.
std::optional<std::int64_t> SourceDate();

}  // namespace vaxel
