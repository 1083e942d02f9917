#include "win32/offer_list.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "win32/input_state.h"
#include "win32/pixels.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

constexpr wchar_t OffersClass[] = L"VaxelOffers";
constexpr std::size_t MostRows = 9;
// Units of 1/96 inch.
constexpr int Padding = 4, LeastWidth = 160, MostWidth = 520, MostShown = 220;

}  // namespace

OfferList::OfferList(HINSTANCE instance, HWND owner, FailureHandler onFailure)
    : onFailure_(std::move(onFailure)) {
  RegisterWindowClass<OfferList>(instance, OffersClass, nullptr, nullptr);
  window_ = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, OffersClass, L"",
                            WS_POPUP | WS_BORDER, 0, 0, 1, 1, owner, nullptr, instance, this);
  if (!window_) throw std::runtime_error("the list of offers could not be made");
}

int OfferList::Pixels(int length) const {
  return ToPixels(length, dpi_);
}

void OfferList::MakeFont() {
  const UINT dpi = GetDpiForWindow(GetWindow(window_, GW_OWNER));
  if (std::exchange(dpi_, dpi) == dpi) return;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  font_.reset(CreateFontIndirectW(&metrics.lfMessageFont));
}

std::size_t OfferList::VisibleRows() const {
  return std::min(rows_.size(), MostRows);
}

void OfferList::ScrollTo(std::size_t row) {
  chosen_ = row;
  if (row < first_) first_ = row;
  if (row >= first_ + VisibleRows()) first_ = row + 1 - VisibleRows();
}

void OfferList::Choose(std::size_t index) {
  ScrollTo(std::min(index, rows_.size() - 1));
  InvalidateRect(window_, nullptr, FALSE);
}

void OfferList::Show(const std::vector<Offer>& offers, const RECT& line) {
  MakeFont();
  rows_.clear();
  const UniqueDc context(CreateCompatibleDC(nullptr));
  const SelectedObject font(context.get(), font_.get());
  int explanation = 0;
  shownWidth_ = 0;
  const auto widthOf = [&](const std::wstring& text) {
    SIZE size{};
    GetTextExtentPoint32W(context.get(), text.c_str(), static_cast<int>(text.size()), &size);
    rowHeight_ = static_cast<int>(size.cy) + Pixels(2);
    return static_cast<int>(size.cx);
  };
  for (const Offer& offer : offers) {
    rows_.push_back({Widen(offer.Shown), Widen(offer.Explanation), offer.Sample});
    // Nobody sees the thousandth one, and measuring takes time.
    if (rows_.size() > 200) continue;
    shownWidth_ = std::max(shownWidth_, widthOf(rows_.back().Shown) + (offer.Sample ? rowHeight_ : 0));
    explanation = std::max(explanation, widthOf(rows_.back().Explanation));
  }
  shownWidth_ = std::min(shownWidth_, Pixels(MostShown));
  first_ = 0;
  ScrollTo(0);
  const int width =
      std::clamp(shownWidth_ + explanation + 4 * Pixels(Padding), Pixels(LeastWidth), Pixels(MostWidth));
  const int height = static_cast<int>(VisibleRows()) * rowHeight_ + 2;
  const RECT area = WorkAreaNear(line);
  const LONG left = std::max(area.left, std::min(line.left, area.right - width));
  const bool isBelow = line.bottom + height <= area.bottom;
  SetWindowPos(window_, HWND_TOPMOST, left, isBelow ? line.bottom : line.top - height, width, height,
               SWP_NOACTIVATE | SWP_SHOWWINDOW);
  InvalidateRect(window_, nullptr, FALSE);
}

void OfferList::Hide() {
  if (IsWindowVisible(window_)) ShowWindow(window_, SW_HIDE);
}

void OfferList::PaintRow(HDC context, const RECT& box, const Row& row, bool isChosen) const {
  FillRect(context, &box, GetSysColorBrush(isChosen ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  RECT text = {box.left + Pixels(Padding), box.top, box.left + Pixels(Padding) + shownWidth_, box.bottom};
  if (row.Sample) {
    const int side = rowHeight_ - Pixels(6);
    const RECT sample = {text.left, box.top + Pixels(3), text.left + side, box.top + Pixels(3) + side};
    const UniqueGdi<HBRUSH> brush(CreateSolidBrush(*row.Sample));
    FillRect(context, &sample, brush.get());
    FrameRect(context, &sample, GetSysColorBrush(COLOR_WINDOWTEXT));
    text.left += rowHeight_;
  }
  constexpr UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
  SetTextColor(context, GetSysColor(isChosen ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  DrawTextW(context, row.Shown.c_str(), -1, &text, format);
  SetTextColor(context, GetSysColor(isChosen ? COLOR_HIGHLIGHTTEXT : COLOR_GRAYTEXT));
  RECT behind = {text.right + 2 * Pixels(Padding), box.top, box.right - Pixels(Padding), box.bottom};
  DrawTextW(context, row.Explanation.c_str(), -1, &behind, format);
}

void OfferList::Paint() const {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_, &paint);
  const SelectedObject font(context, font_.get());
  SetBkMode(context, TRANSPARENT);
  RECT client{};
  GetClientRect(window_, &client);
  for (std::size_t i = 0; i < VisibleRows(); ++i) {
    const int top = static_cast<int>(i) * rowHeight_;
    PaintRow(context, {0, top, client.right, top + rowHeight_}, rows_[first_ + i], first_ + i == chosen_);
  }
  EndPaint(window_, &paint);
}

std::optional<LRESULT> OfferList::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_LBUTTONDOWN: {
      const std::size_t row =
          first_ + static_cast<std::size_t>(std::max(0, GET_Y_LPARAM(lParam)) / rowHeight_);
      if (row < rows_.size() && OnTaken) OnTaken(row);
      return 0;
    }
    case WM_MOUSEWHEEL: {
      const std::size_t last = rows_.size() - VisibleRows();
      if (GET_WHEEL_DELTA_WPARAM(wParam) < 0) {
        first_ = std::min(first_ + 3, last);
      } else {
        first_ -= std::min<std::size_t>(first_, 3);
      }
      InvalidateRect(window_, nullptr, FALSE);
      return 0;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
