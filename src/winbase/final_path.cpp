#include "winbase/final_path.h"

#include <windows.h>

#include <string>

#include "winbase/handles.h"

namespace vaxel {

std::filesystem::path FinalPath(const std::filesystem::path& path) {
  constexpr DWORD withOthers = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  constexpr DWORD orFolder = FILE_FLAG_BACKUP_SEMANTICS;
  const HANDLE opened = CreateFileW(path.c_str(), 0, withOthers, nullptr, OPEN_EXISTING, orFolder, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return {};
  const UniqueFile file(opened);
  std::wstring name(MAX_PATH, L'\0');
  DWORD length = 0;
  // Too little room is told by the length that would be enough.
  while ((length = GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()),
                                             FILE_NAME_NORMALIZED)) > name.size()) {
    name.resize(length);
  }
  name.resize(length);
  return name;
}

}  // namespace vaxel
