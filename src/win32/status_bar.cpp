#include "win32/status_bar.h"

#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include "app/status_layout.h"
#include "win32/control_ids.h"
#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr int Padding = 3;

// A label takes no keys when it is clicked; SS_NOTIFY lets it have the pointer, for its tooltip.
HWND CreateField(HINSTANCE instance, HWND parent, int id) {
  return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY | SS_NOPREFIX | SS_ENDELLIPSIS,
                         0, 0, 1, 1, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance,
                         nullptr);
}

TTTOOLINFOW ToolOf(HWND parent, HWND field) {
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = parent;
  tool.uId = reinterpret_cast<UINT_PTR>(field);
  return tool;
}

int TextHeight(HFONT font) {
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const SelectedObject selected(context.get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(context.get(), &metrics);
  return metrics.tmHeight;
}

}  // namespace

StatusBar::StatusBar(HINSTANCE instance, HWND parent)
    : parent_(parent),
      toolTips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                parent, nullptr, instance, nullptr)) {
  int id = Text1Id;
  for (HWND& field : fields_) {
    field = CreateField(instance, parent, id++);
    TTTOOLINFOW tool = ToolOf(parent, field);
    tool.lpszText = const_cast<wchar_t*>(L"");
    SendMessageW(toolTips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
  SetDpi(GetDpiForWindow(parent));
}

// A text that is set again would flicker.
void StatusBar::SetText(StatusField field, std::string_view text) {
  std::wstring wide = Widen(text);
  std::wstring& shown = texts_[static_cast<std::size_t>(field)];
  if (wide == shown) return;
  const bool said = Says(field);
  shown = std::move(wide);
  // Some have a place only while they say something.
  if (Says(field) != said) Place(top_, width_);
  SetWindowTextW(FieldOf(field), shown.c_str());
}

void StatusBar::SetToolTip(StatusField field, std::string_view text) {
  std::wstring wide = Widen(text);
  TTTOOLINFOW tool = ToolOf(parent_, FieldOf(field));
  tool.lpszText = wide.data();
  SendMessageW(toolTips_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void StatusBar::SetDpi(UINT dpi) {
  dpi_ = dpi;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  UniqueGdi<HFONT> font(CreateFontIndirectW(&metrics.lfMessageFont));
  textHeight_ = TextHeight(font.get());
  height_ = textHeight_ + 2 * ToPixels(Padding, dpi);
  for (HWND field : fields_) SendMessageW(field, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  font_ = std::move(font);
}

// What is moved is drawn anew: a copy of its old pixels may be one of what has covered them.
void StatusBar::Place(int top, int width) {
  top_ = top;
  width_ = width;
  const auto spans =
      StatusSpans(FromPixels(width, dpi_), Says(StatusField::Page), Says(StatusField::Reading));
  for (std::size_t i = 0; i < StatusFields; ++i) {
    SetWindowPos(fields_[i], nullptr, ToPixels(spans[i].Left, dpi_), top + ToPixels(Padding, dpi_),
                 ToPixels(spans[i].Width, dpi_), textHeight_, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    InvalidateRect(fields_[i], nullptr, TRUE);
  }
}

}  // namespace vaxel
