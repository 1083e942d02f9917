// The colours of the program's windows, as the user has set them in the system: usual, dark or of high
// contrast. The paper of a drawing is white in all of them.
#pragma once

#include <windows.h>

namespace vaxel {

struct Theme {
  COLORREF Window, Text, GreyText;  // of what stands around: tool bar, status line, divider
  COLORREF Field, FieldText;        // of the editor
  COLORREF Line;                    // between the parts of a window
  COLORREF Hot, HotText;            // of a button under the pointer
  bool IsDark = false;              // light text on a dark ground
  bool IsHighContrast = false;      // the colours are the system's, and none may be put between them

  bool operator==(const Theme&) const = default;
};

Theme SystemTheme();

// Whether a message that the system sends to all windows may have changed the colours.
bool MayChangeTheme(UINT message);

// Lets the system draw a window's frame dark or light. Systems that cannot leave it as it is.
void DarkenFrame(HWND window, bool isDark);

}  // namespace vaxel
