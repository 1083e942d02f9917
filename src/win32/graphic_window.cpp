#include "win32/graphic_window.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "base/units.h"
#include "win32/control_ids.h"
#include "win32/input_state.h"

namespace vaxel {
namespace {

constexpr wchar_t GraphicClass[] = L"VaxelGraphic";
constexpr UINT_PTR PauseTimer = 1;
// Milliseconds: a user who moves the drawing sees no stutter below the first, and has paused after the
// second.
constexpr double FastEnough = 30;
constexpr UINT Pause = 80;
// The time without keys and buttons after which a drawing that they have broken off is tried again.
constexpr UINT LongPause = 1500;
// What a drawing that is still growing may take, and what a complete one takes before a key or a button may
// break it off.
constexpr double SoFar = 100, Patience = 1000, BetweenLooks = 20;
constexpr Colour PaperInk = MakeColour(128, 128, 128), PrintableInk = MakeColour(170, 205, 235);

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

bool HasUserPaused() {
  LASTINPUTINFO last{};
  last.cbSize = sizeof last;
  return !GetLastInputInfo(&last) || GetTickCount() - last.dwTime >= LongPause;
}

// Whether a key or a button is held down that has a message for this program. Asking the queue alone would
// take the end of the key that has asked for the drawing for another one; taking messages from it would let
// others through.
bool HasUserActed() {
  if (HIWORD(GetQueueStatus(QS_KEY | QS_MOUSEBUTTON)) == 0) return false;
  for (int key = VK_LBUTTON; key < 0xFF; ++key) {
    if (GetAsyncKeyState(key) < 0) return true;
  }
  return false;
}

// Half way to white.
void Pale(GdiBitmap& bitmap) {
  GdiFlush();
  std::uint32_t* const pixels = bitmap.Pixels();
  for (std::size_t i = 0; i < bitmap.PixelCount(); ++i) {
    pixels[i] = 0xFF000000U | ((pixels[i] & 0xFEFEFEU) / 2 + 0x7F7F7FU);
  }
}

class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window) { BeginPaint(window, &paint_); }
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC Context() const { return paint_.hdc; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
};

// Fills what is left around a box.
void FillAround(HDC context, const SIZE& size, const RECT& box) {
  const int saved = SaveDC(context);
  ExcludeClipRect(context, box.left, box.top, box.right, box.bottom);
  PatBlt(context, 0, 0, size.cx, size.cy, WHITENESS);
  RestoreDC(context, saved);
}

}  // namespace

GraphicWindow::GraphicWindow(HINSTANCE instance, HWND parent, PictureDecoder* decoder,
                             FailureHandler onFailure)
    : decoder_(decoder), onFailure_(std::move(onFailure)) {
  RegisterWindowClass<GraphicWindow>(instance, GraphicClass, nullptr, nullptr);
  window_ = CreateWindowExW(0, GraphicClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 1, 1, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(GraphicId)), instance, this);
  if (!window_) throw std::runtime_error("the graphic area could not be made");
  tip_.emplace(window_);
}

GraphicArea GraphicWindow::Area() const {
  return {static_cast<double>(lastSize_.cx), static_cast<double>(lastSize_.cy),
          MillimetresPerInch / GetDpiForWindow(window_)};
}

void GraphicWindow::Show(const DisplayList* list, std::size_t page) {
  // What was made for a page serves the others.
  const bool isSame = list == list_ && (isGrowing_ || page != page_);
  isGrowing_ = false;
  page_ = page;
  if (!isSame) picture_.reset();
  ShowAtOnce(list);
}

void GraphicWindow::ShowSoFar(const DisplayList& list) {
  if (!isGrowing_ || &list != list_) picture_.reset();
  isGrowing_ = true;
  ShowAtOnce(&list);
}

void GraphicWindow::ShowAtOnce(const DisplayList* list) {
  list_ = list;
  tip_->Hide();
  if (list && !picture_) {
    const bool nudgesRightAngles = application_->Options().Values().PatchFlags[PatchTurnedFonts];
    picture_ = std::make_unique<GdiView>(*list, decoder_, nudgesRightAngles);
  }
  isStale_ = true;
  mayWait_ = false;
  InvalidateRect(window_, nullptr, FALSE);
  UpdateWindow(window_);
}

