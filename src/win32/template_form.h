// The form of the dialog that offers templates.
#pragma once

#include <windows.h>

#include <memory>

#include "app/dialogs.h"
#include "app/preview_view.h"
#include "drawing/picture.h"
#include "win32/dialog_forms.h"
#include "win32/preview_window.h"

namespace vaxel {

// What the dialog keeps while it is open; it must outlive the dialog.
struct ShownTemplates {
  const TemplatesDialog& Dialog;
  PictureDecoder* Decoder = nullptr;
  FailureHandler OnFailure;
  PreviewView View{};
  std::unique_ptr<PreviewWindow> Pane{};
};
DialogForm TemplatesForm(ShownTemplates& shown, const ButtonTexts& buttons, const DialogFont& font);

}  // namespace vaxel
