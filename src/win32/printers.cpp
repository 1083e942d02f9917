#include "win32/printers.h"

#include <utility>

#include "render/gdi/printer.h"

namespace vaxel {

PrintersWin32::PrintersWin32(PictureDecoder& decoder, std::function<bool()> nudgesRightAngles)
    : decoder_(decoder), nudgesRightAngles_(std::move(nudgesRightAngles)) {}

std::string PrintersWin32::CurrentPrinter() {
  return DefaultPrinter();
}

Result<RunTarget> PrintersWin32::Target(const std::string& printer) {
  const Result<PrinterFacts> facts = FactsOf(printer);
  if (!facts) return facts.Why();
  RunTarget target;
  target.WidthMm = facts->WidthMm;
  target.HeightMm = facts->HeightMm;
  target.PixelMm = facts->PixelMm;
  return target;
}

Result<PrinterSheet> PrintersWin32::Sheet(const std::string& printer, bool isLandscape) {
  const Result<PrinterFacts> facts = FactsOf(printer, isLandscape);
  if (!facts) return facts.Why();
  return PrinterSheet{facts->PaperWidthMm, facts->PaperHeightMm, facts->LeftMm, facts->TopMm};
}

Result<> PrintersWin32::Print(const std::string& printer, const std::string& documentName,
                              const DisplayList& drawing) {
  return vaxel::Print(drawing, {printer, documentName, &decoder_, nudgesRightAngles_()});
}

}  // namespace vaxel
