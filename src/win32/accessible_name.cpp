#include "win32/accessible_name.h"

// These need what windows.h declares.
#include <oleacc.h>

#include <string>

#include "winbase/gdi_handles.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

// From the platform's oleacc.h, whose import library not every compiler brings along.
constexpr GUID AccPropServicesClass = {
    0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr GUID AccPropServicesInterface = {
    0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID NameProperty = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

// The text of these is what stands in them.
bool ShowsItsText(HWND window) {
  wchar_t name[32] = L"";
  GetClassNameW(window, name, 32);
  return !std::wstring_view(name).starts_with(L"Vaxel");
}

}  // namespace

void SetAccessibleName(HWND window, std::string_view name) {
  const std::wstring wide = Widen(name);
  if (!ShowsItsText(window)) {
    SetWindowTextW(window, wide.c_str());
    return;
  }
  UniqueCom<IAccPropServices> services;
  void* made = nullptr;
  if (FAILED(CoCreateInstance(AccPropServicesClass, nullptr, CLSCTX_INPROC, AccPropServicesInterface, &made)))
    return;
  services.reset(static_cast<IAccPropServices*>(made));
  services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, NameProperty,
                           wide.c_str());
}

}  // namespace vaxel
