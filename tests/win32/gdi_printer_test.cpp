// In a prefix without printers, as scripts/wine-run makes it.
#include "render/gdi_printer.h"

#include <gtest/gtest.h>

namespace vaxel {
namespace {

TEST(GdiPrinter, ManagesWithoutPrinters) {
  EXPECT_EQ(DefaultPrinter(), "");
  std::string error;
  EXPECT_FALSE(FactsOf("", error));
  EXPECT_NE(error, "");
  DisplayList list;
  list.BeginPage(100, 100);
  EXPECT_NE(Print(list, {.Printer = "", .DocumentName = "Dial"}), "");
}

}  // namespace
}  // namespace vaxel
