#include "app/recovery.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/script_file.h"
#include "base/files.h"
#include "base/output_file.h"

namespace vaxel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view CopyPrefix = "Vaxe$", CopyExtension = ".rec";
constexpr std::string_view CopyHeader = "Vaxel recovery";

template <class Number>
std::optional<Number> ReadNumber(std::string_view digits) {
  Number number{};
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

std::string_view TakeUntil(std::string_view& text, char end) {
  const std::size_t at = text.find(end);
  const std::string_view part = text.substr(0, at);
  text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
  return part;
}

void RemoveFile(const std::string& name) {
  std::error_code ignored;
  fs::remove(PathOf(name), ignored);
}

}  // namespace

Recovery::Recovery(std::vector<std::string> folders, std::uint32_t processId) : processId_(processId) {
  for (std::string& folder : folders) {
    const bool isNew = std::find(folders_.begin(), folders_.end(), folder) == folders_.end();
    if (folders_.empty() || (isNew && !folder.empty())) folders_.push_back(std::move(folder));
  }
}

std::string Recovery::OwnName() const {
  return folders_.front() + std::string(CopyPrefix) + std::to_string(processId_) + std::string(CopyExtension);
}

bool Recovery::IsDue(Clock::time_point now) {
  if (writing_.valid() && writing_.wait_for(std::chrono::seconds(0)) != std::future_status::timeout)
    FinishWriting();
  return changed_ && now - written_ >= Interval;
}

void Recovery::BeginWriting(Clock::time_point now, RecoveryCopy copy) {
  FinishWriting();
  written_ = now;
  changed_ = false;
  constexpr auto ifThreadsCanBeHad = std::launch::async | std::launch::deferred;
  writing_ = std::async(ifThreadsCanBeHad, [name = OwnName(), copy = std::move(copy)] {
    OutputFile file(name);
    file.Write(std::string(CopyHeader) + "\t" + std::to_string(static_cast<int>(copy.Encoding)) + "\t" +
               std::to_string(copy.LoadedHash) + "\t" + copy.ScriptName + "\n");
    file.Write(copy.Text);
    return static_cast<bool>(file.Commit());
  });
}

bool Recovery::FinishWriting() {
  if (!writing_.valid()) return true;
  bool isWritten = false;
  try {
    isWritten = writing_.get();
  } catch (const std::exception&) {
  }
  exists_ = exists_ || isWritten;
  changed_ = changed_ || !isWritten;
  return isWritten;
}

bool Recovery::Write(Clock::time_point now, RecoveryCopy copy) {
  BeginWriting(now, std::move(copy));
  return FinishWriting();
}

void Recovery::Remove() {
  FinishWriting();
  changed_ = false;
  if (std::exchange(exists_, false)) RemoveFile(OwnName());
}

void Recovery::AddCopies(const std::string& folder, std::vector<NumberedCopy>& copies) {
  std::error_code error;
  for (fs::directory_iterator entry(PathOf(folder), error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = NameOf(entry->path().filename());
    if (!name.starts_with(CopyPrefix) || !name.ends_with(CopyExtension)) continue;
    const std::size_t digits = name.size() - CopyPrefix.size() - CopyExtension.size();
    const auto number = ReadNumber<std::uint32_t>(std::string_view(name).substr(CopyPrefix.size(), digits));
    if (number) copies.emplace_back(folder + name, *number);
  }
}

std::vector<Recovery::NumberedCopy> Recovery::Copies() const {
  std::vector<NumberedCopy> copies;
  for (const std::string& folder : folders_) AddCopies(folder, copies);
  std::partition(copies.begin(), copies.end(),
                 [this](const NumberedCopy& copy) { return copy.second == processId_; });
  return copies;
}

std::optional<RecoveryCopy> Recovery::Read(const std::string& name) {
  const Result<std::string> bytes = ReadWholeFile(name, MaxScriptBytes);
  if (!bytes) return std::nullopt;
  std::string_view rest = *bytes;
  std::string_view head = TakeUntil(rest, '\n');
  if (TakeUntil(head, '\t') != CopyHeader) return std::nullopt;
  const auto encoding = ReadNumber<int>(TakeUntil(head, '\t'));
  const auto hash = ReadNumber<std::uint64_t>(TakeUntil(head, '\t'));
  if (!encoding || *encoding < 0 || *encoding > static_cast<int>(TextEncoding::Windows1252) || !hash)
    return std::nullopt;
  return RecoveryCopy{name, std::string(head), static_cast<TextEncoding>(*encoding), *hash,
                      std::string(rest)};
}

void Recovery::Discard(const RecoveryCopy& copy) const {
  if (!exists_ || copy.FileName != OwnName()) RemoveFile(copy.FileName);
}

}  // namespace vaxel
