#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "win32/theme.h"
#include "win32/tool_icons.h"

namespace vaxel {
namespace {

constexpr wchar_t Wishes[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
constexpr wchar_t UsesLight[] = L"AppsUseLightTheme";

// What the user has set, for the time of a test.
class LightOrDark {
 public:
  LightOrDark() {
    DWORD value = 0, bytes = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, Wishes, UsesLight, RRF_RT_REG_DWORD, nullptr, &value, &bytes) == 0)
      before_ = value;
  }
  ~LightOrDark() {
    if (before_) {
      Set(*before_);
    } else {
      RegDeleteKeyValueW(HKEY_CURRENT_USER, Wishes, UsesLight);
    }
  }
  LightOrDark(const LightOrDark&) = delete;
  LightOrDark& operator=(const LightOrDark&) = delete;

  static void Set(DWORD usesLight) {
    RegSetKeyValueW(HKEY_CURRENT_USER, Wishes, UsesLight, REG_DWORD, &usesLight, sizeof usesLight);
  }

 private:
  std::optional<DWORD> before_;
};

int Brightness(COLORREF colour) {
  return GetRValue(colour) + GetGValue(colour) + GetBValue(colour);
}

TEST(Theme, FollowsTheWishOfTheUser) {
  const LightOrDark kept;
  for (const bool isDark : {false, true, false}) {
    LightOrDark::Set(isDark ? 0 : 1);
    const Theme theme = SystemTheme();
    EXPECT_EQ(theme.IsDark, isDark);
    // What is written can be read, also on a button under the pointer.
    const std::pair<COLORREF, COLORREF> pairs[] = {
        {theme.Text, theme.Window}, {theme.FieldText, theme.Field}, {theme.HotText, theme.Hot}};
    for (const auto& [text, ground] : pairs) {
      EXPECT_GT(isDark ? Brightness(text) - Brightness(ground) : Brightness(ground) - Brightness(text), 300);
    }
    EXPECT_NE(theme.Line, theme.Window);
    EXPECT_NE(theme.GreyText, theme.Text);
  }
}

// The part of a picture that is ink is the same in every size.
TEST(ToolPicture, LooksAlikeInEverySize) {
  for (const ToolIcon icon :
       {ToolIcon::Run, ToolIcon::Stop, ToolIcon::Fit, ToolIcon::Print, ToolIcon::Export}) {
    const auto share = [icon](int side) {
      double sum = 0;
      for (const std::uint32_t pixel : ToolPicture(icon, side, Black, White)) sum += 255 - (pixel & 0xFF);
      return sum / 255 / side / side;
    };
    const double usual = share(18);
    EXPECT_GT(usual, 0.1);
    EXPECT_LT(usual, 0.6);
    for (const int side : {16, 27, 36, 54}) EXPECT_NEAR(share(side), usual, 0.03) << side;
  }
}

}  // namespace
}  // namespace vaxel
