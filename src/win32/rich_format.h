// The formats of characters in a rich edit control.
#pragma once

#include <windows.h>
// The next one needs what windows.h declares.
#include <richedit.h>

#include "drawing/colour.h"

namespace vaxel {

// The monospaced face for scripts.
const wchar_t* ScriptFace();

// The mask says which fields count: CFM_.
CHARFORMAT2W FormatOf(DWORD mask);
CHARFORMAT2W SizeFormat(double points);
CHARFORMAT2W ColourFormat(Colour colour);

}  // namespace vaxel
