// Connects a run with the window and the dialogs.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "drawing/display_list.h"
#include "interpreter/run_context.h"
#include "interpreter/run_host.h"

namespace vaxel {

class RunBridge : public RunHost {
 public:
  // Shows the drawing while it grows, unless it is for paper. notices: what the user was told already.
  // answers: taken, as far as they go, for the first questions; those that the user gives are added.
  RunBridge(AppContext& app, const DisplayList& drawing, bool isShown, std::set<std::string>& notices,
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
  FileContent ReadFile(std::string_view fileName, std::size_t maxBytes) override;

  // The run, of which the script in the editor is level 1; it must live until the last call.
  void Follow(const RunContext& run) { run_ = &run; }
  // When the run is over: writes the comments into the editor and shows the notices.
  void Finish();

 private:
  void ShowSoFar();
  void WriteComments();
  bool IsOfEditor(std::string_view fileName) const;

  AppContext& app_;
  const DisplayList& drawing_;
  const RunContext* run_ = nullptr;
  bool isShown_;
  std::set<std::string>& told_;
  std::vector<std::string>& answers_;
  std::size_t asked_ = 0;
  std::chrono::steady_clock::time_point lastEvents_, lastShown_;
  bool hadEvents_ = false;
  std::map<std::uint32_t, std::string> comments_;  // the last one of each line of the main script
  std::vector<std::string> notices_;
};

// The line with a comment of numbers behind it, in place of one that a run has written before.
std::string WithComment(std::string_view line, std::string_view comment);

}  // namespace vaxel
