#include "commands/file_notation.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/files.h"
#include "base/printable.h"
#include "base/text.h"
#include "base/text_encoding.h"

namespace vaxel {

std::string FindFile(RunContext& run, std::string_view name, FileUse use) {
  const std::string& script = run.Level().FileName;
  run.Work.Ask();
  std::string found = run.Host.FindFile(script, name);
  const bool hasExtension = name.substr(name.find_last_of("/\\") + 1).find('.') != std::string_view::npos;
  if (found.empty() && use == FileUse::Script && !hasExtension) {
    found = run.Host.FindFile(script, std::string(name) + ".dat");
  }
  return found;
}

ScriptFault MissingFileFault(const RunContext& run, std::string_view name) {
  ScriptFault fault(FaultReason::FileMissing, Shorten(name, ShownLength));
  std::string portable(name);
  std::replace(portable.begin(), portable.end(), '\\', '/');
  const std::filesystem::path named = PathOf(portable);
  const std::string script = run.Host.FullFileName(run.Level().FileName);
  if (script.empty() || named.has_root_path()) return fault;
  // A script's name may be one of another system.
  const std::filesystem::path beside = PathOf(script.substr(0, script.find_last_of("/\\") + 1));
  std::string folder = NameOf((beside / named).lexically_normal().parent_path());
  constexpr std::size_t longestRoot = 3;
  if (folder.size() > longestRoot && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
  fault.Add(TextId::LookedIn, Shorten(Printable(folder), ShownLength));
  return fault;
}

std::string RequireFile(RunContext& run, std::string_view name, FileUse use) {
  std::string found = FindFile(run, name, use);
  if (found.empty()) throw MissingFileFault(run, name);
  return found;
}

std::string ReadTextFile(RunContext& run, const std::string& fileName, std::string_view name) {
  const std::string shown = Shorten(name, ShownLength);
  if (fileName.empty()) throw MissingFileFault(run, name);
  auto decoded = DecodeText(run.ReadFile(fileName, shown));
  if (!decoded) throw ScriptFault(FaultReason::NotAText, shown);
  return std::move(decoded->Text);
}

}  // namespace vaxel
