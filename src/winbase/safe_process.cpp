#include "winbase/safe_process.h"

namespace vaxel {

void GuardProcess() {
  HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);
  // Printer drivers bring folders of their own.
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
}

UniqueLibrary LoadSystemLibrary(const wchar_t* name) {
  return UniqueLibrary(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
}

}  // namespace vaxel
