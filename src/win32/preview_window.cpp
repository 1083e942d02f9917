#include "win32/preview_window.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "winbase/gdi_handles.h"

namespace vaxel {
namespace {

constexpr wchar_t PreviewClass[] = L"VaxelPreview";
// What can be printed on is a little darker than the paper.
constexpr Colour PrintableTint = MakeColour(234, 243, 252);
constexpr COLORREF EdgeInk = RGB(110, 110, 110);

RECT PixelBoxOf(const PaperBox& box) {
  const auto pixel = [](double at) { return static_cast<LONG>(std::lround(std::clamp(at, -1e6, 1e6))); };
  return {pixel(box.Corner.X), pixel(box.Corner.Y), pixel(box.Opposite.X), pixel(box.Opposite.Y)};
}

}  // namespace

PreviewWindow::PreviewWindow(HWND dialog, int placeholderId, PreviewView& view, PictureDecoder* decoder,
                             FailureHandler onFailure)
    : view_(view), decoder_(decoder), onFailure_(std::move(onFailure)) {
  const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE));
  RegisterWindowClass<PreviewWindow>(instance, PreviewClass, nullptr, nullptr);
  const HWND placeholder = GetDlgItem(dialog, placeholderId);
  RECT place{};
  GetWindowRect(placeholder, &place);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
  size_ = {std::max(1L, place.right - place.left), std::max(1L, place.bottom - place.top)};
  window_ = CreateWindowExW(0, PreviewClass, L"", WS_CHILD | WS_VISIBLE, place.left, place.top, size_.cx,
                            size_.cy, dialog, nullptr, instance, this);
  if (!window_) throw std::runtime_error("the preview could not be made");
  ShowWindow(placeholder, SW_HIDE);
  isComplete_ = true;
  const double dpi = GetDpiForWindow(window_);
  view_.Resize({static_cast<double>(size_.cx), static_cast<double>(size_.cy), MillimetresPerInch / dpi});
  Changed();
}

PreviewWindow::~PreviewWindow() {
  if (IsWindow(window_)) DestroyWindow(window_);
}

void PreviewWindow::Changed() {
  isStale_ = true;
  rulers_.Set(view_.Rulers());
  InvalidateRect(window_, nullptr, FALSE);
}

// Only what is seen of the area that can be printed on is drawn.
void PreviewWindow::PaintPage(HDC context, const RECT& printable) {
  const RECT pane = {0, 0, size_.cx, size_.cy};
  RECT seen{};
  if (!IntersectRect(&seen, &printable, &pane)) return;
  if (std::exchange(isStale_, false)) {
    const DisplayList* const list = view_.Pages().Drawing.get();
    if (!picture_ || list_ != list) picture_ = std::make_unique<GdiView>(*list, decoder_);
    list_ = list;
    const PagePlace place = view_.Place();
    ViewFrame frame;
    frame.Width = static_cast<int>(seen.right - seen.left);
    frame.Height = static_cast<int>(seen.bottom - seen.top);
    frame.Place = {place.PixelsPerMm, place.PixelsPerMm, place.Corner.X - static_cast<double>(seen.left),
                   place.Corner.Y - static_cast<double>(seen.top)};
    frame.Paper = view_.HasMargins() ? PrintableTint : White;
    bitmap_ = picture_->Draw(view_.Page(), frame);
    drawn_ = seen;
  }
  if (!bitmap_) return;
  const BitmapDc bitmap(bitmap_);
  BitBlt(context, drawn_.left, drawn_.top, bitmap_.Width(), bitmap_.Height(), bitmap.Handle(), 0, 0, SRCCOPY);
}

void PreviewWindow::PaintSheet(HDC context) {
  const RECT pane = {0, 0, size_.cx, size_.cy};
  RECT paper = PixelBoxOf(view_.PaperPx());
  FillRect(context, &pane, GetSysColorBrush(COLOR_BTNSHADOW));
  FillRect(context, &paper, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  PaintPage(context, PixelBoxOf(view_.PrintablePx()));
  InflateRect(&paper, 1, 1);
  const UniqueGdi<HBRUSH> edge(CreateSolidBrush(EdgeInk));
  FrameRect(context, &paper, edge.get());
}

// Aside, so that nothing flickers.
void PreviewWindow::Paint() {
  PAINTSTRUCT paint{};
  const HDC context = BeginPaint(window_, &paint);
  const UniqueGdi<HBITMAP> aside(CreateCompatibleBitmap(context, size_.cx, size_.cy));
  const UniqueDc memory(CreateCompatibleDC(context));
  if (aside && memory) {
    const SelectedObject selected(memory.get(), aside.get());
    PaintSheet(memory.get());
    rulers_.Paint(memory.get(), size_, GetDpiForWindow(window_), std::nullopt);
    BitBlt(context, 0, 0, size_.cx, size_.cy, memory.get(), 0, 0, SRCCOPY);
  }
  EndPaint(window_, &paint);
}

void PreviewWindow::TurnWheel(WPARAM wParam, LPARAM lParam) {
  POINT pixel = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(window_, &pixel);
  view_.Zoom(static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA,
             {static_cast<double>(pixel.x), static_cast<double>(pixel.y)});
  Changed();
}

std::optional<LRESULT> PreviewWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  const POINT pixel = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      SetCapture(window_);
      drag_ = pixel;
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      drag_.reset();
      return 0;
    case WM_MOUSEMOVE:
      if (!drag_) return 0;
      view_.Move({static_cast<double>(pixel.x - drag_->x), static_cast<double>(pixel.y - drag_->y)});
      drag_ = pixel;
      Changed();
      return 0;
    case WM_MOUSEWHEEL:
      TurnWheel(wParam, lParam);
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
