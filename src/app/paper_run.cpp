#include "app/paper_run.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <utility>

#include "app/silent_bridge.h"
#include "commands/command_table.h"
#include "interpreter/run.h"

namespace vaxel {
namespace {

// What takes longer would be felt behind every run.
constexpr auto Patience = std::chrono::milliseconds(300);

Page MiddleOf(const RunTarget& printer) {
  const Point upright = {printer.WidthMm, printer.HeightMm};
  const Point size = printer.IsTurned ? Point{upright.Y, upright.X} : upright;
  return {size.X, size.Y, 0, 0, size * 0.5};
}

}  // namespace

std::vector<Page> PaperRun::PrintedPages(RunTarget target) {
  target.Kind = TargetKind::Printer;
  target.Measurer = app_.Platform.Measurer();
  target.Decoder = app_.Platform.Decoder();
  SilentBridge bridge(app_, script_, session_, answers_, {Patience, false, {}});
  bridge.KeepsProblems(false);
  DisplayList list;
  RunContext run(bridge, AllCommands(), app_.Strings, list);
  run.LangBase = app_.LangBase;
  if (RunScript(run, target, app_.Editor.Text(), script_.CurrentFile) != RunEnd::Completed) return {};
  return list.Pages();
}

std::vector<PaperOutline> PaperRun::Sheets(const DisplayList& shown, double scale, bool mayRun) {
  const Result<RunTarget> target = app_.Printers.Target(printer_);
  if (!target) return {};
  std::vector<Page> printed;
  if (mayRun) printed = PrintedPages(*target);
  if (printed.empty()) printed.push_back(MiddleOf(*target));
  std::array<std::optional<PrinterSheet>, 2> sheets;  // in portrait, in landscape
  std::vector<PaperOutline> outlines;
  for (const Page& page : shown.Pages()) {
    const Page& onPaper = printed[std::min(outlines.size(), printed.size() - 1)];
    const bool isLandscape = onPaper.Width != target->WidthMm;
    std::optional<PrinterSheet>& sheet = sheets[isLandscape ? 1 : 0];
    if (!sheet) {
      Result<PrinterSheet> found = app_.Printers.Sheet(printer_, isLandscape);
      if (!found) return {};
      sheet = *found;
    }
    outlines.push_back(OutlineOf(page, scale, onPaper, *sheet));
  }
  return outlines;
}

}  // namespace vaxel
