// The keyboard, the pointer and the screen, as the windows of the program ask for them.
#pragma once

#include <windows.h>

#include "app/main_window.h"

namespace vaxel {

// Whether the key was down at the time of the message that is being handled.
inline bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

inline HCURSOR CursorOf(PointerShape shape) {
  return LoadCursorW(nullptr, shape == PointerShape::Hourglass ? IDC_WAIT
                              : shape == PointerShape::Cross   ? IDC_CROSS
                                                               : IDC_ARROW);
}

// The part that is free for windows of the screen on which most of the box lies.
inline RECT WorkAreaNear(const RECT& box) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromRect(&box, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

}  // namespace vaxel
