#include "app/print_desk.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/script_file.h"
#include "base/number_text.h"
#include "drawing/drawing_fault.h"
#include "interpreter/script_fault.h"
#include "interpreter/sheet_notices.h"

namespace vaxel {
namespace {

std::string PaperText(const PrinterSheet& sheet) {
  return FixedText(std::round(sheet.WidthMm), 0) + " × " + FixedText(std::round(sheet.HeightMm), 0);
}

}  // namespace

bool PrintDevice::IsLying(const Page& page) const {
  const auto distance = [&](double width, double height) {
    return std::abs(page.Width - width) + std::abs(page.Height - height);
  };
  return distance(Target.HeightMm, Target.WidthMm) < distance(Target.WidthMm, Target.HeightMm);
}

std::vector<std::size_t> PagesToPrint(std::size_t pages, const PrinterEntry& entry) {
  const std::size_t first = std::max<std::size_t>(entry.First, 1);
  const std::size_t last = entry.Last == 0 ? pages : std::min(entry.Last, pages);
  std::vector<std::size_t> order;
  if (entry.Collates) {
    for (std::size_t copy = 0; copy < entry.Copies; ++copy) {
      for (std::size_t page = first; page <= last; ++page) order.push_back(page - 1);
    }
  } else {
    for (std::size_t page = first; page <= last; ++page) order.insert(order.end(), entry.Copies, page - 1);
  }
  return order;
}

void PrintDesk::Use(const PrinterEntry& entry) {
  next_ = entry;
  runs_.UsePrinter(entry.Printer);
  memory_.Keep(entry.Printer);
}

void PrintDesk::TellNotPrinted(const Failure& why) {
  app_.Tell(BoxIcon::Critical, app_.Message(TextId::PrintFailed, runs_.PrinterName(), app_.Message(why)));
}

std::optional<PrintDevice> PrintDesk::Open() {
  PrintDevice device;
  device.Printer = runs_.Printer();
  const Result<RunTarget> target = runs_.PrinterTarget();
  const Result<PrinterSheet> upright = app_.Printers.Sheet(device.Printer, false);
  const Result<PrinterSheet> lying = app_.Printers.Sheet(device.Printer, true);
  if (!target || !upright || !lying) {
    TellNotPrinted(!target ? target.Why() : !upright ? upright.Why() : lying.Why());
    return std::nullopt;
  }
  device.Target = *target;
  device.Upright = *upright;
  device.Lying = *lying;
  if (const KeptCalibration* kept = memory_.Find(device.Printer.Name, PaperNameOf(*upright)))
    device.Calibrated = *kept;
  return device;
}

std::optional<DisplayList> PrintDesk::Compose(const PrintDevice& device, DisplayList&& drawing) {
  if (!device.Calibrated) return std::move(drawing);
  return Compose(device, drawing, {});
}

std::optional<DisplayList> PrintDesk::Compose(const PrintDevice& device, const DisplayList& drawing,
                                              const SheetOptions& options) {
  SheetOptions all = options;
  if (device.Calibrated) {
    all.Factors = device.Calibrated->Factors;
    all.UprightWidthMm = device.Target.WidthMm;
  }
  try {
    return ComposeSheets(drawing, all, app_.Platform.Measurer());
  } catch (const DrawingFault& fault) {
    TellNotPrinted({.Words = ScriptFault(fault).Description(app_.Strings, app_.LangBase)});
    return std::nullopt;
  }
}

bool PrintDesk::MayPrint(const DisplayList& sheets) {
  std::string beyond;
  for (const SheetNotice& notice : SheetNotices(sheets, app_.Strings, app_.LangBase)) {
    beyond += (beyond.empty() ? "" : "\n") + notice.Text;
  }
  if (!beyond.empty() && !app_.AskYesNo(app_.Message(TextId::BeyondPaper, beyond), SafeAnswer::No))
    return false;
  return !runs_.IsAbortRequested();
}

bool PrintDesk::Send(const PrintDevice& device, const DisplayList& sheets, const std::string& documentName) {
  if (!MayPrint(sheets)) return false;
  PrintOrder order{device.Printer, documentName, PagesToPrint(sheets.Pages().size(), next_)};
  if (order.Pages.empty()) {
    const std::string pages = std::to_string(sheets.Pages().size());
    app_.Tell(BoxIcon::Information, app_.Message(TextId::PageRangeEmpty, pages));
    return false;
  }
  next_ = {};
  const Result<> printed = app_.Printers.Print(order, sheets);
  // Whoever called it off knows.
  if (!printed && !app_.Message(printed.Why()).empty()) TellNotPrinted(printed.Why());
  return static_cast<bool>(printed);
}

std::string PrintDesk::DocumentName() const {
  const std::string script = DocumentNameOf(script_.CurrentFile);
  return script.empty() ? "Vaxel" : script;
}

std::string PrintDesk::PrinterText(const PrintDevice& device) const {
  const PrinterSheet& sheet = device.Target.IsTurned ? device.Lying : device.Upright;
  return app_.Message(TextId::PreviewPrinter, device.Printer.Name, PaperText(sheet));
}

std::string PrintDesk::CalibrationText(const PrintDevice& device) const {
  if (!device.Calibrated) return app_.Message(TextId::NotCalibrated);
  return app_.Message(TextId::CalibrationInForce, FactorsText(device.Calibrated->Factors),
                      device.Calibrated->Date);
}

void PrintDesk::ShowPrinted(const PrintDevice& device) {
  std::string text = app_.Message(TextId::PrintedOn, device.Printer.Name);
  if (device.Calibrated) text += ", " + CalibrationText(device);
  app_.Window.SetStatus(StatusField::Message, text);
}

}  // namespace vaxel
