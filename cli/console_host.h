#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "interpreter/run_host.h"

namespace vaxel {

// What a run says goes to standard error, as "FILE:LINE: text".
class ConsoleHost : public RunHost {
 public:
  // The name for the main script in what is printed.
  explicit ConsoleHost(std::string scriptName) : scriptName_(std::move(scriptName)) {}

  void ShowError(const ErrorReport& report) override;
  void ProcessPendingEvents() override {}
  void WriteComment(std::string_view fileName, std::uint32_t lineNumber, std::string_view comment) override;
  // The same notice is printed once, however often the script is run.
  void ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) override;
  // Printed, and answered with OK.
  bool Confirm(std::string_view fileName, std::uint32_t lineNumber, std::string_view title,
               std::string_view text) override;
  // In the format of the process's locale; the date of SOURCE_DATE_EPOCH where that is set.
  std::string Today() override;
  std::string FullFileName(std::string_view fileName) override;
  std::string FindFile(std::string_view scriptName, std::string_view name) override;
  FileContent ReadFile(std::string_view fileName, std::size_t maxBytes) override;
  const std::string& ScriptName() const { return scriptName_; }

 private:
  void Print(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) const;

  std::string scriptName_;
  std::set<std::string> notices_;
};

// The seconds since 1970 that stand for the present in reproducible outputs; none where the environment has
// no SOURCE_DATE_EPOCH.
std::optional<std::int64_t> SourceDate();

}  // namespace vaxel
