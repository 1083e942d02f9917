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
DialogForm InputForm(const InputDialog& dialog, const ButtonTexts& buttons, std::string& answer);
DialogForm ZoomForm(const ZoomDialog& dialog);
DialogForm ReferenceForm(const ReferenceDialog& dialog);
DialogForm SearchForm(const SearchDialog& dialog);
DialogForm LanguageForm(const LanguageDialog& dialog);
DialogForm ExportForm(const ExportDialog& dialog, const ButtonTexts& buttons);
DialogForm AboutForm(const AboutDialog& dialog, const ButtonTexts& buttons, HWND owner);
// A message box with a text that scrolls; kind is that of MessageBoxW.
DialogForm BoxForm(UINT kind, const std::string& title, const std::string& text, const ButtonTexts& buttons);

}  // namespace vaxel
