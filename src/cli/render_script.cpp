#include "cli/render_script.h"

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/number_text.h"
#include "base/result.h"
#include "base/text_encoding.h"
#include "base/units.h"
#include "cli/machine.h"
#include "cli/outputs.h"
#include "cli/user_texts.h"
#include "commands/command_table.h"
#include "drawing/display_list.h"
#include "drawing/drawing_fault.h"
#include "drawing/sheet_layout.h"
#include "interpreter/run.h"
#include "interpreter/script_fault.h"
#include "interpreter/sheet_notices.h"
#include "resources/string_table.h"

namespace vaxel {
namespace {

constexpr double ScreenDpi = 96;
constexpr double PrinterDpi = 600;
// A name without extension may be that of a ".dat" file.
std::string FindScript(const std::string& name) {
  std::error_code ignored;
  const std::filesystem::path path = PathOf(name);
  const bool asIs = name == "-" || path.has_extension() || std::filesystem::exists(path, ignored);
  return !asIs && std::filesystem::exists(PathOf(name + ".dat"), ignored) ? name + ".dat" : name;
}

std::optional<std::string> ReadScript(const std::string& name, const UserTexts& texts) {
  constexpr std::size_t maxBytes = 100'000'000;
  Result<std::string> bytes = name == "-" ? ReadToEnd(stdin, maxBytes) : ReadWholeFile(name, maxBytes);
  const std::string shown = DisplayName(name, texts.Get(TextId::CliStandardInput));
  if (!bytes) {
    const bool isTooLarge = bytes.Why().Fault == FileFault::IsTooLarge;
    const std::string reason =
        isTooLarge ? std::string(texts.Get(TextId::CliScriptTooLarge)) : texts.Get(bytes.Why());
    Complain(texts.Fill(TextId::CliCannotRead, shown, reason));
    return std::nullopt;
  }
  auto decoded = DecodeText(*std::move(bytes));
  if (!decoded) {
    Complain(texts.Fill(TextId::CliNotAText, shown));
    return std::nullopt;
  }
  return std::move(decoded->Text);
}

RunTarget TargetFor(TargetKind kind, const RenderOptions& options) {
  const bool printer = kind == TargetKind::Printer;
  const SizeMm& size = printer ? options.Page : options.Area;
  RunTarget target;
  target.Kind = kind;
  target.WidthMm = size.Width;
  target.HeightMm = size.Height;
  target.PixelMm = MillimetresPerInch / (printer ? PrinterDpi : options.Dpi.value_or(ScreenDpi));
  target.IsPixelDevice = false;
  target.Zoom = options.Zoom;
  target.Zmm = options.Zmm;
  return target;
}

// Notices that a run has given already are not said again.
void TellOfSheets(const DisplayList& drawing, const DisplayList& sheets, const SheetOptions& options,
                  Machine& machine) {
  const UserTexts& texts = machine.Texts;
  for (std::size_t page = 0; page < drawing.Pages().size() && options.Copies != 1; ++page) {
    if (drawing.Pages()[page].Count > 0 && CopiesOnSheet(drawing, page, options) == 1)
      machine.Host.ShowNotice("", 0, texts.Get(TextId::OneCopyFits));
  }
  for (const Page& page : sheets.Pages()) {
    const double length = options.Ruler ? RulerLength(page.Width, page.Height, options) : FullRulerMm;
    if (length < FullRulerMm)
      machine.Host.ShowNotice("", 0, texts.Fill(TextId::RulerIsShort, NumberText(length)));
  }
  if (!SheetNotices(drawing, texts.Strings(), texts.Base()).empty()) return;
  for (const SheetNotice& notice : SheetNotices(sheets, texts.Strings(), texts.Base())) {
    machine.Host.ShowNotice("", notice.LineNumber, notice.Text);
  }
}

// Makes of a drawing what goes on paper; false when that has more operations than a drawing may have, which
// the user is told.
bool ComposeForPaper(TargetKind kind, const RenderOptions& options, DisplayList& list, Machine& machine) {
  SheetOptions sheets = options.Sheets;
  if (sheets.AddsNothing()) return true;
  if (kind == TargetKind::Printer) sheets.UprightWidthMm = options.Page.Width;
  sheets.Label = Title(options) + "   " + machine.Host.Today();
  try {
    const SheetWatch goOn = [&machine] { return machine.Host.Watch.Signal() == RunSignal::GoOn; };
    DisplayList composed = ComposeSheets(list, sheets, &machine.Measurer, goOn);
    if (!goOn()) return true;  // whoever goes on sees it, too: no sheet is written that lacks something
    TellOfSheets(list, composed, sheets, machine);
    list = std::move(composed);
  } catch (const DrawingFault& fault) {
    Complain(ScriptFault(fault).Description(machine.Texts.Strings(), machine.Texts.Base()));
    return false;
  }
  return true;
}

// Everything of the script that its runs share.
struct Script {
  std::string FileName;  // "-": standard input
  std::string Text;
};

// Runs the script for one kind of target; the list gets at least one page.
ExitStatus RunFor(TargetKind kind, const RenderOptions& options, const Script& script, Machine& machine,
                  DisplayList& list) {
  RunContext run(machine.Host, AllCommands(), machine.Texts.Strings(), list);
  run.LangBase = machine.Texts.Base();
  machine.Host.BeginRun();
  for (const auto& [name, value] : options.Variables) run.Level().Variables.Set(name, value);
  RunTarget target = TargetFor(kind, options);
  target.Measurer = &machine.Measurer;
  target.Decoder = &machine.Decoder;
  switch (RunScript(run, target, script.Text, script.FileName == "-" ? "" : script.FileName)) {
    case RunEnd::Failed:
      return ExitStatus::ScriptFailed;
    case RunEnd::Aborted:
      return ExitStatus::Interrupted;
    case RunEnd::Empty:
      std::fprintf(stderr, "%s\n",
                   machine.Texts.Fill(TextId::CliEmptyScript, machine.Host.ScriptName()).c_str());
      list.BeginPage(target.WidthMm, target.HeightMm);
      break;
    case RunEnd::Completed:
      for (const SheetNotice& notice : SheetNotices(list, run.Strings, run.LangBase)) {
        machine.Host.ShowNotice("", notice.LineNumber, notice.Text);
      }
      break;
  }
  return ExitStatus::Drawn;
}

void TellFailure(const Result<>& outcome, TextId what, const UserTexts& texts) {
  if (!outcome) Complain(texts.Fill(what, texts.Get(outcome.Why())));
}

// Runs the script for every kind of target that the outputs need.
ExitStatus RunForAll(const RenderOptions& options, const Script& script, Machine& machine, Drawings& lists) {
  for (const OutputRequest& output : options.Outputs) {
    std::size_t room = DisplayList::MaxBytes;
    for (const auto& [target, list] : lists) room -= list.Bytes();
    const auto [place, isNew] = lists.try_emplace(output.Target, room);
    if (!isNew) continue;
    const ExitStatus status = RunFor(output.Target, options, script, machine, place->second);
    TellFailure(machine.Decoder.Outcome(), TextId::CliNoPictures, machine.Texts);
    if (status != ExitStatus::Drawn) return status;
    if (!ComposeForPaper(output.Target, options, place->second, machine)) return ExitStatus::ScriptFailed;
  }
  TellFailure(machine.Measurer.Outcome(), TextId::CliRoughTexts, machine.Texts);
  return machine.Host.HasRefused() ? ExitStatus::ScriptFailed : ExitStatus::Drawn;
}

}  // namespace

ExitStatus RenderScript(const RenderOptions& options, const UserTexts& texts) {
  Script script{FindScript(options.Script), {}};
  Inputs inputs{script.FileName, {}};
  if (RefusesPlan(PlanFiles(options, {}), inputs, texts)) return ExitStatus::WrongUsage;
  std::optional<std::string> text = ReadScript(script.FileName, texts);
  if (!text) return ExitStatus::FileFailed;
  script.Text = std::move(*text);
  Machine machine{texts, ConsoleHost(DisplayName(script.FileName, "<stdin>"), options, texts)};
  // Every run comes before the first output: a script that fails on paper alone writes nothing, and what the
  // script reads is known.
  Drawings lists;
  const ExitStatus run = RunForAll(options, script, machine, lists);
  if (run != ExitStatus::Drawn) return run;
  inputs.Others = machine.Host.FilesRead();
  const std::vector<PlannedFile> plan = PlanFiles(options, lists);
  if (RefusesPlan(plan, inputs, texts)) return ExitStatus::WrongUsage;
  return WriteFiles(options, plan, lists, machine);
}

}  // namespace vaxel
