#include "win32/clipboard.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <type_traits>

namespace vaxel {
namespace {

struct WindowDestroyer {
  using pointer = HWND;
  void operator()(HWND window) const { DestroyWindow(window); }
};
using UniqueOwner = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDestroyer>;

// The clipboard, opened for a window of its own: without one nothing can be put there. What is put there
// stays when the window goes.
class OpenedClipboard {
 public:
  OpenedClipboard()
      : owner_(
            CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    // Other programs look into it for a moment whenever it has changed.
    constexpr int attempts = 20;
    constexpr DWORD between = 25;  // ms
    for (int attempt = 0; owner_ && !isOpen_ && attempt < attempts; ++attempt) {
      if (attempt > 0) Sleep(between);
      isOpen_ = OpenClipboard(owner_.get()) != 0;
    }
  }
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  bool Empty() const { return isOpen_ && EmptyClipboard(); }

 private:
  UniqueOwner owner_;
  bool isOpen_ = false;
};

// What was handed over belongs to the clipboard.
bool PutMetafile(std::string_view bytes) {
  const HENHMETAFILE file =
      SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), reinterpret_cast<const BYTE*>(bytes.data()));
  if (!file) return false;
  if (SetClipboardData(CF_ENHMETAFILE, file)) return true;
  DeleteEnhMetaFile(file);
  return false;
}

bool PutBytes(UINT format, std::string_view bytes) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  void* const place = memory ? GlobalLock(memory) : nullptr;
  if (place) {
    std::memcpy(place, bytes.data(), bytes.size());
    GlobalUnlock(memory);
    if (SetClipboardData(format, memory)) return true;
  }
  GlobalFree(memory);
  return false;
}

}  // namespace

bool CopyToClipboard(std::string_view emf, std::string_view png) {
  const OpenedClipboard clipboard;
  if (!clipboard.Empty() || !PutMetafile(emf)) return false;
  return png.empty() || PutBytes(RegisterClipboardFormatW(L"PNG"), png);
}

}  // namespace vaxel
