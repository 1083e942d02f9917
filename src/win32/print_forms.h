// The forms of the dialogs that belong to printing.
#pragma once

#include <windows.h>

#include <memory>

#include "app/dialogs.h"
#include "app/preview_view.h"
#include "drawing/picture.h"
#include "win32/dialog_forms.h"
#include "win32/preview_window.h"

namespace vaxel {

// The dialogs that forms are made of must live as long as the forms.
DialogForm FontsForm(const FontsDialog& dialog, const DialogFont& font);

// What a preview keeps while it is open; it must outlive the dialog.
struct ShownPreview {
  const PreviewDialog& Dialog;
  PictureDecoder* Decoder = nullptr;
  FailureHandler OnFailure;
  PreviewEntry Entry{};
  PreviewView View{};
  std::unique_ptr<PreviewWindow> Pane{};
};
DialogForm PreviewForm(ShownPreview& shown, const DialogFont& font);

}  // namespace vaxel
