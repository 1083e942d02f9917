#include "win32/printers.h"

#include <utility>

#include "render/gdi/printer.h"

namespace vaxel {

PrintersWin32::PrintersWin32(PictureDecoder& decoder, std::function<bool()> nudgesRightAngles)
    : decoder_(decoder), nudgesRightAngles_(std::move(nudgesRightAngles)) {}

std::string PrintersWin32::CurrentPrinter() {
  return DefaultPrinter();
}

bool PrintersWin32::HasPrinter(const std::string& name) {
  return vaxel::HasPrinter(name);
}

Result<RunTarget> PrintersWin32::Target(const PrinterChoice& printer) {
  const Result<PrinterFacts> facts = FactsOf(printer);
  if (!facts) return facts.Why();
  RunTarget target;
  target.WidthMm = facts->WidthMm;
  target.HeightMm = facts->HeightMm;
  target.PixelMm = facts->PixelMm;
  target.IsTurned = printer.IsLandscape;
  return target;
}

Result<> PrintersWin32::Print(const PrintOrder& order, const DisplayList& drawing) {
  return vaxel::Print(drawing, {.Printer = order.Printer,
                                .DocumentName = order.DocumentName,
                                .Decoder = &decoder_,
                                .NudgesRightAngles = nudgesRightAngles_(),
                                .Pages = order.Pages});
}

std::vector<std::string> PrintersWin32::Fonts(const PrinterChoice& printer) {
  return FontsOf(printer);
}

Result<PrinterSheet> PrintersWin32::Sheet(const PrinterChoice& printer, bool isLandscape) {
  const Result<PrinterFacts> facts = FactsOf(printer, isLandscape);
  if (!facts) return facts.Why();
  return PrinterSheet{facts->PaperWidthMm, facts->PaperHeightMm, facts->LeftMm, facts->TopMm,
                      facts->HasColour};
}

std::string PrintersWin32::PdfPrinter() {
  return vaxel::PdfPrinter();
}

Result<> PrintersWin32::PrintToFile(const FilePrint& print, const DisplayList& drawing) {
  return vaxel::Print(
      drawing,
      {{.Name = print.Printer}, print.DocumentName, &decoder_, nudgesRightAngles_(), print.FileName});
}

}  // namespace vaxel
