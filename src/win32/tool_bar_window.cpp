#include "win32/tool_bar_window.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <vector>

#include "render/gdi/bitmap.h"
#include "win32/control_ids.h"
#include "win32/pixels.h"
#include "win32/tool_icons.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// Units of 1/96 inch.
constexpr int ButtonWidth = 32, ButtonHeight = 28, IconSide = 18, Margin = 2;

int CommandOf(const ToolRow& row) {
  return row.Item == MenuId::Nowhere ? StopId : FirstCommandId + static_cast<int>(row.Item);
}

const ToolRow* RowOfCommand(UINT_PTR command) {
  const auto rows = ToolRows();
  const auto row = std::find_if(rows.begin(), rows.end(), [command](const ToolRow& r) {
    return static_cast<UINT_PTR>(CommandOf(r)) == command;
  });
  return row == rows.end() ? nullptr : &*row;
}

void FillBox(HDC context, const RECT& box, COLORREF colour) {
  const UniqueGdi<HBRUSH> brush(CreateSolidBrush(colour));
  FillRect(context, &box, brush.get());
}

}  // namespace

ToolBarWindow::ToolBarWindow(HINSTANCE instance, HWND parent) {
  // The parent places it: a bar that does so itself covers what lies below.
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                          CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
  window_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", style, 0, 0, 1, 1, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(ToolBarId)), instance, nullptr);
  if (!window_) throw std::runtime_error("the tool bar could not be made");
  Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  std::vector<TBBUTTON> buttons;
  for (const ToolRow& row : ToolRows()) {
    TBBUTTON button{};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = CommandOf(row);
    button.fsState = row.Icon == ToolIcon::Stop ? 0 : TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON;
    button.iString = -1;
    buttons.push_back(button);
  }
  Send(TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
  theme_ = SystemTheme();
  SetDpi(GetDpiForWindow(parent));
}

void ToolBarWindow::SetText(ToolIcon button, std::string_view text) {
  texts_[static_cast<std::size_t>(button)] = Widen(text);
}

void ToolBarWindow::SetItemEnabled(MenuId item, bool isEnabled) {
  Send(TB_ENABLEBUTTON, static_cast<WPARAM>(FirstCommandId + static_cast<int>(item)),
       MAKELPARAM(isEnabled, 0));
}

void ToolBarWindow::SetStopEnabled(bool isEnabled) {
  Send(TB_ENABLEBUTTON, StopId, MAKELPARAM(isEnabled, 0));
}

bool ToolBarWindow::IsOverStop(POINT place) const {
  RECT button{};
  if (!isShown_ || !Send(TB_GETRECT, StopId, reinterpret_cast<LPARAM>(&button))) return false;
  ScreenToClient(window_, &place);
  return PtInRect(&button, place) != FALSE;
}

void ToolBarWindow::SetTheme(const Theme& theme) {
  theme_ = theme;
  InvalidateRect(window_, nullptr, TRUE);
}

void ToolBarWindow::SetDpi(UINT dpi) {
  dpi_ = dpi;
  const int width = ToPixels(ButtonWidth, dpi), height = ToPixels(ButtonHeight, dpi);
  Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(ToPixels(IconSide, dpi), ToPixels(IconSide, dpi)));
  Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(width, height));
  for (const ToolRow& row : ToolRows()) {
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    info.cx = static_cast<WORD>(width);
    Send(TB_SETBUTTONINFOW, static_cast<WPARAM>(CommandOf(row)), reinterpret_cast<LPARAM>(&info));
  }
  height_ = height + 2 * ToPixels(Margin, dpi);
  InvalidateRect(window_, nullptr, TRUE);
}

void ToolBarWindow::Show(bool isShown) {
  isShown_ = isShown;
  ShowWindow(window_, isShown ? SW_SHOWNA : SW_HIDE);
}

void ToolBarWindow::Place(int width) {
  SetWindowPos(window_, nullptr, 0, 0, width, height_, SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT ToolBarWindow::Notified(const NMHDR& header) {
  if (header.code == NM_CUSTOMDRAW) return Draw(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
  if (header.code == TBN_GETINFOTIPW) {
    const auto& tip = reinterpret_cast<const NMTBGETINFOTIPW&>(header);
    const ToolRow* const row = RowOfCommand(static_cast<UINT_PTR>(tip.iItem));
    if (row) lstrcpynW(tip.pszText, texts_[static_cast<std::size_t>(row->Icon)].c_str(), tip.cchTextMax);
  }
  return 0;
}

LRESULT ToolBarWindow::Draw(const NMTBCUSTOMDRAW& drawing) {
  const NMCUSTOMDRAW& stage = drawing.nmcd;
  if (stage.dwDrawStage == CDDS_PREPAINT) {
    RECT client{};
    GetClientRect(window_, &client);
    FillBox(stage.hdc, client, theme_.Window);
    client.top = client.bottom - std::max(1, ToPixels(1, dpi_));
    FillBox(stage.hdc, client, theme_.Line);
    return CDRF_NOTIFYITEMDRAW;
  }
  if (stage.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  DrawButton(drawing);
  return CDRF_SKIPDEFAULT;
}

void ToolBarWindow::DrawButton(const NMTBCUSTOMDRAW& drawing) const {
  const NMCUSTOMDRAW& stage = drawing.nmcd;
  const ToolRow* const row = RowOfCommand(stage.dwItemSpec);
  if (!row) return;
  const bool isGrey = (stage.uItemState & CDIS_DISABLED) != 0;
  const bool isHot = !isGrey && (stage.uItemState & (CDIS_HOT | CDIS_SELECTED)) != 0;
  const COLORREF ground = isHot ? theme_.Hot : theme_.Window;
  const COLORREF ink = isGrey ? theme_.GreyText : isHot ? theme_.HotText : theme_.Text;
  RECT box = stage.rc;
  box.top += ToPixels(Margin, dpi_);
  box.bottom = std::min<LONG>(box.bottom, height_ - ToPixels(Margin, dpi_));
  FillBox(stage.hdc, box, ground);
  const int side = ToPixels(IconSide, dpi_);
  // A button that is held down gives way.
  const int down = (stage.uItemState & CDIS_SELECTED) != 0 ? ToPixels(1, dpi_) : 0;
  const int left = (box.left + box.right - side) / 2 + down, top = (box.top + box.bottom - side) / 2 + down;
  const std::vector<std::uint32_t> pixels = ToolPicture(row->Icon, side, ink, ground);
  const BITMAPINFO format = TopDownPixels(side, side);
  SetDIBitsToDevice(stage.hdc, left, top, static_cast<DWORD>(side), static_cast<DWORD>(side), 0, 0, 0,
                    static_cast<UINT>(side), pixels.data(), &format, DIB_RGB_COLORS);
}

}  // namespace vaxel
