#include "commands/file_notation.h"

#include <utility>

#include "base/text.h"
#include "base/text_encoding.h"
#include "interpreter/script_fault.h"

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

std::string RequireFile(RunContext& run, std::string_view name, FileUse use) {
  std::string found = FindFile(run, name, use);
  if (found.empty()) throw ScriptFault(FaultReason::FileMissing, Shorten(name, ShownLength));
  return found;
}

std::string ReadTextFile(RunContext& run, const std::string& fileName, std::string_view name) {
  const std::string shown = Shorten(name, ShownLength);
  if (fileName.empty()) throw ScriptFault(FaultReason::FileMissing, shown);
  auto decoded = DecodeText(run.ReadFile(fileName, shown));
  if (!decoded) throw ScriptFault(FaultReason::NotAText, shown);
  return std::move(decoded->Text);
}

}  // namespace vaxel
