#pragma once

#include <windows.h>
#include <winternl.h>

#include <cstddef>
#include <vector>

namespace vaxel::test {

// The objects of GDI that a process has, from the table that GDI keeps of them: GetGuiResources finds none
// under Wine.
inline int GdiObjectCount(HANDLE process = GetCurrentProcess()) {
  struct Entry {
    void* Object;
    USHORT Process, Reserved;
    USHORT Unique;
    UCHAR Type, Flags;
    void* User;
  };
  constexpr std::size_t tableInBlock = 0xF8;
  constexpr std::size_t entries = 0x4000;
  PROCESS_BASIC_INFORMATION information{};
  NtQueryInformationProcess(process, ProcessBasicInformation, &information, sizeof information, nullptr);
  const char* const block = reinterpret_cast<const char*>(information.PebBaseAddress);
  const char* table = nullptr;
  std::vector<Entry> objects(entries);
  ReadProcessMemory(process, block + tableInBlock, &table, sizeof table, nullptr);
  ReadProcessMemory(process, table, objects.data(), entries * sizeof(Entry), nullptr);
  const auto owner = static_cast<USHORT>(GetProcessId(process));
  int count = 0;
  for (const Entry& object : objects) {
    // Wine's table is the process's own.
    const bool isIts = object.Process == 0 || object.Process == owner;
    if (isIts && (object.Type & 0x7F) != 0) ++count;
  }
  return count;
}

}  // namespace vaxel::test
