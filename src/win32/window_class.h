// Windows of classes of our own, whose messages reach an object.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

namespace vaxel {

// Tells the user what was thrown; to be called where it was caught. Nothing may be thrown through Windows.
using FailureHandler = std::function<void()>;

// The class Window has Handle(message, wParam, lParam), which gives no result for what Windows is to deal
// with, and Failed(), a FailureHandler. The object must live as long as the window.
template <class Window>
LRESULT CALLBACK WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    auto* const created = static_cast<Window*>(creation->lpCreateParams);
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  // What comes before the constructor's end is for Windows alone.
  if (window && window->IsComplete()) {
    try {
      const std::optional<LRESULT> result = window->Handle(message, wParam, lParam);
      if (result) return *result;
    } catch (...) {
      window->Failed();
      return 0;
    }
  }
  return DefWindowProcW(handle, message, wParam, lParam);
}

template <class Window>
void RegisterWindowClass(HINSTANCE instance, const wchar_t* name, HICON icon, HBRUSH background) {
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = WindowProcedure<Window>;
  windowClass.hInstance = instance;
  windowClass.hIcon = icon;
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.hbrBackground = background;
  windowClass.lpszClassName = name;
  RegisterClassExW(&windowClass);
}

}  // namespace vaxel
