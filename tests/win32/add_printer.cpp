// Usage: add_printer NAME PPD PORT COMMAND
//
// Gives a Wine prefix a PostScript printer of 600 dpi, which becomes the default one. Its jobs go to the
// command, which begins with "|". The PPD is named by its path in Windows. The driver is called "NAME
// PostScript", as the PPD must call its model.
#include <windows.h>
#include <winspool.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

bool Succeeded(bool result, const char* call) {
  if (!result) std::fprintf(stderr, "add_printer: %s failed: %lu\n", call, GetLastError());
  return result;
}

bool AddDriver(std::wstring name, std::wstring ppd) {
  std::wstring driver = L"wineps.drv";
  wchar_t environment[] = L"Windows x64";
  DRIVER_INFO_3W info{};
  info.cVersion = 3;
  info.pName = name.data();
  info.pEnvironment = environment;
  info.pDriverPath = driver.data();
  info.pDataFile = ppd.data();
  info.pConfigFile = driver.data();
  return Succeeded(AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&info),
                                       APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY),
                   "AddPrinterDriverEx");
}

bool RedirectPort(const std::wstring& port, const std::wstring& command) {
  const auto size = static_cast<DWORD>((command.size() + 1) * sizeof(wchar_t));
  return Succeeded(RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Printing\\Spooler", port.c_str(),
                                   REG_SZ, command.c_str(), size) == ERROR_SUCCESS,
                   "RegSetKeyValue");
}

HANDLE InstallPrinter(std::wstring name, std::wstring port, std::wstring driver) {
  wchar_t processor[] = L"winprint", type[] = L"RAW";
  PRINTER_INFO_2W info{};
  info.pPrinterName = name.data();
  info.pPortName = port.data();
  info.pDriverName = driver.data();
  info.pPrintProcessor = processor;
  info.pDatatype = type;
  HANDLE printer = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&info));
  Succeeded(printer != nullptr, "AddPrinter");
  return printer;
}

// Wine begins with 300 dpi, whatever the PPD says.
bool SetResolution(HANDLE printer, std::wstring name) {
  const LONG size = DocumentPropertiesW(nullptr, printer, name.data(), nullptr, nullptr, 0);
  if (!Succeeded(size > 0, "DocumentProperties")) return false;
  std::vector<BYTE> bytes(static_cast<std::size_t>(size));
  auto* mode = reinterpret_cast<DEVMODEW*>(bytes.data());
  DocumentPropertiesW(nullptr, printer, name.data(), mode, nullptr, DM_OUT_BUFFER);
  mode->dmPrintQuality = mode->dmYResolution = 600;
  mode->dmPaperSize = DMPAPER_A4;
  mode->dmFields |= DM_PRINTQUALITY | DM_YRESOLUTION | DM_PAPERSIZE;
  PRINTER_INFO_9W info{mode};
  return Succeeded(SetPrinterW(printer, 9, reinterpret_cast<BYTE*>(&info), 0), "SetPrinter");
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 5) return 2;
  const std::wstring name = arguments[1], driver = name + L" PostScript";
  if (!RedirectPort(arguments[3], arguments[4]) || !AddDriver(driver, arguments[2])) return 1;
  HANDLE printer = InstallPrinter(name, arguments[3], driver);
  if (!printer) return 1;
  const bool done =
      SetResolution(printer, name) && Succeeded(SetDefaultPrinterW(name.c_str()), "SetDefaultPrinter");
  ClosePrinter(printer);
  return done ? 0 : 1;
}
