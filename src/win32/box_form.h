// Message boxes of our own: those of the system have buttons in its language, and grow beyond the screen.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "win32/dialog_forms.h"

namespace vaxel {

struct Box {
  UINT Icon = MB_ICONINFORMATION;  // of MessageBoxW; it names the sound too
  std::string Title, Text;
  std::vector<int> Buttons;  // IDOK, IDCANCEL, IDYES, IDNO
  int Default = IDOK;        // what Enter presses
  int Escape = IDOK;         // what Escape and the caption's button stand for
};

// The dialog ends with IDCANCEL for Escape, whatever buttons there are. Ctrl+C copies the text.
DialogForm BoxForm(const Box& box, const ButtonTexts& texts, const DialogFont& font);

std::vector<ButtonSpec> ButtonsOf(const std::vector<int>& ids, const ButtonTexts& texts);

}  // namespace vaxel
