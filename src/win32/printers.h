// The printers of Windows.
#pragma once

#include <functional>
#include <string>

#include "app/platform.h"

namespace vaxel {

class PrintersWin32 : public Printers {
 public:
  // decoder must outlive the object. nudgesRightAngles (see CLogFont) is asked for each document.
  PrintersWin32(PictureDecoder& decoder, std::function<bool()> nudgesRightAngles);

  std::string CurrentPrinter() override;
  Result<RunTarget> Target(const std::string& printer) override;
  Result<PrinterSheet> Sheet(const std::string& printer, bool isLandscape) override;
  Result<> Print(const std::string& printer, const std::string& documentName,
                 const DisplayList& drawing) override;

 private:
  PictureDecoder& decoder_;
  std::function<bool()> nudgesRightAngles_;
};

}  // namespace vaxel
