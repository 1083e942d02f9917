#include "render/gdi/log_font.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vaxel {
namespace {

// Handles are numbered from 1; the log tells what became of each.
class RecordingFonts : public DeviceFonts {
 public:
  int PixelsPerInch() override { return 96; }
  Handle Create(const DeviceFontRequest& request) override {
    Requests.push_back(request);
    Log += "+" + std::to_string(Requests.size());
    return reinterpret_cast<Handle>(Requests.size());
  }
  void Delete(Handle font) override { Log += "-" + std::to_string(reinterpret_cast<std::size_t>(font)); }

  std::vector<DeviceFontRequest> Requests;
  std::string Log;
};

TEST(CLogFont, TheOldFontIsDeletedBeforeANewOneIsMade) {
  RecordingFonts fonts;
  {
    CLogFont font(fonts);
    font.Rotation(30);
    EXPECT_EQ(fonts.Log, "");
    font.LogFont(FontDescription{});
    font.Rotation(30);
    EXPECT_EQ(fonts.Log, "+1");
    font.Rotation(60);
    EXPECT_EQ(fonts.Log, "+1-1+2");
    font.LogFont(FontDescription{.Name = "Arial"});
    EXPECT_EQ(fonts.Log, "+1-1+2-2+3");
    font.LogFont(std::nullopt);
    EXPECT_EQ(font.Handle(), nullptr);
    EXPECT_FALSE(font.LogFont().has_value());
    font.Rotation(90);
    EXPECT_EQ(fonts.Log, "+1-1+2-2+3-3");
    font.LogFont(FontDescription{});
  }
  EXPECT_EQ(fonts.Log, "+1-1+2-2+3-3+4-4");
}

TEST(CLogFont, AsksTheDeviceForTheTurnedFont) {
  RecordingFonts fonts;
  CLogFont font(fonts);
  const std::string longName = "Ééééééééééééééééééééééééééééééééé";  // 33 characters
  font.LogFont(FontDescription{longName, 10, true, 700, true, true, true, 255});
  font.Rotation(45.26F);
  const DeviceFontRequest& level = fonts.Requests[0];
  EXPECT_EQ(level.Height, -13);  // 10 · 96 / 72 = 13.3
  EXPECT_EQ(level.OutPrecision, 0);
  EXPECT_EQ(level.CharacterSet, 255);
  EXPECT_EQ(level.Quality, 2);
  EXPECT_EQ(level.Weight, 700);
  EXPECT_TRUE(level.Italic && level.Underline && level.Strikethrough);
  EXPECT_EQ(level.FaceName, longName.substr(0, 64));
  const DeviceFontRequest& turned = fonts.Requests[1];
  EXPECT_EQ(turned.Escapement, 453);
  EXPECT_EQ(turned.Orientation, 453);
  EXPECT_EQ(turned.OutPrecision, 7);
  EXPECT_EQ(turned.CharacterSet, 0);
  font.Rotation(720);
  EXPECT_EQ(fonts.Requests[2].OutPrecision, 0);
  EXPECT_EQ(fonts.Requests[2].CharacterSet, 255);
}

TEST(CLogFont, ThePatchTurnsRightAnglesALittleFurther) {
  struct Case {
    float Degrees;
    int Escapement;
  };
  for (const Case& c : {Case{-270, -2698},
                        {-180, -1798},
                        {-90, -898},
                        {90, 902},
                        {180, 1802},
                        {270, 2702},
                        {45, 450},
                        {360, 3600},
                        {90.2F, 902},
                        {91, 910}}) {
    RecordingFonts fonts;
    CLogFont font(fonts, true);
    font.Rotation(c.Degrees);
    font.LogFont(FontDescription{});
    EXPECT_EQ(fonts.Requests[0].Escapement, c.Escapement) << c.Degrees;
  }
  RecordingFonts fonts;
  CLogFont font(fonts, true);
  font.LogFont(FontDescription{});
  EXPECT_EQ(fonts.Requests[0].Escapement, 2);
}

}  // namespace
}  // namespace vaxel
