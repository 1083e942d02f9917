#pragma once

#include <windows.h>
#include <winternl.h>

#include <cstddef>

namespace vaxel::test {

// The objects of GDI that this process has, from the table that GDI keeps of them: GetGuiResources finds none
// under Wine.
inline int GdiObjectCount() {
  struct Entry {
    void* Object;
    USHORT Process, Reserved;
    USHORT Unique;
    UCHAR Type, Flags;
    void* User;
  };
  constexpr std::size_t tableInBlock = 0xF8;
  constexpr int entries = 0x4000;
  PROCESS_BASIC_INFORMATION information{};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &information, sizeof information,
                            nullptr);
  const char* const block = reinterpret_cast<const char*>(information.PebBaseAddress);
  const Entry* const table = *reinterpret_cast<const Entry* const*>(block + tableInBlock);
  const auto process = static_cast<USHORT>(GetCurrentProcessId());
  int count = 0;
  for (int i = 0; table && i < entries; ++i) {
    // Wine's table is the process's own.
    const bool isOurs = table[i].Process == 0 || table[i].Process == process;
    if (isOurs && (table[i].Type & 0x7F) != 0) ++count;
  }
  return count;
}

}  // namespace vaxel::test
