// The commands that print: the script's drawing, its text, the sheet by which a printer is calibrated.
#pragma once

#include <optional>
#include <string>

#include "app/app_context.h"
#include "app/edited_script.h"
#include "app/print_desk.h"
#include "app/run_cycle.h"
#include "app/settings.h"

namespace vaxel {

class PrintCommands {
 public:
  // All must outlive it.
  PrintCommands(AppContext& app, Settings& settings, RunCycle& runs, const EditedScript& script)
      : app_(app), settings_(settings), runs_(runs), script_(script), desk_(app, settings, runs, script) {}

  // To be called when the settings have been read: takes the printer that they name, if it is there.
  void Begin();

  void ChoosePrinter();  // Mnu_Imprimante
  void Print();          // Mnu_Imprimer
  void PrintWithZoom();  // Mnu_ImprimerZoom
  void PrintCode();      // Mnu_ImprimerCode
  void ListFonts();      // Mnu_Polices
  void Preview();        // Mnu_Apercu
  void Calibrate();      // Mnu_Calibrage

 private:
  void PrintAt(double zoom);
  void SendCode(const PrintDevice& device);
  bool PrintCalibrationSheet(const PrintDevice& device, const CalibrationSheet& sheet);
  CalibrationSheet MakeSheet(const PrintDevice& device) const;
  // The factor that is to be in force; there is none when the user has given up.
  std::optional<double> AskFactor(TextId prompt, double nominalMm, double inForce);

  AppContext& app_;
  Settings& settings_;
  RunCycle& runs_;
  const EditedScript& script_;
  PrintDesk desk_;
  double printerZoom_ = 1;       // proposed for the next printout
  PreviewEntry previewEntry_{};  // as the last preview left it
};

// What is entered as a zoom of a printout: 0 becomes 1, and what is no usable number gives none.
std::optional<double> PrinterZoomOf(std::string_view text);

}  // namespace vaxel
