// The graphic area on Windows.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "app/graphic_view.h"
#include "app/main_window.h"
#include "drawing/display_list.h"
#include "render/gdi/bitmap.h"
#include "render/gdi/view.h"
#include "win32/drawing_overlay.h"
#include "win32/ruler_painter.h"
#include "win32/text_tip.h"
#include "win32/window_class.h"

namespace vaxel {

// The graphic area (Picture1): shows a drawing from a bitmap, which is drawn anew when something about it
// has changed. Where that takes long, it waits until the user pauses and shows the old bitmap in its new
// place meanwhile.
class GraphicWindow {
 public:
  GraphicWindow(HINSTANCE instance, HWND parent, PictureDecoder* decoder, FailureHandler onFailure);

  void Attach(Application& application) { application_ = &application; }
  HWND Window() const { return window_; }
  // A page, from 0. The list must live until another is shown, or none.
  void Show(const DisplayList* list, std::size_t page);
  // Shows as much of the list as can be drawn at once; it is going to be shown whole.
  void ShowSoFar(const DisplayList& list);
  void SetView(const GraphicView& view);
  void SetSheet(const std::optional<PaperOutline>& sheet);
  void SetRulers(const std::optional<Rulers>& rulers);
  void SetOld(bool isOld);
  void SetHalo(std::vector<OperationOutline> outlines);
  // Beside the pointer.
  void ShowTip(std::string_view text);
  void ShowMeasuring(const std::optional<MeasuringLine>& line);
  void SetPointer(PointerShape shape) { pointer_ = shape; }
  GraphicArea Area() const;

  bool IsComplete() const { return window_ != nullptr; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Failed() const { onFailure_(); }

 private:
  void ShowAtOnce(const DisplayList* list);
  bool DrawFirst(std::size_t operations);
  void Redraw();
  void Invalidate();
  void Paint();
  void PaintAll(HDC context, bool waits);
  void PaintDrawing(HDC context, bool waits);
  void PaintMoved(HDC context, const SIZE& size);
  void InvalidateRulers();
  bool HasPage() const { return picture_ && !list_->Pages().empty(); }
  // Which page is shown, and where it lies.
  std::size_t ShownPage() const;
  PagePlace Place() const { return PlaceOf(view_, list_->Pages()[ShownPage()], Area()); }
  void PauseEnds();
  // The pointer, in graphic_window_pointer.cpp.
  std::optional<LRESULT> HandlePointer(UINT message, WPARAM wParam, LPARAM lParam);
  void TurnWheel(WPARAM wParam, LPARAM lParam);
  void Press(POINT pixel, bool withShift);
  void Move(POINT pixel);
  void LetGo(POINT pixel, bool withCtrl);
  void Leave();
  void EndGesture();

  PictureDecoder* decoder_;
  FailureHandler onFailure_;
  HWND window_ = nullptr;
  Application* application_ = nullptr;
  std::unique_ptr<GdiView> picture_;
  const DisplayList* list_ = nullptr;
  GraphicView view_;
  std::size_t page_ = 0;
  PagePlace drawnPlace_;  // in the bitmap
  std::optional<PaperOutline> sheet_;
  RulerPainter rulers_;
  DrawingOverlay overlay_;
  std::optional<TextTip> tip_;
  std::optional<POINT> over_;  // the pointer, while it is over the area
  GdiBitmap bitmap_;
  SIZE lastSize_{1, 1};
  PointerShape pointer_ = PointerShape::Normal;
  bool isStale_ = true;     // the bitmap
  bool isOld_ = false;      // the drawing, which is shown paler then
  bool mayWait_ = false;    // there is something to show while it is stale
  bool isBroken_ = false;   // the bitmap shows a part alone, as the user had something to do
  bool isGrowing_ = false;  // the list
  double perMs_ = 25;       // operations drawn in a millisecond, as far as is known
  double drawMs_ = 0;       // what the last bitmap took
  // What the button, which is held down, has begun. A press is a click, or once it has moved, a drag.
  enum class Gesture : std::uint8_t { None, Press, Drag, Measure } gesture_ = Gesture::None;
  POINT grip_{};  // where the pointer was when it began, or was dragged last
};

}  // namespace vaxel
