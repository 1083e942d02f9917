#include "fuzz/target.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace vaxel::fuzz {

void Fail(std::string_view promise, std::string_view shown) {
  std::fprintf(stderr, "\nA promise is broken: %.*s\n%.*s\n", static_cast<int>(promise.size()),
               promise.data(), static_cast<int>(std::min<std::size_t>(shown.size(), 4000)), shown.data());
  std::abort();
}

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

void RequireSame(std::string_view one, std::string_view other, std::string_view promise) {
  if (one == other) return;
  while (!one.empty() || !other.empty()) {
    const std::string_view ofOne = TakeLine(one), ofOther = TakeLine(other);
    if (ofOne != ofOther) Fail(promise, std::string(ofOne) + "\n" + std::string(ofOther));
  }
  Fail(promise, "one of them lacks the last line end");
}

}  // namespace vaxel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vaxel::fuzz::TryInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
