#include "win32/status_bar.h"

#include <windows.h>
// The next one needs what windows.h declares.
#include <commctrl.h>

#include "win32/control_ids.h"
#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr int FieldWidth = 130, Gap = 6, Padding = 3;

HWND CreateField(HINSTANCE instance, HWND parent, int id) {
  return CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_READONLY | ES_AUTOHSCROLL, 0, 0, 1, 1,
                         parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
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
      fields_{CreateField(instance, parent, Text1Id), CreateField(instance, parent, Text2Id)},
      toolTips_(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                parent, nullptr, instance, nullptr)) {
  for (HWND field : fields_) {
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
  shown = std::move(wide);
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

void StatusBar::Place(int top, int width) {
  const int fieldWidth = std::min(ToPixels(FieldWidth, dpi_), width / 2);
  int left = ToPixels(Gap, dpi_);
  for (HWND field : fields_) {
    SetWindowPos(field, nullptr, left, top + ToPixels(Padding, dpi_), fieldWidth, textHeight_,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    left += fieldWidth + ToPixels(Gap, dpi_);
  }
}

}  // namespace vaxel
