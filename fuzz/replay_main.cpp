// Replays corpora without libFuzzer: every file of the folders that are named.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "base/files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argumentCount, char** arguments) {
  constexpr std::size_t maxBytes = std::size_t{16} << 20;
  std::size_t count = 0;
  for (int i = 1; i < argumentCount; ++i) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i]))
      names.push_back(entry.path().string());
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
      // When a promise is broken, this is the last line before it.
      std::fprintf(stderr, "%s\n", name.c_str());
      const auto bytes = vaxel::ReadWholeFile(name, maxBytes);
      if (!bytes) return 1;
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size());
      ++count;
    }
  }
  std::printf("%zu inputs\n", count);
  return count == 0 ? 1 : 0;
}
