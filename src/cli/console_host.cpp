#include "cli/console_host.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <cwchar>
#include <filesystem>
#include <system_error>

#include "base/files.h"
#include "base/printable.h"
#include "base/text.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace vaxel {
namespace {

// Whether the user's language has a way to write dates; where none is set, "C" writes them as Americans do.
bool HasDates() {
  const char* const locale = std::setlocale(LC_TIME, nullptr);
  const std::string_view name = locale ? locale : "C";
  return name != "C" && name != "POSIX" && !name.starts_with("C.");
}

bool IsTerminal(std::FILE* file) {
#ifdef _WIN32
  return _isatty(_fileno(file)) != 0;
#else
  return isatty(fileno(file)) != 0;
#endif
}

}  // namespace

void ConsoleHost::Print(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) const {
  std::string message = Printable(fileName.empty() ? std::string_view(scriptName_) : fileName);
  if (lineNumber > 0) (message += ':') += std::to_string(lineNumber);
  (message += ": ") += Printable(WithPrintableNames(text), LineBreaks::Kept);
  message += '\n';
  std::fwrite(message.data(), 1, message.size(), stderr);
}

// The line breaks of a message are the program's own, save for those in the names of files.
std::string ConsoleHost::WithPrintableNames(std::string_view text) const {
  std::string printable(text);
  const auto writeOut = [&printable](const std::string& name) {
    const std::string shown = Printable(name);
    if (shown == name) return;
    for (std::size_t at = 0; (at = printable.find(name, at)) != std::string::npos; at += shown.size()) {
      printable.replace(at, name.size(), shown);
    }
  };
  writeOut(scriptName_);
  for (const std::string& name : filesRead_) writeOut(name);
  return printable;
}

void ConsoleHost::ShowError(const ErrorReport& report) {
  Print(report.FileName, report.LineNumber, report.Text);
}

void ConsoleHost::WriteComment(std::string_view fileName, std::uint32_t lineNumber,
                               std::string_view comment) {
  Print(fileName, lineNumber, Trim(comment));
}

void ConsoleHost::ShowNotice(std::string_view fileName, std::uint32_t lineNumber, std::string_view text) {
  const bool isNewText = noticeTexts_.emplace(text).second;
  std::string notice(fileName);
  ((notice += ':') += std::to_string(lineNumber) + ":").append(text);
  const bool isNew = notices_.insert(std::move(notice)).second;
  if (lineNumber == 0 ? !isNewText : !isNew) return;
  const std::string_view word = texts_.Get(isStrict_ ? TextId::ErrorWord : TextId::NoticeWord);
  Print(fileName, lineNumber, std::string(word).append(": ").append(text));
}

bool ConsoleHost::Confirm(BoxKind kind, std::string_view fileName, std::uint32_t lineNumber,
                          std::string_view title, std::string_view text) {
  const bool isDepth = kind == BoxKind::IncludeDepth;
  Print(fileName, lineNumber, isDepth ? std::string(text) : std::string(title) + "\n" + std::string(text));
  return !isDepth || !goesOnWithoutDepth_;
}

Answer ConsoleHost::Ask(std::string_view fileName, std::uint32_t lineNumber, std::string_view prompt,
                        std::string_view proposal) {
  if (asked_ < answers_.size()) {
    const bool isPrepared = asked_ < prepared_;
    return {Answer::Kind::Given, answers_[asked_++], isPrepared};
  }
  if (isCancelled_) return {Answer::Kind::Cancelled};
  if (!mayAsk_ || !IsTerminal(stdin)) return {Answer::Kind::Unavailable};
  Print(fileName, lineNumber,
        std::string(prompt) + (proposal.empty() ? "" : " [" + std::string(proposal) + "]"));
  std::string line;
  isCancelled_ = !Watch.AwaitInput();
  for (int c = 0; !isCancelled_ && (c = std::getchar()) != '\n';) {
    isCancelled_ = c == EOF;
    line += static_cast<char>(c);
  }
  if (isCancelled_) return {Answer::Kind::Cancelled};
  if (line.ends_with('\r')) line.pop_back();
  // An empty line takes what was proposed.
  answers_.push_back(line.empty() ? std::string(proposal) : line);
  return {Answer::Kind::Given, answers_[asked_++]};
}

std::string ConsoleHost::Today() {
  const std::optional<std::int64_t> source = SourceDate();
  const auto now = static_cast<std::time_t>(source.value_or(std::time(nullptr)));
  // A date that stands for another time must not depend on where the drawing is made.
  const std::tm* parts = source ? std::gmtime(&now) : std::localtime(&now);
  std::array<wchar_t, 100> text{};
  const std::size_t length =
      parts ? std::wcsftime(text.data(), text.size(), source || !HasDates() ? L"%Y-%m-%d" : L"%x", parts) : 0;
  const std::u8string date = std::filesystem::path(std::wstring(text.data(), length)).u8string();
  return {date.begin(), date.end()};
}

std::string ConsoleHost::FullFileName(std::string_view fileName) {
  if (fileName.empty()) return {};
  std::error_code failed;
  const std::filesystem::path full = std::filesystem::absolute(PathOf(fileName), failed);
  const std::u8string name = full.lexically_normal().u8string();
  return failed ? std::string(fileName) : std::string(name.begin(), name.end());
}

std::string ConsoleHost::FindFile(std::string_view scriptName, std::string_view name) {
  return files_.Find(scriptName, name);
}

Result<std::string> ConsoleHost::ReadFile(std::string_view fileName, std::size_t maxBytes) {
  filesRead_.emplace(fileName);
  return files_.Read(fileName, maxBytes);
}

std::optional<std::int64_t> SourceDate() {
  const char* text = std::getenv("SOURCE_DATE_EPOCH");
  if (!text) return std::nullopt;
  const std::string_view digits = text;
  std::int64_t seconds = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), seconds);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return seconds;
}

}  // namespace vaxel
