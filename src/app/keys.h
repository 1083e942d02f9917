// The keys that commands can have, and what is held down with them.
#pragma once

#include <cstdint>

namespace vaxel {

// A letter is the code of its capital, Key{'S'}, a digit that of its sign; function keys are counted from F1.
// Tab and Return are told only where they are commands: in an editor in which lines are selected, or where
// offers are shown beside the cursor.
enum class Key : std::uint8_t {
  None,
  Escape,
  Tab,
  Return,
  Space,
  Up,
  Down,
  PageUp,
  PageDown,
  F1 = 128,
  F2,
  F3,
  F4,
  F5,
  F6,
  F7,
  F8,
  F9,
  F10,
  F11,
  F12
};

// What must be held down together with a key. Letters and digits always need one: alone they are text.
enum class Held : std::uint8_t {
  Anything,  // or nothing; what Ctrl changes then is decided by the command
  NoShift,
  Ctrl,   // alone
  Shift,  // alone
  CtrlShift
};

struct Keystroke {
  vaxel::Key Key = vaxel::Key::None;
  vaxel::Held Held = vaxel::Held::Anything;

  constexpr bool IsPressedBy(vaxel::Key key, bool withCtrl, bool withShift) const {
    if (key != Key || key == vaxel::Key::None) return false;
    switch (Held) {
      case vaxel::Held::Anything:
        return true;
      case vaxel::Held::NoShift:
        return !withShift;
      case vaxel::Held::Ctrl:
        return withCtrl && !withShift;
      case vaxel::Held::Shift:
        return withShift && !withCtrl;
      case vaxel::Held::CtrlShift:
        return withCtrl && withShift;
    }
    return false;
  }
};

}  // namespace vaxel
