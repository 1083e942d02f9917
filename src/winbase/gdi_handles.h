// Handles of GDI and objects of COM that end with their owner.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace vaxel {

template <class Handle>
struct GdiDeleter {
  using pointer = Handle;
  void operator()(Handle object) const { DeleteObject(object); }
};

// An object of GDI: UniqueGdi<HPEN>, UniqueGdi<HBRUSH>, … It must not be selected when it ends.
template <class Handle>
using UniqueGdi = std::unique_ptr<std::remove_pointer_t<Handle>, GdiDeleter<Handle>>;

struct DcDeleter {
  using pointer = HDC;
  void operator()(HDC context) const { DeleteDC(context); }
};

// A device context that was created, not one that a window has lent.
using UniqueDc = std::unique_ptr<std::remove_pointer_t<HDC>, DcDeleter>;

// Keeps an object selected into a context, which must live longer.
class SelectedObject {
 public:
  SelectedObject(HDC context, HGDIOBJ object)
      : context_(context), previous_(object ? SelectObject(context, object) : nullptr) {}
  ~SelectedObject() {
    if (previous_) SelectObject(context_, previous_);
  }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC context_;
  HGDIOBJ previous_;
};

struct ComReleaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

template <class Interface>
using UniqueCom = std::unique_ptr<Interface, ComReleaser>;

// The object that a call hands out; there is none when the call failed.
template <class Interface, class Call>
UniqueCom<Interface> Obtained(Call call) {
  Interface* object = nullptr;
  const bool succeeded = SUCCEEDED(call(&object));
  UniqueCom<Interface> owned(object);
  return succeeded ? std::move(owned) : nullptr;
}

}  // namespace vaxel
