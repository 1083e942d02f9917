// Printing on the printers of Windows, at true size.
#pragma once

#include <string>

#include "base/result.h"
#include "drawing/display_list.h"

namespace vaxel {

// Empty when there is none.
std::string DefaultPrinter();

// A printer as its user has set it up, but for the orientation.
struct PrinterFacts {
  double WidthMm = 0, HeightMm = 0;            // the area that it can print on
  double LeftMm = 0, TopMm = 0;                // of that area, from the paper's upper-left corner
  double PaperWidthMm = 0, PaperHeightMm = 0;  // of the sheet
  double PixelMm = 0;
};

// It fails when there is no such printer.
Result<PrinterFacts> FactsOf(const std::string& printer, bool isLandscape = false);

struct PrintJob {
  std::string Printer;
  std::string DocumentName;
  PictureDecoder* Decoder = nullptr;
  bool NudgesRightAngles = false;  // see CLogFont
};

// Prints all pages as one document. The upper-left corner of a page is that of the area that the printer can
// print on; a page that has that area's sides the other way round comes in landscape. It fails when the
// document was not printed; then nothing of it is, where the printer can still be stopped. That the user has
// called it off, where the printer asks for the name of a file, is no failure.
Result<> Print(const DisplayList& list, const PrintJob& job);

}  // namespace vaxel
