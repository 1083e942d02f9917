// The part of the graphic area that has to do with the pointer.
#include <windows.h>
// The next one needs what windows.h declares.
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include "win32/graphic_window.h"
#include "win32/menu_bar.h"
#include "win32/pixels.h"

namespace vaxel {
namespace {

// Milliseconds for which a pointer rests that asks what lies under it.
constexpr DWORD RestingTime = 250;

POINT PixelOf(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

Point PlaceOf(POINT pixel) {
  return {static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
}

// Nobody holds the pointer quite still while clicking.
bool IsDragged(POINT from, POINT to) {
  return std::abs(to.x - from.x) > GetSystemMetrics(SM_CXDRAG) ||
         std::abs(to.y - from.y) > GetSystemMetrics(SM_CYDRAG);
}

}  // namespace

void GraphicWindow::ShowTip(std::string_view text) {
  constexpr int beside = 14;  // 1/96 inch, right of and below the pointer
  const int distance = ToPixels(beside, GetDpiForWindow(window_));
  POINT pointer{};
  GetCursorPos(&pointer);
  tip_->Show(text, {pointer.x + distance, pointer.y + distance});
}

void GraphicWindow::TurnWheel(WPARAM wParam, LPARAM lParam) {
  POINT pixel = PixelOf(lParam);
  ScreenToClient(window_, &pixel);
  tip_->Hide();
  application_->Runs().WheelTurned(pixel.x, pixel.y,
                                   static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA);
}

void GraphicWindow::Press(POINT pixel, bool withShift) {
  tip_->Hide();
  SetFocus(window_);
  SetCapture(window_);
  gesture_ = withShift ? Gesture::Measure : Gesture::Press;
  grip_ = pixel;
  if (withShift) application_->Runs().Shown().BeginMeasuring(PlaceOf(pixel));
}

void GraphicWindow::Move(POINT pixel) {
  // The system tells of a pointer that has not moved, too, when windows come and go.
  if (!over_ || over_->x != pixel.x || over_->y != pixel.y) {
    tip_->Hide();
    TRACKMOUSEEVENT watch = {sizeof watch, TME_LEAVE | TME_HOVER, window_, RestingTime};
    TrackMouseEvent(&watch);
  }
  over_ = pixel;
  InvalidateRulers();
  if (gesture_ == Gesture::Press && IsDragged(grip_, pixel)) gesture_ = Gesture::Drag;
  if (gesture_ == Gesture::Drag) {
    application_->Runs().Dragged(pixel.x - grip_.x, pixel.y - grip_.y);
    grip_ = pixel;
  }
  application_->Runs().PointerMoved(pixel.x, pixel.y);
}

void GraphicWindow::LetGo(POINT pixel, bool withCtrl) {
  const Gesture ended = gesture_;
  ReleaseCapture();
  EndGesture();
  if (ended == Gesture::Press) application_->DrawingClicked(PlaceOf(pixel), withCtrl);
}

void GraphicWindow::EndGesture() {
  if (std::exchange(gesture_, Gesture::None) == Gesture::Measure) application_->Runs().Shown().EndMeasuring();
}

void GraphicWindow::Leave() {
  over_.reset();
  tip_->Hide();
  InvalidateRulers();
}

std::optional<LRESULT> GraphicWindow::HandlePointer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      Move(PixelOf(lParam));
      return 0;
    case WM_MOUSEHOVER:
      if (gesture_ == Gesture::None && !IsMenuOpen()) application_->DrawingRested(PlaceOf(PixelOf(lParam)));
      return 0;
    case WM_MOUSELEAVE:
      Leave();
      return 0;
    case WM_LBUTTONDOWN:
      Press(PixelOf(lParam), (wParam & MK_SHIFT) != 0);
      return 0;
    case WM_LBUTTONUP:
      LetGo(PixelOf(lParam), (wParam & MK_CONTROL) != 0);
      return 0;
    case WM_CAPTURECHANGED:
      EndGesture();
      return 0;
    case WM_MOUSEWHEEL:
      TurnWheel(wParam, lParam);
      return 0;
    default:
      return std::nullopt;
  }
}

}  // namespace vaxel
