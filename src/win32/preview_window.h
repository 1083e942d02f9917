// The pane of a preview: a sheet of paper with what is printed on it.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "app/preview_view.h"
#include "render/gdi/view.h"
#include "win32/ruler_painter.h"
#include "win32/window_class.h"

namespace vaxel {

class PreviewWindow {
 public:
  // Takes the place of a control of the dialog. The view, which shows something, and the decoder must outlive
  // it; it must be destroyed after the dialog.
  PreviewWindow(HWND dialog, int placeholderId, PreviewView& view, PictureDecoder* decoder,
                FailureHandler onFailure);
  ~PreviewWindow();
  PreviewWindow(const PreviewWindow&) = delete;
  PreviewWindow& operator=(const PreviewWindow&) = delete;

  // The view shows something else, or elsewhere.
  void Changed();
  // The wheel was turned over the dialog.
  void TurnWheel(WPARAM wParam, LPARAM lParam);

  bool IsComplete() const { return isComplete_; }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Failed() const { onFailure_(); }

 private:
  void Paint();
  void PaintSheet(HDC context);
  void PaintPage(HDC context, const RECT& printable);

  PreviewView& view_;
  PictureDecoder* decoder_;
  FailureHandler onFailure_;
  HWND window_ = nullptr;
  SIZE size_{1, 1};
  std::unique_ptr<GdiView> picture_;
  const DisplayList* list_ = nullptr;  // that of the picture
  GdiBitmap bitmap_;
  RECT drawn_{};  // where it lies
  bool isStale_ = true;
  RulerPainter rulers_;
  std::optional<POINT> drag_;  // where the pointer was, while a button is held down
  bool isComplete_ = false;
};

}  // namespace vaxel
