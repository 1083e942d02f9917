// What all printing commands share: the printer as it is, its calibration, and the way of sheets onto paper.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/printer_memory.h"
#include "app/run_cycle.h"
#include "drawing/sheet_layout.h"

namespace vaxel {

// The printer as it is when something is to be printed.
struct PrintDevice {
  PrinterChoice Printer;
  RunTarget Target;
  PrinterSheet Upright, Lying;
  std::optional<KeptCalibration> Calibrated;

  bool IsLying(const Page& page) const;
  const PrinterSheet& SheetOf(const Page& page) const { return IsLying(page) ? Lying : Upright; }
};

class PrintDesk {
 public:
  // All must outlive it.
  PrintDesk(AppContext& app, Settings& settings, RunCycle& runs, const EditedScript& script)
      : app_(app), runs_(runs), script_(script), memory_(settings) {}

  PrinterMemory& Memory() { return memory_; }
  // Takes the printer from now on, and for the next session. Copies and range hold for the next document.
  void Use(const PrinterEntry& entry);
  // The printer; where there is none of it the user was told.
  std::optional<PrintDevice> Open();
  // The sheets of a drawing, calibrated as the device is. There are none where they would be too much for a
  // drawing, as the user was told.
  std::optional<DisplayList> Compose(const PrintDevice& device, const DisplayList& drawing,
                                     const SheetOptions& options);
  // The same without options, for a drawing that is not needed any more.
  std::optional<DisplayList> Compose(const PrintDevice& device, DisplayList&& drawing);
  // Prints sheets as one document, unless the user does not want what lies beyond the paper or has ended all
  // with Escape. The result says whether it was printed.
  bool Send(const PrintDevice& device, const DisplayList& sheets, const std::string& documentName);
  // The name of the script's documents.
  std::string DocumentName() const;

  // What is said of the printer: its name and its paper; its calibration; both, when something was printed.
  std::string PrinterText(const PrintDevice& device) const;
  std::string CalibrationText(const PrintDevice& device) const;
  void ShowPrinted(const PrintDevice& device);
  void TellNotPrinted(const Failure& why);

 private:
  bool MayPrint(const DisplayList& sheets);

  AppContext& app_;
  RunCycle& runs_;
  const EditedScript& script_;
  PrinterMemory memory_;
  PrinterEntry next_;  // of which copies and range are for the next document
};

// The numbers of the pages, from 0, in the order in which they are printed.
std::vector<std::size_t> PagesToPrint(std::size_t pages, const PrinterEntry& entry);

}  // namespace vaxel
