// Printing on the printers of Windows, at true size.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/result.h"
#include "drawing/display_list.h"
#include "render/printer_choice.h"

namespace vaxel {

// Both are empty when there is none. The second is the one that writes PDF files.
std::string DefaultPrinter();
std::string PdfPrinter();

// Whether there is a printer of this name; the printer itself is not asked.
bool HasPrinter(const std::string& name);

// A printer as its user has set it up, but for the orientation.
struct PrinterFacts {
  double WidthMm = 0, HeightMm = 0;            // the area that it can print on
  double LeftMm = 0, TopMm = 0;                // of that area, from the paper's upper-left corner
  double PaperWidthMm = 0, PaperHeightMm = 0;  // of the sheet
  double PixelMm = 0;
  bool HasColour = true;
};

// It fails when there is no such printer.
Result<PrinterFacts> FactsOf(const PrinterChoice& printer, bool isLandscape = false);

// Its driver's settings with what was chosen, as the dialogs of Windows take them; empty when there is no
// such printer.
std::string SettingsOf(const PrinterChoice& printer);

// The names of its fonts, sorted, without those for vertical writing. There are none without the printer.
std::vector<std::string> FontsOf(const PrinterChoice& printer);

struct PrintJob {
  PrinterChoice Printer;
  std::string DocumentName;
  PictureDecoder* Decoder = nullptr;
  bool NudgesRightAngles = false;  // see CLogFont
  // The file that the printer is to write; else it is the printer's business where its pages go.
  std::string FileName{};
  std::vector<std::size_t> Pages{};  // those to be printed, from 0, in their order; empty: all, once each
};

// Prints pages as one document. The upper-left corner of a page is that of the area that the printer can
// print on; a page that has that area's sides the other way round comes in landscape. In a file that was
// named, each page lies in the middle of a sheet, upright if it can, of the paper that suits them (see
// ChoosePaper). It fails when the
// document was not printed; then nothing of it is, where the printer can still be stopped. That the user has
// called it off, where the printer asks for the name of a file, is a failure without a reason.
Result<> Print(const DisplayList& list, const PrintJob& job);

}  // namespace vaxel
