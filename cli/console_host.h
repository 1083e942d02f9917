#pragma once

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
  const std::string& ScriptName() const { return scriptName_; }

 private:
  void Print(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) const;

  std::string scriptName_;
};

}  // namespace vaxel
