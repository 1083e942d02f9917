// Which printer is used, and how.
#pragma once

#include <string>

namespace vaxel {

struct PrinterChoice {
  std::string Name{};
  // The number by which the system knows the paper, and of one that has none the size as it stands upright.
  // With 0 it is the one that the printer is set to.
  int Paper = 0;
  double PaperWidthMm = 0, PaperHeightMm = 0;
  bool IsLandscape = false;  // until a script says otherwise
  // What else its user has set, for as long as the program runs: the bytes are the driver's business.
  std::string DriverSettings{};
};

}  // namespace vaxel