void GraphicWindow::SetView(const GraphicView& view) {
  view_ = view;
  Invalidate();
}

void GraphicWindow::SetSheet(const std::optional<PaperOutline>& sheet) {
  if (!sheet && !sheet_) return;
  sheet_ = sheet;
  Invalidate();
}

void GraphicWindow::SetRulers(const std::optional<Rulers>& rulers) {
  const UINT dpi = GetDpiForWindow(window_);
  const int before = rulers_.Thickness(dpi);
  rulers_.Set(rulers);
  if (rulers_.Thickness(dpi) == before) return InvalidateRulers();
  // What they have covered is shown again.
  InvalidateRect(window_, nullptr, FALSE);
}

void GraphicWindow::InvalidateRulers() {
  const int thickness = rulers_.Thickness(GetDpiForWindow(window_));
  if (thickness == 0) return;
  const RECT across = {0, 0, lastSize_.cx, thickness}, down = {0, 0, thickness, lastSize_.cy};
  InvalidateRect(window_, &across, FALSE);
  InvalidateRect(window_, &down, FALSE);
}

std::size_t GraphicWindow::ShownPage() const {
  const std::size_t last = list_->Pages().size() - 1;
  return isGrowing_ ? last : std::min(page_, last);
}

void GraphicWindow::SetOld(bool isOld) {
  if (std::exchange(isOld_, isOld) != isOld) Invalidate();
}

void GraphicWindow::SetHalo(std::vector<OperationOutline> outlines) {
  overlay_.SetHalo(std::move(outlines));
  InvalidateRect(window_, nullptr, FALSE);
}

void GraphicWindow::ShowMeasuring(const std::optional<MeasuringLine>& line) {
  overlay_.SetMeasuring(line);
  InvalidateRect(window_, nullptr, FALSE);
}

void GraphicWindow::Invalidate() {
  isStale_ = true;
  InvalidateRect(window_, nullptr, FALSE);
}

void GraphicWindow::Redraw() {
  isStale_ = isBroken_ = false;
  bitmap_ = {};
  if (HasPage()) {
    drawnPlace_ = Place();
    // Who has ended a run by Escape does not want to wait for it.
    const bool isCut = isGrowing_ || application_->Runs().IsAbortRequested();
    const std::size_t count = list_->Pages()[ShownPage()].Count;
    const auto atOnce = [&] { return std::min(count, static_cast<std::size_t>(perMs_ * SoFar)); };
    // What was broken off shows its beginning, like one that is growing, and all of it later.
    isBroken_ = !DrawFirst(isCut ? atOnce() : count);
    if (isBroken_) {
      DrawFirst(atOnce());
      SetTimer(window_, PauseTimer, LongPause, nullptr);
    }
  }
  mayWait_ = static_cast<bool>(bitmap_);
}

// Nobody can be kept waiting for as long as a drawing of a million operations takes: false when a key or a
// button has broken it off.
bool GraphicWindow::DrawFirst(std::size_t operations) {
  const auto start = std::chrono::steady_clock::now();
  bool isBroken = false;
  double nextLook = Patience;
  ViewFrame frame;
  frame.Width = lastSize_.cx;
  frame.Height = lastSize_.cy;
  frame.Place = {drawnPlace_.PixelsPerMm, drawnPlace_.PixelsPerMm, drawnPlace_.Corner.X,
                 drawnPlace_.Corner.Y};
  if (sheet_) {
    frame.Behind = {{sheet_->Printable.Corner, sheet_->Printable.Opposite, PrintableInk},
                    {sheet_->Paper.Corner, sheet_->Paper.Opposite, PaperInk}};
  }
  const auto goOn = [&](std::size_t operation) {
    const double now = MillisecondsSince(start);
    if (now > nextLook) {
      isBroken = isBroken || HasUserActed();
      nextLook = now + BetweenLooks;
    }
    return operation < operations && !isBroken;
  };
  bitmap_ = picture_->Draw(ShownPage(), frame, goOn);
  if (isOld_ && bitmap_) Pale(bitmap_);
  drawMs_ = MillisecondsSince(start);
  // Small drawings take as long as their pixels do.
  if (!isBroken && drawMs_ > SoFar / 2) perMs_ = std::max(5.0, static_cast<double>(operations) / drawMs_);
  return !isBroken;
}

