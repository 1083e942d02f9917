// Fonts through the calls of Windows; the font measured is the one that the tests install.
#include "render/gdi_text.h"

#include <gtest/gtest.h>

#include "drawing/standard_faces.h"

namespace vaxel {
namespace {

constexpr const char* Name = "Liberation Sans";

TEST(GdiText, MeasuresAsTheTablesSay) {
  const auto measurer = MakeGdiMeasurer();
  for (const bool bold : {false, true}) {
    const FontFace face{Name, bold, !bold};
    const FaceTable& table = *StandardFace({"Arial", bold, !bold});
    EXPECT_NEAR(measurer->Width(face, "Ωµ°√100"), *table.Width("Ωµ°√100"), 0.003);
    EXPECT_NEAR(measurer->Metrics(face).Ascent, table.Metrics().Ascent, 0.003);
    EXPECT_NEAR(measurer->Metrics(face).Descent, table.Metrics().Descent, 0.003);
    EXPECT_NEAR(measurer->Metrics(face).UnderlineThickness, table.Metrics().UnderlineThickness, 0.003);
  }
}

TEST(GdiText, SaysWhatReplacesAFont) {
  const auto measurer = MakeGdiMeasurer();
  EXPECT_EQ(measurer->Replacement({Name, false, false}), "");
  EXPECT_NE(measurer->Replacement({"Nosuchfont", false, false}), "");
}

TEST(GdiText, MakesTurnedFonts) {
  GdiDeviceFonts fonts;
  CLogFont font(fonts);
  font.LogFont(FontDescription{.Name = Name});
  font.Rotation(30);
  EXPECT_NE(font.Handle(), nullptr);
  EXPECT_GE(fonts.PixelsPerInch(), 72);
}

}  // namespace
}  // namespace vaxel
