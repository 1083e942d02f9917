// The part of the main window that has to do with colours: what it paints itself, and the theme of the
// system.
#include <windows.h>

#include <algorithm>

#include "win32/accessible_name.h"
#include "win32/fill_box.h"
#include "win32/main_window.h"
#include "win32/pixels.h"

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr int GripDot = 2, GripStep = 6, GripDots = 5;

}  // namespace

void MainWindowWin32::UseTheme(const Theme& theme) {
  theme_ = theme;
  background_.reset(CreateSolidBrush(theme.Window));
  tools_.SetTheme(theme);
  editor_.SetTheme(theme);
  panel_.SetTheme(theme);
  DarkenFrame(window_.get(), theme.IsDark && !theme.IsHighContrast);
  RedrawWindow(window_.get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void MainWindowWin32::SetPartName(WindowPart part, std::string_view name) {
  switch (part) {
    case WindowPart::Editor:
      return SetAccessibleName(editor_.Window(), name);
    case WindowPart::Margin:
      return SetAccessibleName(editor_.MarginWindow(), name);
    case WindowPart::Drawing:
      return SetAccessibleName(graphic_.Window(), name);
    case WindowPart::Aid:
      return panel_.SetName(name);
    case WindowPart::Offers:
      return SetAccessibleName(offers_.Window(), name);
  }
}

// A line with a grip in its middle, by which it is seen that it can be moved.
void MainWindowWin32::PaintDivider(HDC context) const {
  const RECT box = DividerBox();
  if (IsRectEmpty(&box)) return;
  const int thin = std::max(1, ToPixels(1, Dpi())), dot = ToPixels(GripDot, Dpi());
  const int middle = (box.left + box.right) / 2;
  const int gripHeight = ToPixels(GripStep * GripDots, Dpi()),
            gripTop = (box.top + box.bottom - gripHeight) / 2;
  FillBox(context, {box.left, box.top, box.left + thin, box.bottom}, theme_.Line);
  FillBox(context, {box.right - thin, box.top, box.right, box.bottom}, theme_.Line);
  for (int i = 0; i < GripDots; ++i) {
    const int left = middle - dot / 2, top = gripTop + ToPixels(GripStep * i, Dpi());
    FillBox(context, {left, top, left + dot, top + dot}, theme_.Text);
  }
}

std::optional<LRESULT> MainWindowWin32::HandleLook(UINT message, WPARAM wParam) {
  if (MayChangeTheme(message)) {
    if (const Theme theme = SystemTheme(); !(theme == theme_)) UseTheme(theme);
    return std::nullopt;
  }
  switch (message) {
    case WM_ERASEBKGND: {
      RECT client{};
      GetClientRect(window_.get(), &client);
      FillRect(reinterpret_cast<HDC>(wParam), &client, background_.get());
      return 1;
    }
    case WM_PAINT: {
      PAINTSTRUCT paint{};
      PaintDivider(BeginPaint(window_.get(), &paint));
      EndPaint(window_.get(), &paint);
      return 0;
    }
    case WM_CTLCOLORSTATIC: {
      const auto context = reinterpret_cast<HDC>(wParam);
      SetTextColor(context, theme_.Text);
      SetBkColor(context, theme_.Window);
      return reinterpret_cast<LRESULT>(background_.get());
    }
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
