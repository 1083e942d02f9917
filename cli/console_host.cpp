#include "cli/console_host.h"

#include <cstdio>

#include "text/text.h"

namespace vaxel {

void ConsoleHost::Print(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) const {
  std::string message(fileName.empty() ? std::string_view(scriptName_) : fileName);
  message += ':';
  message += std::to_string(lineNumber);
  message += ": ";
  // A script's own control characters must not reach the terminal.
  for (char c : text) message += (c < ' ' && c >= '\0' && c != '\n') || c == '\x7F' ? '?' : c;
  message += '\n';
  std::fwrite(message.data(), 1, message.size(), stderr);
}

void ConsoleHost::ShowError(const ErrorReport& report) {
  Print(report.FileName, report.LineNumber, report.Text);
}

void ConsoleHost::WriteComment(std::string_view fileName, std::uint32_t lineNumber,
                               std::string_view comment) {
  Print(fileName, lineNumber, Trim(comment));
}

}  // namespace vaxel
