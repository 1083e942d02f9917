// Connects a run with the window and the dialogs.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/problem_list.h"
#include "drawing/display_list.h"
#include "interpreter/run_context.h"
#include "interpreter/run_host.h"
#include "interpreter/script_files.h"

namespace vaxel {

// What lasts from run to run.
struct RunSession {
  bool IsRunning = false;          // a run is under way
  bool AbortRequested = false;     // Escape is held down
  bool IsWritingComments = false;  // a run writes its comments into the text
  std::set<std::string> Errors;    // of the runs that belong together, shown already
  std::vector<Problem> Problems;   // of the runs that belong together
};

class RunBridge : public RunHost {
 public:
  // growing: the drawing, shown while the run draws it; null when it is for paper. answers: taken, as far as
  // they go, for the first questions; those that the user gives are added. All of them must outlive this.
  RunBridge(AppContext& app, const EditedScript& script, RunSession& session, const DisplayList* growing,
            std::vector<std::string>& answers);

  void ShowError(const ErrorReport& report) override;
  RunSignal ProcessPendingEvents() override;
  void WriteComment(std::string_view fileName, std::uint32_t lineNumber, std::string_view comment) override;
  void ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) override;
  bool Confirm(BoxKind kind, std::string_view fileName, std::uint32_t lineNumber, std::string_view title,
               std::string_view text) override;
  Answer Ask(std::string_view fileName, std::uint32_t lineNumber, std::string_view prompt,
             std::string_view proposal) override;
  std::string Today() override { return app_.Platform.Today(); }
  std::string FullFileName(std::string_view fileName) override;
  std::string FindFile(std::string_view scriptName, std::string_view name) override;
  Result<std::string> ReadFile(std::string_view fileName, std::size_t maxBytes) override;

  // Takes the run, of which the script in the editor is level 1; it must live until the last call.
  void Follow(const RunContext& run) { run_ = &run; }
  // The time since the beginning without that in which the user was asked or told something.
  std::chrono::milliseconds Worked() const;
  // To be called when the run is over: writes the comments into the editor.
  void Finish();
  // Whether what is wrong goes into the session's list.
  void KeepsProblems(bool keeps) { keepsProblems_ = keeps; }
  // The names of the files that the script has read, with their folders.
  const std::set<std::string>& FilesRead() const { return filesRead_; }

 protected:
  void KeepProblem(Problem::Kind kind, std::string_view fileName, std::uint32_t line, std::string_view text);

 private:
  class Waiting;

  ScriptFiles Files() const;
  void ShowSoFar();
  void TellThatItTakesLong();
  bool IsOfEditor(std::string_view fileName) const;

  AppContext& app_;
  const EditedScript& script_;
  RunSession& session_;
  const DisplayList* growing_;
  const RunContext* run_ = nullptr;
  std::vector<std::string>& answers_;
  std::size_t asked_ = 0;
  std::chrono::steady_clock::time_point lastEvents_, lastShown_, started_;
  std::chrono::steady_clock::duration waited_{};  // for the user
  bool hadEvents_ = false;
  bool keepsProblems_ = true;
  bool isLong_ = false;                            // the user was told so
  std::map<std::uint32_t, std::string> comments_;  // the last one of each line of the main script
  std::set<std::string> filesRead_;
};

// The line with a comment of numbers at its end, in place of one that a run has written before.
std::string WithComment(std::string_view line, std::string_view comment);

}  // namespace vaxel
