// What the settings keep of printers: the one that was chosen last, and how they were calibrated.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/platform.h"
#include "app/settings.h"
#include "drawing/sheet_layout.h"
#include "render/printer_choice.h"

namespace vaxel {

// The factors of a printer with one paper, across the paper and along it as it stands upright.
struct KeptCalibration {
  std::string Printer;
  std::string Paper;  // "210x297": its size upright, in whole millimetres
  Calibration Factors;
  std::string Date;  // on which it was measured, "2026-11-22"
};

class PrinterMemory {
 public:
  // It must outlive it.
  explicit PrinterMemory(Settings& settings) : settings_(settings) {}

  // To be called when the settings have been read. Lines that make no sense are passed over.
  void Read();
  // The printer that was used last; there is none at first.
  const std::optional<PrinterChoice>& LastPrinter() const { return lastPrinter_; }
  void Keep(const PrinterChoice& printer);
  // Null where the printer was not calibrated with the paper, or without any factor.
  const KeptCalibration* Find(const std::string& printer, const std::string& paper) const;
  void Keep(const KeptCalibration& calibration);

 private:
  Settings& settings_;
  std::optional<PrinterChoice> lastPrinter_;
  std::vector<KeptCalibration> calibrations_;  // at the place of their number
};

// The paper of a sheet as calibrations name it, whichever way it lies.
std::string PaperNameOf(const PrinterSheet& sheet);

// "x 1.0032, y 0.9987".
std::string FactorsText(const Calibration& factors);

}  // namespace vaxel
