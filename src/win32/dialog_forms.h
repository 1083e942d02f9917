// The forms of our own dialogs: what stands in them and which control tells what.
#pragma once

#include <windows.h>

#include <string>

#include "app/dialogs.h"
#include "win32/dialogs.h"
#include "win32/modal_dialog.h"

namespace vaxel {

struct DialogForm {
  DialogSpec Spec;
  DialogActions Actions;
};

// The dialog that a form is made of, and the answer, must live as long as the form.
DialogForm InputForm(const InputDialog& dialog, const ButtonTexts& buttons, const DialogFont& font,
                     std::string& answer);
DialogForm ZoomForm(const ZoomDialog& dialog, const DialogFont& font);
DialogForm ReferenceForm(const ReferenceDialog& dialog, const DialogFont& font);
DialogForm SearchForm(const SearchDialog& dialog, const DialogFont& font);
DialogForm LanguageForm(const LanguageDialog& dialog, const DialogFont& font);
DialogForm ExportForm(const ExportDialog& dialog, const ButtonTexts& buttons, const DialogFont& font);
DialogForm AboutForm(const AboutDialog& dialog, const ButtonTexts& buttons, const DialogFont& font,
                     HWND owner);

}  // namespace vaxel
