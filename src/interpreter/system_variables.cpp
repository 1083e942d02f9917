#include "interpreter/system_variables.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/number_text.h"
#include "base/text.h"
#include "interpreter/run_context.h"

namespace vaxel {
namespace {

std::string FullName(const RunContext& run) {
  return run.Host.FullFileName(run.Level().FileName);
}

// How much of a file's name is its folder, the last separator included.
std::size_t FolderLength(std::string_view fileName) {
  return fileName.find_last_of("/\\") + 1;
}

struct SystemRow {
  std::string_view Name;
  std::string (*Value)(const RunContext& run);
};

constexpr std::array<SystemRow, 15> Rows = {{
    {"%IREC", [](const RunContext& run) { return std::to_string(run.CurrentLevel); }},
    {"%FILE", FullName},
    {"%FIL1",
     [](const RunContext& run) {
       const std::string name = FullName(run);
       return name.substr(FolderLength(name));
     }},
    {"%PATH",
     [](const RunContext& run) {
       const std::string name = FullName(run);
       return name.substr(0, FolderLength(name));
     }},
    {"%DATE", [](const RunContext& run) { return run.Host.Today(); }},
    {"%ZOOM", [](const RunContext& run) { return NumberText(run.Surface.Target().Zoom); }},
    // Paper is measured in true millimetres.
    {"%FCMM",
     [](const RunContext& run) {
       return NumberText(run.Surface.IsPrinter() ? 1 : run.Surface.Target().Zmm);
     }},
    {"%IMP", [](const RunContext& run) { return std::string(run.Surface.IsPrinter() ? "1" : "0"); }},
    {"%EOF", [](const RunContext& run) { return std::string(run.Level().Data.AtEnd() ? "1" : "0"); }},
    {"%TAP", [](const RunContext& run) { return NumberText(run.Surface.FontSizes.Standard); }},
    {"%EPT", [](const RunContext& run) { return NumberText(run.Level().CurrentPen.Width); }},
    {"%CEX", [](const RunContext& run) { return CoordinateText(run.ScreenCentre.X); }},
    {"%CEY", [](const RunContext& run) { return CoordinateText(run.ScreenCentre.Y); }},
    {"%CTX", [](const RunContext& run) { return CoordinateText(run.Surface.CTX); }},
    {"%CTY", [](const RunContext& run) { return CoordinateText(run.Surface.CTY); }},
}};

const SystemRow* FindRow(std::string_view name) {
  // Every reference is looked for here first.
  constexpr std::size_t shortest = 4, longest = 5;
  if (name.size() < shortest || name.size() > longest) return nullptr;
  const auto* row = std::find_if(Rows.begin(), Rows.end(),
                                 [&](const SystemRow& known) { return EqualIgnoringCase(known.Name, name); });
  return row == Rows.end() ? nullptr : row;
}

}  // namespace

bool IsSystemVariable(std::string_view name) {
  return FindRow(name) != nullptr;
}

std::span<const std::string_view> SystemVariableNames() {
  static const auto names = [] {
    std::array<std::string_view, Rows.size()> all;
    std::transform(Rows.begin(), Rows.end(), all.begin(), [](const SystemRow& row) { return row.Name; });
    return all;
  }();
  return names;
}

std::optional<std::string> RunVariables::Find(std::string_view name) const {
  const SystemRow* row = FindRow(name);
  return row ? std::optional(row->Value(run_)) : std::nullopt;
}

}  // namespace vaxel