// The bitmap as it was drawn, where the view has it now.
void GraphicWindow::PaintMoved(HDC context, const SIZE& size) {
  const PagePlace place = Place();
  const double scale = place.PixelsPerMm / drawnPlace_.PixelsPerMm;
  const auto at = [](double pixel) { return static_cast<int>(std::lround(pixel)); };
  const double left = place.Corner.X - drawnPlace_.Corner.X * scale;
  const double top = place.Corner.Y - drawnPlace_.Corner.Y * scale;
  const RECT box = {at(left), at(top), at(left + bitmap_.Width() * scale),
                    at(top + bitmap_.Height() * scale)};
  const BitmapDc bitmap(bitmap_);
  StretchBlt(context, box.left, box.top, box.right - box.left, box.bottom - box.top, bitmap.Handle(), 0, 0,
             bitmap_.Width(), bitmap_.Height(), SRCCOPY);
  FillAround(context, size, box);
}

void GraphicWindow::Paint() {
  const PaintScope paint(window_);
  const HDC context = paint.Context();
  const bool waits = isStale_ && mayWait_ && drawMs_ > FastEnough;
  if (waits) {
    SetTimer(window_, PauseTimer, Pause, nullptr);
  } else if (isStale_) {
    Redraw();
  }
  const int ruler = rulers_.Thickness(GetDpiForWindow(window_));
  const int saved = SaveDC(context);
  ExcludeClipRect(context, 0, 0, ruler, lastSize_.cy);
  ExcludeClipRect(context, 0, 0, lastSize_.cx, ruler);
  PaintAll(context, waits);
  RestoreDC(context, saved);
  rulers_.Paint(context, lastSize_, GetDpiForWindow(window_), over_);
}

// What lies above the drawing is painted with it aside, so that neither flickers.
void GraphicWindow::PaintAll(HDC context, bool waits) {
  GdiBitmap all;
  if (!overlay_.IsEmpty()) all = GdiBitmap(lastSize_.cx, lastSize_.cy);
  if (!all) return PaintDrawing(context, waits);
  const BitmapDc aside(all);
  PaintDrawing(aside.Handle(), waits);
  const bool hasHalo = HasPage() && bitmap_ && !isGrowing_;
  overlay_.Paint(aside, hasHalo ? std::optional(Place()) : std::nullopt, GetDpiForWindow(window_));
  BitBlt(context, 0, 0, all.Width(), all.Height(), aside.Handle(), 0, 0, SRCCOPY);
}

void GraphicWindow::PaintDrawing(HDC context, bool waits) {
  if (!bitmap_) {
    PatBlt(context, 0, 0, lastSize_.cx, lastSize_.cy, WHITENESS);
  } else if (waits) {
    PaintMoved(context, lastSize_);
  } else {
    const BitmapDc bitmap(bitmap_);
    BitBlt(context, 0, 0, bitmap_.Width(), bitmap_.Height(), bitmap.Handle(), 0, 0, SRCCOPY);
  }
}

void GraphicWindow::PauseEnds() {
  if (isBroken_ && !isStale_ && !HasUserPaused()) return;  // it comes again
  KillTimer(window_, PauseTimer);
  isStale_ = isStale_ || isBroken_;
  mayWait_ = false;
  InvalidateRect(window_, nullptr, FALSE);
}

std::optional<LRESULT> GraphicWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      lastSize_ = {std::max(1, int{LOWORD(lParam)}), std::max(1, int{HIWORD(lParam)})};
      Invalidate();
      if (application_) application_->GraphicAreaChanged();
      return 0;
    case WM_TIMER:
      PauseEnds();
      return 0;
    case WM_SETCURSOR:
      SetCursor(CursorOf(pointer_));
      return TRUE;
    default:
      return application_ ? HandlePointer(message, wParam, lParam) : std::nullopt;
  }
}

}  // namespace vaxel
