#include "win32/printer_dialog.h"

#include <commdlg.h>
#include <winspool.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "render/gdi/printer.h"
#include "winbase/wide_text.h"

namespace vaxel {
namespace {

struct GlobalFreer {
  using pointer = HGLOBAL;
  void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};
using UniqueGlobal = std::unique_ptr<void, GlobalFreer>;

UniqueGlobal GlobalCopy(const std::string& bytes) {
  if (bytes.empty()) return nullptr;
  UniqueGlobal memory(GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
  if (void* const place = memory ? GlobalLock(memory.get()) : nullptr) {
    std::memcpy(place, bytes.data(), bytes.size());
    GlobalUnlock(memory.get());
  }
  return memory;
}

// The name behind which the dialog finds the printer: offsets in characters, then the three names.
UniqueGlobal DeviceNames(const std::string& printer) {
  const std::wstring name = Widen(printer);
  constexpr WORD first = sizeof(DEVNAMES) / sizeof(wchar_t);
  const auto device = static_cast<WORD>(first + 1);
  const auto output = static_cast<WORD>(device + name.size() + 1);
  std::vector<wchar_t> words(std::size_t{output} + 1, L'\0');
  const DEVNAMES head{first, device, output, 0};
  std::memcpy(words.data(), &head, sizeof head);
  name.copy(words.data() + device, name.size());
  return GlobalCopy({reinterpret_cast<const char*>(words.data()), words.size() * sizeof(wchar_t)});
}

std::string PrinterOf(HGLOBAL memory) {
  const auto* const names = static_cast<const DEVNAMES*>(GlobalLock(memory));
  if (!names) return {};
  const std::wstring device = reinterpret_cast<const wchar_t*>(names) + names->wDeviceOffset;
  GlobalUnlock(memory);
  return Narrow(device);
}

void TakeMode(HGLOBAL memory, PrinterChoice& choice) {
  const auto* const mode = static_cast<const DEVMODEW*>(GlobalLock(memory));
  if (!mode) return;
  const DWORD fields = mode->dmFields;
  choice.DriverSettings.assign(reinterpret_cast<const char*>(mode),
                               std::size_t{mode->dmSize} + mode->dmDriverExtra);
  choice.IsLandscape = (fields & DM_ORIENTATION) != 0 && mode->dmOrientation == DMORIENT_LANDSCAPE;
  if ((fields & DM_PAPERSIZE) != 0) choice.Paper = std::max<int>(0, mode->dmPaperSize);
  const bool hasSize = (fields & DM_PAPERWIDTH) != 0 && (fields & DM_PAPERLENGTH) != 0;
  if (hasSize && (choice.Paper == 0 || choice.Paper >= DMPAPER_USER)) {
    choice.Paper = DMPAPER_USER;
    choice.PaperWidthMm = mode->dmPaperWidth / 10.0;
    choice.PaperHeightMm = mode->dmPaperLength / 10.0;
  }
  GlobalUnlock(memory);
}

}  // namespace

std::optional<PrinterEntry> AskPrinter(HWND owner, const PrinterChoice& present) {
  PRINTDLGW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner;
  request.Flags = PD_NOSELECTION | PD_HIDEPRINTTOFILE;
  request.nFromPage = request.nToPage = 1;
  request.nMinPage = 1;
  request.nMaxPage = 0xFFFF;
  request.nCopies = 1;
  UniqueGlobal names, mode;
  if (HasPrinter(present.Name)) {
    names = DeviceNames(present.Name);
    mode = GlobalCopy(SettingsOf(present));
  }
  request.hDevNames = names.get();
  request.hDevMode = mode.get();
  const bool isChosen = PrintDlgW(&request) != 0;
  // The dialog may have put others in their place.
  (void)names.release();
  (void)mode.release();
  names.reset(request.hDevNames);
  mode.reset(request.hDevMode);
  if (!isChosen || !names) return std::nullopt;
  PrinterEntry entry;
  entry.Printer.Name = PrinterOf(names.get());
  if (mode) TakeMode(mode.get(), entry.Printer);
  entry.Copies = std::max<std::size_t>(request.nCopies, 1);
  entry.Collates = (request.Flags & PD_COLLATE) != 0;
  if ((request.Flags & PD_PAGENUMS) != 0) {
    entry.First = std::min(request.nFromPage, request.nToPage);
    entry.Last = std::max(request.nFromPage, request.nToPage);
  }
  return entry;
}

}  // namespace vaxel
