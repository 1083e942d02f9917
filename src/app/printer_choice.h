// Which printer is used, and how.
#pragma once

#include <cstddef>
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

// What a user says to the system's printer dialog.
struct PrinterEntry {
  PrinterChoice Printer;
  std::size_t Copies = 1;
  bool Collates = false;            // a whole document after the other
  std::size_t First = 0, Last = 0;  // the pages that are wanted, from 1; 0: all
};

}  // namespace vaxel
