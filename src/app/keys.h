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

// What must be held down together with a key. Letters and digits always need one: alone they are text. With
// Alt the system has keys of its own, so that none but those below are told.
enum class Held : std::uint8_t {
  Anything,  // or nothing; what Ctrl changes then is decided by the command
  NoShift,
  Ctrl,   // alone
  Shift,  // alone
  CtrlShift,
  Alt,  // alone
  AltShift
};

// What is held down.
struct HeldKeys {
  bool Ctrl = false, Shift = false, Alt = false;
};

struct Keystroke {
  vaxel::Key Key = vaxel::Key::None;
  vaxel::Held Held = vaxel::Held::Anything;

  constexpr bool IsPressedBy(vaxel::Key key, const HeldKeys& held) const {
    if (key != Key || key == vaxel::Key::None) return false;
    if (held.Alt) {
      return !held.Ctrl && Held == (held.Shift ? vaxel::Held::AltShift : vaxel::Held::Alt);
    }
    switch (Held) {
      case vaxel::Held::Anything:
        return true;
      case vaxel::Held::NoShift:
        return !held.Shift;
      case vaxel::Held::Ctrl:
        return held.Ctrl && !held.Shift;
      case vaxel::Held::Shift:
        return held.Shift && !held.Ctrl;
      case vaxel::Held::CtrlShift:
        return held.Ctrl && held.Shift;
      case vaxel::Held::Alt:
      case vaxel::Held::AltShift:
        break;
    }
    return false;
  }
};

}  // namespace vaxel
