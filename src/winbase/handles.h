// Handles of windows and of the system that end with their owner; those of GDI are in winbase/gdi_handles.h.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace vaxel {

template <class Handle, auto Release>
struct HandleDeleter {
  using pointer = Handle;
  void operator()(Handle handle) const { Release(handle); }
};

template <class Handle, auto Release>
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<Handle>, HandleDeleter<Handle, Release>>;

// A window with an owner or a parent is destroyed along with that one.
using UniqueWindow = UniqueHandle<HWND, DestroyWindow>;
// A menu that no window has at its end.
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniqueLibrary = UniqueHandle<HMODULE, FreeLibrary>;
using UniqueProcess = UniqueHandle<HANDLE, CloseHandle>;
// Never INVALID_HANDLE_VALUE.
using UniqueFile = UniqueHandle<HANDLE, CloseHandle>;

}  // namespace vaxel
