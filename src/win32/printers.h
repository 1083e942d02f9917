// The printers of Windows.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/platform.h"

namespace vaxel {

class PrintersWin32 : public Printers {
 public:
  // decoder must outlive the object. nudgesRightAngles (see CLogFont) is asked for each document.
  PrintersWin32(PictureDecoder& decoder, std::function<bool()> nudgesRightAngles);

  std::string CurrentPrinter() override;
  bool HasPrinter(const std::string& name) override;
  Result<RunTarget> Target(const PrinterChoice& printer) override;
  Result<> Print(const PrintOrder& order, const DisplayList& drawing) override;
  Result<PrinterSheet> Sheet(const PrinterChoice& printer, bool isLandscape) override;
  std::vector<std::string> Fonts(const PrinterChoice& printer) override;
  std::string PdfPrinter() override;
  Result<> PrintToFile(const FilePrint& print, const DisplayList& drawing) override;

 private:
  PictureDecoder& decoder_;
  std::function<bool()> nudgesRightAngles_;
};

}  // namespace vaxel
