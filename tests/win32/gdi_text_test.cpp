// Fonts through the calls of Windows; the font measured is the one that the tests install.
#include "render/gdi/text.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

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

TEST(GdiText, TellsACharacterThatNoFontHas) {
  const auto measurer = MakeGdiMeasurer();
  const FontFace face{Name, false, false};
  EXPECT_EQ(measurer->Lacking(face, "Ωµ°√100"), "");
  // No character has this number.
  EXPECT_EQ(measurer->Lacking(face, "5 \u0378 \u0379"), "\u0378");
  // Another font than the one that lacks it has this one.
  EXPECT_EQ(measurer->Lacking({"Symbol", false, false}, "\u0448"), "");
}

TEST(GdiText, MakesTheFontThatIsAskedFor) {
  GdiDeviceFonts fonts;
  CLogFont font(fonts);
  font.LogFont(FontDescription{.Name = "Ωριμη γραμματοσειρα με μακρυ ονομα", .Weight = 700, .Italic = true});
  font.Rotation(30);
  LOGFONTW made{};
  ASSERT_NE(GetObjectW(font.Handle(), sizeof made, &made), 0);
  EXPECT_EQ(made.lfEscapement, 300);
  EXPECT_EQ(made.lfWeight, 700);
  EXPECT_EQ(made.lfItalic, 1);
  // One place of the 32 is the terminator's.
  EXPECT_EQ(std::wstring(made.lfFaceName), L"Ωριμη γραμματοσειρα με μακρυ ον");
}

}  // namespace
}  // namespace vaxel
